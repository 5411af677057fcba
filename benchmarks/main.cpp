// Measures the library, the plain way with VTK and the machine's memory side by side in one run: as
// a table, as JSON and as a picture.

#include "Campaign.h"
#include "Machine.h"
#include "Plot.h"
#include "Report.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <cstdio>

namespace {

bool writeFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
        && file.commit();
}

int runTask(const Task &task)
{
    const QJsonObject numbers = measure(task);
    std::puts(QJsonDocument(numbers).toJson(QJsonDocument::Compact).constData());
    return numbers.isEmpty() ? 1 : 0;
}

int runAll(const QCommandLineParser &options)
{
    const bool isShort = options.isSet("short");
    const Campaign campaign = isShort ? shortCampaign() : fullCampaign();
    const QString machine = machineText();
    const auto results = runCampaign(campaign, QCoreApplication::applicationFilePath());
    if (!results)
        return 1;
    const QString table = machine + ".\n" + tableOf(*results, campaign.mainSide, !isShort);
    const QJsonObject json{{"machine", machine}, {"figures", results->toJson()}};
    std::fputs(qPrintable(table), stdout);
    const QDir folder(options.value("output"));
    const bool isWritten = folder.mkpath(".")
        && writeFile(folder.filePath("compare.json"), QJsonDocument(json).toJson())
        && writeFile(folder.filePath("compare.md"), table.toUtf8())
        && plotOf(*results, campaign.mainSide).save(options.value("plot"));
    if (!isWritten)
        std::fprintf(stderr, "the figures could not be written\n");
    return isWritten ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (const auto task = taskOf(QCoreApplication::arguments().mid(1)))
        return runTask(*task);

    QCommandLineParser options;
    options.addOptions(
        {{"short", "Small sizes and few repeats, for a check of the program itself."},
            {"output", "Folder for compare.json and compare.md.", "folder", "."},
            {"plot", "File for the picture.", "file", "performance.png"}});
    options.addHelpOption();
    options.process(application);
    return runAll(options);
}
