#include "Console.h"
#include "GuiTest.h"
#include "ProcessFigures.h"
#include "SoakRun.h"
#include "Watchdog.h"

#include <QJsonDocument>

#include <cstdio>

/// Usage: soak SECONDS SEED [SECONDS_OF_A_HANG]. Prints one line of JSON; exit code 1 tells of
/// failures.
int main(int argc, char *argv[])
{
    ProcessFigures::giveFreedMemoryBack();
    const PrivateHome home;
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 3)
        return 2;
    const std::uint64_t seed = arguments[2].toULongLong();
    const int hangSeconds = arguments.size() > 3 ? arguments[3].toInt() : 5;

    Journal journal(seed);
    failOnMessages(journal);
    const Watchdog watchdog(journal, 1000LL * hangSeconds);
    SoakRun run(journal, seed, arguments[1].toInt(), qEnvironmentVariable("XDG_DATA_HOME"));
    const int result = QApplication::exec();

    QJsonObject report = run.report();
    report["seed"] = arguments[2];
    report["result"] = result == 0 ? "passed" : "failed";
    std::puts(QJsonDocument(report).toJson(QJsonDocument::Compact).constData());
    return result;
}
