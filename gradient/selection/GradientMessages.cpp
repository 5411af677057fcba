#include "GradientMessages.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

void tell(QWidget *parent, const char *what)
{
    showGradientMessage(parent, QMessageBox::Critical,
        QCoreApplication::translate("GradientMessages", "Error"),
        QCoreApplication::translate("GradientMessages", what));
}

} // namespace

void showGradientMessage(
    QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    // Not on the stack, where QMessageBox::critical() has it: a parent deletes its children.
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->exec();
    delete box;
}

void tellGradientsNotSaved(QWidget *parent)
{
    tell(parent, QT_TRANSLATE_NOOP("GradientMessages", "The gradients could not be saved."));
}

void tellGradientNotRenamed(QWidget *parent)
{
    tell(parent,
        QT_TRANSLATE_NOOP(
            "GradientMessages", "The gradients could not be saved. The name stays as it was."));
}

void tellGradientLacksAnEnd(QWidget *parent)
{
    tell(parent,
        QT_TRANSLATE_NOOP("GradientMessages",
            "This gradient cannot be edited: it needs a colour at both of its ends."));
}

void tellGradientNameIsTaken(QWidget *parent)
{
    tell(parent,
        QT_TRANSLATE_NOOP("GradientMessages",
            "Another gradient has this name already. Please choose another name."));
}
