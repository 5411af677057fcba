#pragma once

#include "GradientBuilderDialog.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

/// Answers the dialogs that one call opens, as an operator would: the file dialog by a name (none
/// cancels), message boxes by Ok or the given answer, the gradient's by the edits. Remembers what
/// the dialogs proposed and what the boxes said.
class Operator : public QObject
{
public:
    using Edits = std::function<void(GradientBuilderDialog &)>;

    explicit Operator(
        QString fileName = {}, QMessageBox::StandardButton boxAnswer = QMessageBox::NoButton)
        : name(std::move(fileName))
        , choice(boxAnswer)
    {
        connect(&timer, &QTimer::timeout, this, &Operator::answer);
        timer.start(200);
    }
    explicit Operator(Edits edits)
        : Operator()
    {
        edit = std::move(edits);
    }
    QStringList told;
    QString folder;
    QString proposedName;

private:
    void answer()
    {
        QWidget *dialog = QApplication::activeModalWidget();
        if (auto *files = qobject_cast<QFileDialog *>(dialog)) {
            folder = files->directory().path();
            proposedName = files->findChild<QLineEdit *>()->text();
            if (name.isEmpty())
                return files->reject();
            files->setOption(QFileDialog::DontConfirmOverwrite);
            files->findChild<QLineEdit *>()->setText(name);
            QMetaObject::invokeMethod(files, "accept");
        } else if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
            told += box->windowTitle() + '|' + box->text();
            QAbstractButton *chosen = box->button(choice);
            (chosen ? chosen : box->button(QMessageBox::Ok))->click();
        } else if (auto *builder = qobject_cast<GradientBuilderDialog *>(dialog)) {
            // Outside of the timer, which is to answer what this opens.
            if (builder != seen)
                QTimer::singleShot(0, builder, [this, builder] { edit(*builder); });
        }
        seen = dialog;
    }

    QString name;
    QMessageBox::StandardButton choice;
    Edits edit;
    QPointer<QWidget> seen;
    QTimer timer;
};
