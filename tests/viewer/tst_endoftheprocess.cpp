#include "HostProcess.h"

class TestEndOfTheProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aViewerMayOutliveMain_data()
    {
        QTest::addColumn<QString>("kept");
        QTest::addColumn<QString>("way");
        for (const QString kept : {"global", "function static", "global, without an application",
                 "function static, without an application"}) {
            for (const QString way : {"quit", "exit", "exit in a slot of the viewer"})
                QTest::newRow(qPrintable(kept + ", " + way)) << kept << way;
        }
    }

    void aViewerMayOutliveMain()
    {
        QFETCH(QString, kept);
        QFETCH(QString, way);
        const QTemporaryDir home;
        // Nothing that was freed looks alive.
        qputenv("MALLOC_PERTURB_", "165");
        HostProcess(home.path()).expect(ENDING_HOST, {kept, way}, "");
        const QDir folder(home.filePath("config/Olvik"));
        QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden), QStringList("OlvikSettings.ini"));
        const QSettings settings(folder.filePath("OlvikSettings.ini"), QSettings::IniFormat);
        QCOMPARE(settings.value("3Dviewer/ColorMode").toInt(), 1);
        QCOMPARE(settings.value("3Dviewer/gradient_name").toString(), QString("Default Color"));
    }
};

QTEST_GUILESS_MAIN(TestEndOfTheProcess)
#include "tst_endoftheprocess.moc"
