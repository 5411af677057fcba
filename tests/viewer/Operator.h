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
/// cancels), message boxes by Ok. Remembers what the dialogs proposed and what the boxes said.
class Operator : public QObject
{
public:
    explicit Operator(QString fileName)
        : name(std::move(fileName))
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
            box->button(QMessageBox::Ok)->click();
        }
    }

    QString name;
    QTimer timer;
};
