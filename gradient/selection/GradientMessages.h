#pragma once

#include <QMessageBox>

/// What the views of the gradients tell the user in a message box, modal to \a parent, which may be
/// deleted meanwhile.

void showGradientMessage(
    QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text);
void tellGradientsNotSaved(QWidget *parent);
void tellGradientNotRenamed(QWidget *parent);
void tellGradientLacksAnEnd(QWidget *parent);
void tellGradientNameIsTaken(QWidget *parent);
