#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

/// Answers the dialogs that one call opens, as an operator would: the file dialog by a name (none
/// cancels), message boxes by Ok or the given answer. Remembers what the dialogs proposed and what
/// the boxes said.
class Operator : public QObject
{
public:
    explicit Operator(
        QString fileName, QMessageBox::StandardButton boxAnswer = QMessageBox::NoButton)
        : name(std::move(fileName))
        , choice(boxAnswer)
    {
        connect(&timer, &QTimer::timeout, this, &Operator::answer);
        timer.start(200);
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
        }
    }

    QString name;
    QMessageBox::StandardButton choice;
    QTimer timer;
};
