#pragma once

#include "Choice.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>

class Journal;
class QFileDialog;
class QMessageBox;
class QWidget;

/// Answers the modal boxes and dialogs that an operation opens, as a person would: types, draws,
/// confirms or cancels, one step at each tick of a timer, in nested event loops as well. GUI
/// thread.
class DialogOperator : public QObject
{
public:
    DialogOperator(Journal &journal, QString folder);

    /// \param choice what the answers during the next operation are drawn from
    void use(Choice choice) { random = choice; }

    /// What the host may do while a dialog is open.
    void setHost(std::function<void(Choice &)> action) { host = std::move(action); }

    /// Whether a dialog or menu still waits for an answer.
    bool isBusy() const;

    /// \return one that can be written, a full device, one in a missing folder, garbage, or none
    QString randomPath(Choice &choice) const;

private:
    void tick();
    void answer(QWidget &dialog);
    void answerFileDialog(QFileDialog &dialog);
    void answerMessageBox(QMessageBox &box);
    void fillIn(QWidget &dialog);
    void drawOnGradient(QWidget &editor);
    void finish(QWidget &dialog);

    Journal &journal;
    const QString folder;
    Choice random{0};
    std::function<void(Choice &)> host;
};
