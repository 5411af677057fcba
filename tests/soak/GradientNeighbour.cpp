#include "GradientNeighbour.h"

#include "Choice.h"
#include "GradientCollection.h"

#include <QtCore>

#include <exception>

namespace {

void change(GradientCollection &gradients, Choice &choice)
{
    if (gradients.size() == 0)
        return gradients.add(gradients.newGradientShared());
    const auto gradient = gradients.getGradientAt(choice.below(gradients.size()));
    switch (choice.below(4)) {
    case 0:
        return gradients.add(gradients.newGradientShared());
    case 1:
        return gradients.remove(
            gradients.size() > 6 ? choice.between(2, gradients.size() - 1) : -1);
    case 2:
        return gradients.rename(gradient->getName(), QString::number(choice.below(20)));
    default:
        gradient->setMax(choice.between(1, 5000));
    }
}

} // namespace

int changeGradientsForEver(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Choice choice(QByteArray(argv[2]).toULongLong());
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    GradientCollection gradients(folder.filePath(QStringLiteral("3DGradients.json")));
    for (;;) {
        QThread::msleep(static_cast<unsigned long>(choice.between(5, 60)));
        // The other program empties its home now and then.
        folder.mkpath(QStringLiteral("."));
        try {
            gradients.load();
            change(gradients, choice);
        } catch (const std::exception &) {
            // No file yet, or a name that is taken.
        }
    }
}
