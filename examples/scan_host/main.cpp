#include "CommandLine.h"
#include "FrameSource.h"
#include "HeightMapReader.h"
#include "Language.h"
#include "Report.h"
#include "ScanHost.h"
#include "ScannerSimulator.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QSaveFile>

#include <cstdio>

#include <unistd.h>

namespace {

std::unique_ptr<FrameSource> openSource(const Options &options)
{
    if (options.file.isEmpty())
        return std::make_unique<ScannerSimulator>(options.frameSize);

    HeightMapReader reader;
    std::optional<HeightMap> map = reader.read(options.file, options.rawWidth);
    if (map)
        return std::make_unique<StillSource>(std::move(*map));
    reportError(options.file + QLatin1String(": ") + reader.errorString());
    return nullptr;
}

bool openPicture(QSaveFile &picture)
{
    // The picture is renamed over what has its name, which no device should suffer.
    const QFileInfo info(picture.fileName());
    const bool isReplaceable = !info.exists() || info.isFile() || info.isDir();
    if (isReplaceable && picture.open(QIODevice::WriteOnly))
        return true;
    const QString reason = isReplaceable
        ? picture.errorString()
        : QCoreApplication::translate("main", "is not a regular file");
    reportError(picture.fileName() + QLatin1String(": ") + reason);
    return false;
}

int runHost(const Options &options, std::unique_ptr<FrameSource> source, QSaveFile *picture)
{
    QFile events;
    // A program behind a pipe gets the events as they happen: past the buffers of Qt and of stdout.
    if (!events.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return NothingShown;
    ScanHost host(options, std::move(source), events);
    host.setPicture(picture);
    host.start();

    const int status = QApplication::exec();
    if (status != Success || !picture || !picture->isOpen())
        return status;
    reportError(
        QCoreApplication::translate("main", "the window was closed before its picture was taken"));
    return NothingShown;
}

} // namespace

int main(int argc, char **argv)
{
    // The library tells its developers more than the users of this program want to read.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QCoreApplication::setApplicationName(QStringLiteral("scan_host"));
    QCoreApplication::setApplicationVersion(QStringLiteral(SCAN_HOST_VERSION));

    CommandLine commandLine;
    auto outcome = CommandLine::Outcome::Reject;
    {
        // Help and wrong input need no display, which QApplication would ask for.
        const QCoreApplication console(argc, argv);
        outcome = commandLine.parse(QCoreApplication::arguments());
    }
    if (outcome == CommandLine::Outcome::Reject) {
        reportError(commandLine.text());
        return WrongInput;
    }
    if (outcome == CommandLine::Outcome::PrintText) {
        std::fputs(commandLine.text().toLocal8Bit().constData(), stdout);
        return Success;
    }

    const Options &options = commandLine.options();
    std::unique_ptr<FrameSource> source = openSource(options);
    if (!source)
        return WrongInput;
    QSaveFile picture(options.screenshot);
    const bool wantsPicture = !options.screenshot.isEmpty();
    if (wantsPicture && !openPicture(picture))
        return WrongInput;

    const QApplication application(argc, argv);
    installLanguage(options.language);
    return runHost(options, std::move(source), wantsPicture ? &picture : nullptr);
}
