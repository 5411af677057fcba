#pragma once

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QLocale>
#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// What the user asks of the 3D view itself.
struct ViewOptions
{
    /// PLY file to show after the first buffer; empty for none.
    QString cloudFile;
    bool swapsAxes = false;
    /// Factors of the X, Y and Z axis.
    std::array<float, 3> scale{1.0f, 1.0f, 1.0f};
    /// Colours by a gradient or by height; as the viewer was left when not given.
    std::optional<bool> isGradient;
};

/// What the user asks for.
struct Options
{
    /// File to show; empty for the simulated scanner.
    QString file;
    /// Values per profile of a raw file; 0 for every other source.
    int rawWidth = 0;
    /// Values per profile and profiles of a simulated buffer.
    QSize frameSize{1024, 768};
    /// Buffers a second.
    double rate = 10.0;
    /// Buffers after which the host ends; 0: it runs until its window is closed.
    int frames = 0;
    bool embed = false;
    /// Of the viewer's texts.
    QLocale language = QLocale::system();
    /// Picture to write; empty for none.
    QString screenshot;
    ViewOptions view;
};

/// Turns the arguments of the process into Options.
class CommandLine
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    enum class Outcome { Run, PrintText, Reject };

    CommandLine();

    /// \param arguments those of the process, its name first
    Outcome parse(const QStringList &arguments);

    /// Complete after Outcome::Run only.
    const Options &options() const { return result; }

    /// The text to print, or why the arguments are rejected, in one line.
    QString text() const { return message; }

private:
    bool readSource();
    bool readSize();
    bool readRate();
    bool readFrames();
    bool readCloud();
    bool readScale();
    bool readColor();
    bool readLanguage();
    bool reject(const QString &reason);

    QCommandLineParser parser;
    Options result;
    QString message;
};
