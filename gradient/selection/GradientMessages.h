#pragma once

class QWidget;

/// What the views of the gradients tell the user in a message box, modal to \a parent, which may be
/// deleted meanwhile.

void tellGradientsNotSaved(QWidget *parent);
void tellGradientNotRenamed(QWidget *parent);
void tellGradientLacksAnEnd(QWidget *parent);
