#pragma once

#include <QColor>
#include <QMessageBox>

#include <memory>

class QColorDialog;

/// Modal dialogs of the gradients' views. A host may delete a view while its dialog is open, so
/// none of them lives on the stack, and the caller looks at itself again when one returns.

/// Waits for the user, or for the end of \a parent.
void showGradientMessage(
    QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text);

/// Ends with \a asker. Invalid when the user cancels.
QColor chosenColor(std::unique_ptr<QColorDialog> dialog, const QWidget &asker);
