#include "GradientBuilding.h"

#include "GradientBuilderDialog.h"

#include <QCoreApplication>
#include <QPointer>

namespace {

/// Empty for a good name.
QString refusalOf(const QString &name, const GradientCollection &collection,
    const std::shared_ptr<Gradient> &gradient)
{
    const bool isEntry = collection.getGradients().contains(gradient);
    // Files hold equal and empty names; what else is edited there must not be lost.
    if (isEntry && name == gradient->getName())
        return {};
    if (name.isEmpty()) {
        return isEntry ? QCoreApplication::translate("GradientMessages", "Please enter a name.")
                       : QString();
    }
    return collection.isNameTaken(name) ? QCoreApplication::translate("GradientMessages",
               "Another gradient has this name already. Please choose another name.")
                                        : QString();
}

} // namespace

bool buildGradient(const std::shared_ptr<GradientCollection> &collection,
    const std::shared_ptr<Gradient> &gradient, const QString &name)
{
    const QPointer<GradientBuilderDialog> dialog =
        new GradientBuilderDialog(gradient, gradient->getMin(), gradient->getMax(),
            gradient->getMinColor(), gradient->getMaxColor(), nullptr);
    dialog->setGradientName(name);
    // A collection that is gone, with its views, leaves nothing to be equal to.
    dialog->setNameCheck([weak = std::weak_ptr(collection), gradient](const QString &typed) {
        const std::shared_ptr<GradientCollection> entries = weak.lock();
        return entries ? refusalOf(typed, *entries, gradient) : QString();
    });
    const bool isConfirmed = dialog->exec() == QDialog::Accepted;
    delete dialog;
    return isConfirmed;
}
