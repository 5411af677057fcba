#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

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
        QTest::newRow("3.2, embedded") << "3.2" << false << QStringList("embed");
    }

    void oldOpenGLIsRefused()
    {
        QFETCH(QString, version);
        QFETCH(bool, isRefused);
        QFETCH(QStringList, arguments);
        QProcess host;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("MESA_GL_VERSION_OVERRIDE", version);
        environment.insert("QT_LOGGING_RULES", "default.debug=false");
        environment.insert("XDG_DATA_HOME", folder.path());
        environment.insert("XDG_CONFIG_HOME", folder.path());
        host.setProcessEnvironment(environment);
        host.start(REFUSED_VIEWER, arguments);
        QVERIFY(host.waitForFinished(30000));

        QCOMPARE(host.exitStatus(), QProcess::NormalExit);
        QCOMPARE(host.exitCode(), isRefused ? 255 : 0);
        const QByteArray message = "Bad OpenGl|No suitable OpenGL version was found!\n"
                                   "Version 3.2 or grater is required\n"
                                   "Please Upgrade the GPU drivers|1\n";
        QCOMPARE(host.readAllStandardOutput(), isRefused ? message : QByteArray());
        QCOMPARE(host.readAllStandardError(), QByteArray());
    }

private:
    QTemporaryDir folder;
};

QTEST_GUILESS_MAIN(TestOpenGLRefusal)
#include "tst_openglrefusal.moc"
