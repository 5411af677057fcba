#include "HostProcess.h"

class TestOpenGLRefusal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void oldOpenGLIsRefused_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("isRefused");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("2.1") << "2.1" << true << QStringList();
        QTest::newRow("3.1") << "3.1" << true << QStringList();
        QTest::newRow("3.2") << "3.2" << false << QStringList();
        QTest::newRow("2.1, embedded: the host lives on") << "2.1" << false << QStringList("embed");
        QTest::newRow("2.1, beside an embedded one") << "2.1" << true << QStringList("beside");
        QTest::newRow("3.2, embedded") << "3.2" << false << QStringList("embed");
    }

    void oldOpenGLIsRefused()
    {
        QFETCH(QString, version);
        QFETCH(bool, isRefused);
        QFETCH(QStringList, arguments);
        const QTemporaryDir home;
        HostProcess host(home.path());
        host.set("MESA_GL_VERSION_OVERRIDE", version);
        // EGL gives no older version instead, of which Qt tells.
        if (version != "3.2" && qEnvironmentVariable("QT_QPA_PLATFORM") == "wayland")
            host.set("QT_LOGGING_RULES", "default.warning=false");
        const QByteArray message = "Bad OpenGl|No suitable OpenGL version was found!\n"
                                   "Version 3.2 or grater is required\n"
                                   "Please Upgrade the GPU drivers|1\n";
        host.expect(REFUSED_VIEWER, arguments, isRefused ? message : "", "", isRefused ? 255 : 0);
    }
};

QTEST_GUILESS_MAIN(TestOpenGLRefusal)
#include "tst_openglrefusal.moc"
