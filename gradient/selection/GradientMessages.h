#pragma once

class QWidget;

/// What the views of the gradients tell the user in a message box, modal to \a parent.

void tellGradientsNotSaved(QWidget *parent);
void tellGradientNotRenamed(QWidget *parent);
void tellGradientLacksAnEnd(QWidget *parent);
