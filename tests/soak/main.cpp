#include "Console.h"
#include "GradientNeighbour.h"
#include "GuiTest.h"
#include "ProcessFigures.h"
#include "SoakRun.h"

#include <cstdio>

/// Usage: soak SECONDS SEED [SECONDS_OF_A_HANG]. Prints one line of JSON; exit code 1 tells of
/// failures. As "soak gradients SEED" it changes the gradients of another one until it is killed.
int main(int argc, char *argv[])
{
    if (argc == 3 && qstrcmp(argv[1], "gradients") == 0)
        return changeGradientsForEver(argc, argv);
    ProcessFigures::giveFreedMemoryBack();
    const PrivateHome home;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3)
        return 2;
    const std::uint64_t seed = arguments[2].toULongLong();
    Journal journal(seed, arguments.size() > 3 ? arguments[3].toUInt() : 5);
    failOnMessages(journal);
    SoakRun run(journal, seed, arguments[1].toInt(), qEnvironmentVariable("XDG_DATA_HOME"));
    const int result = QApplication::exec();

    QJsonObject report = run.report();
    report["seed"] = arguments[2];
    report["result"] = result == 0 ? "passed" : "failed";
    std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
    return result;
}
