#include "GradientMessages.h"

#include "GradientDialogs.h"

#include <QCoreApplication>

namespace {

void tell(QWidget *parent, const char *what)
{
    showGradientMessage(parent, QMessageBox::Critical,
        QCoreApplication::translate("GradientMessages", "Error"),
        QCoreApplication::translate("GradientMessages", what));
}

} // namespace

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
