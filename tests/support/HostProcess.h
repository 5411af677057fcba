#pragma once

#include <QtTest>

/// A host in a process of its own: nothing of the user's is read or changed.
class HostProcess : public QProcess
{
public:
    explicit HostProcess(const QString &home)
        : environment(QProcessEnvironment::systemEnvironment())
    {
        set("HOME", home);
        set("XDG_CONFIG_HOME", home + "/config");
        set("XDG_DATA_HOME", home + "/data");
        set("QT_LOGGING_RULES", "default.debug=false");
    }

    void set(const QString &variable, const QString &value)
    {
        environment.insert(variable, value);
        setProcessEnvironment(environment);
    }

    /// \param console what it writes to stderr
    void expect(const QString &program, const QStringList &arguments, const QByteArray &output,
        const QByteArray &console = {}, int code = 0)
    {
        start(program, arguments);
        QVERIFY(waitForFinished(60000));
        QCOMPARE(readAllStandardError(), console);
        QCOMPARE(readAllStandardOutput(), output);
        QCOMPARE(exitStatus(), NormalExit);
        QCOMPARE(exitCode(), code);
    }

private:
    QProcessEnvironment environment;
};
