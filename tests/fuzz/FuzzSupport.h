#pragma once

#include <QtCore>

#include <vtkObjectFactory.h>
#include <vtkOutputWindow.h>

#include <cstdio>
#include <cstdlib>

/// Ends the fuzzer, which then keeps the input. Unlike assert() in every build.
inline void require(bool holds, const char *claim)
{
    if (holds)
        return;
    std::fprintf(stderr, "not so: %s\n", claim);
    std::abort();
}

/// A warning on the host's console is a fault like a crash.
class NoisyVtk : public vtkOutputWindow
{
public:
    static NoisyVtk *New();
    vtkTypeMacro(NoisyVtk, vtkOutputWindow)
    void DisplayText(const char *text) override { require(false, text); }
};
vtkStandardNewMacro(NoisyVtk);

/// To be called first. Sends files and settings to a folder of the process's own, in memory.
inline QString startFuzzing()
{
    static const QTemporaryDir folder("/dev/shm/olvik-fuzz-XXXXXX");
    for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, QFile::encodeName(folder.path()));
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        require(type == QtDebugMsg || type == QtInfoMsg, qPrintable(text));
    });
    vtkOutputWindow::SetInstance(NoisyVtk::New());
    return folder.path();
}

inline void writeFile(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size(),
        "the input is on disk");
}

inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
