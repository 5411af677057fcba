#include "Language.h"
#include "MeasuringWindow.h"
#include "WindowShot.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>

namespace {

/// Ends the event loop with the picture: 0 when it was written.
void takePicture(MeasuringWindow &window, const QString &file)
{
    auto *shot = new WindowShot(&window, std::chrono::seconds(20), &window);
    QObject::connect(shot, &WindowShot::taken, &window, [&window, file](const QImage &picture) {
        const bool isWritten = picture.save(file);
        if (!isWritten)
            qWarning("The picture could not be written to %s", qPrintable(file));
        window.close();
        QApplication::exit(isWritten ? 0 : 1);
    });
    QObject::connect(shot, &WindowShot::failed, &window, [] {
        qWarning("The viewers show nothing that could be written to a picture");
        QApplication::exit(1);
    });
    shot->start();
}

} // namespace

int main(int argc, char *argv[])
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("embedded"));
    const QString shot = QStringLiteral("shot");
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QApplication::translate("main", "Two viewers embedded in a measuring application."));
    parser.addHelpOption();
    parser.addOption(
        {shot, QApplication::translate("main", "Write a picture of one frame to <png> and end."),
            QStringLiteral("png")});
    parser.process(application);
    installLanguage(QLocale::system());

    MeasuringWindow window;
    window.show();
    window.runAction()->setChecked(true);
    if (parser.isSet(shot)) {
        window.runAction()->setChecked(false); // the first frame is on its way
        takePicture(window, parser.value(shot));
    }
    return QApplication::exec();
}
