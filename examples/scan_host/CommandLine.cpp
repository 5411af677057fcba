#include "CommandLine.h"

#include "HeightMapReader.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <optional>

namespace {

constexpr int smallestSide = 16;
constexpr int largestSide = 4096;
constexpr double lowestRate = 0.1;
constexpr double highestRate = 100.0;
constexpr float largestScale = 1e6f;
constexpr int mostFrames = 1000000;

const QString colorOption = QStringLiteral("color");
const QString embedOption = QStringLiteral("embed");
const QString framesOption = QStringLiteral("frames");
const QString languageOption = QStringLiteral("language");
const QString loadOption = QStringLiteral("load");
const QString rateOption = QStringLiteral("rate");
const QString scaleOption = QStringLiteral("scale");
const QString screenshotOption = QStringLiteral("screenshot");
const QString sizeOption = QStringLiteral("size");
const QString swapOption = QStringLiteral("swap");
const QString widthOption = QStringLiteral("width");

std::optional<int> numberIn(const QString &text, int lowest, int highest)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < lowest || number > highest)
        return std::nullopt;
    return number;
}

} // namespace

CommandLine::CommandLine()
{
    parser.setApplicationDescription(
        tr("Shows the simulated buffers of a line scanner, or one height map from a file, in 3D."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"),
        tr("Height map: TIFF (32-bit float, 16 or 8 bits), PNG or PGM (16 or 8 bits), or raw "
           "little-endian 32-bit floats (.f32, .raw, .bin)."),
        QStringLiteral("[file]"));
    parser.addOptions({
        {colorOption, tr("Colour by height (auto) or by a gradient."),
            QStringLiteral("auto|gradient")},
        {embedOption, tr("Place the view in a window of this program.")},
        {framesOption, tr("End after <count> buffers."), QStringLiteral("count")},
        {languageOption, tr("Show the viewer's texts in <language> (default: the system's)."),
            QStringLiteral("language")},
        {loadOption, tr("Show the points of <ply> after the first buffer, within its bounds."),
            QStringLiteral("ply")},
        {rateOption, tr("Feed <hertz> buffers a second (default: 10)."), QStringLiteral("hertz")},
        {scaleOption, tr("Stretch the axes by the factors <X,Y,Z>."), QStringLiteral("X,Y,Z")},
        {screenshotOption, tr("Write one picture of the window to <png> and end."),
            QStringLiteral("png")},
        {sizeOption, tr("Simulate profiles and buffers of <WxH> (default: 1024x768)."),
            QStringLiteral("WxH")},
        {swapOption, tr("Exchange y and z of the loaded points.")},
        {widthOption, tr("Take <count> values of a raw file for one profile."),
            QStringLiteral("count")},
    });
}

CommandLine::Outcome CommandLine::parse(const QStringList &arguments)
{
    if (!parser.parse(arguments)) {
        reject(parser.errorText());
        return Outcome::Reject;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        message = parser.helpText();
        return Outcome::PrintText;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        message = QCoreApplication::applicationName() + QLatin1Char(' ')
            + QCoreApplication::applicationVersion() + QLatin1Char('\n');
        return Outcome::PrintText;
    }
    if (!readSource() || !readSize() || !readRate() || !readFrames() || !readCloud() || !readScale()
        || !readColor() || !readLanguage())
        return Outcome::Reject;

    result.embed = parser.isSet(embedOption);
    result.screenshot = parser.value(screenshotOption);
    if (parser.isSet(screenshotOption) && result.screenshot.isEmpty()) {
        reject(tr("--screenshot needs the name of a file"));
        return Outcome::Reject;
    }
    return Outcome::Run;
}

bool CommandLine::readSource()
{
    const QStringList files = parser.positionalArguments();
    if (files.size() > 1)
        return reject(tr("one file at most, but there are %1").arg(files.size()));
    if (!files.isEmpty() && files.first().isEmpty())
        return reject(tr("the name of the file is empty"));
    if (!files.isEmpty())
        result.file = files.first();

    const bool isRaw = HeightMapReader::isRaw(result.file);
    if (isRaw != parser.isSet(widthOption))
        return reject(isRaw ? tr("%1: a raw file needs --width").arg(result.file)
                            : tr("--width is for raw files only"));
    if (!isRaw)
        return true;

    const auto width = numberIn(parser.value(widthOption), 1, HeightMapReader::largestSide);
    if (!width)
        return reject(tr("--width: '%1' is no whole number from 1 to %2")
                          .arg(parser.value(widthOption))
                          .arg(HeightMapReader::largestSide));
    result.rawWidth = *width;
    return true;
}

bool CommandLine::readSize()
{
    if (!parser.isSet(sizeOption))
        return true;
    if (!result.file.isEmpty())
        return reject(tr("--size is for the simulated scanner only"));

    static const QRegularExpression form(QStringLiteral("^(\\d{1,9})x(\\d{1,9})$"));
    const QRegularExpressionMatch match = form.match(parser.value(sizeOption));
    const auto width = numberIn(match.captured(1), smallestSide, largestSide);
    const auto height = numberIn(match.captured(2), smallestSide, largestSide);
    if (!width || !height)
        return reject(tr("--size: '%1' is no WxH with sides from %2 to %3")
                          .arg(parser.value(sizeOption))
                          .arg(smallestSide)
                          .arg(largestSide));
    result.frameSize = QSize(*width, *height);
    return true;
}

bool CommandLine::readRate()
{
    if (!parser.isSet(rateOption))
        return true;

    bool isNumber = false;
    result.rate = parser.value(rateOption).toDouble(&isNumber);
    if (isNumber && result.rate >= lowestRate && result.rate <= highestRate)
        return true;
    return reject(tr("--rate: '%1' is no number from %2 to %3")
                      .arg(parser.value(rateOption))
                      .arg(lowestRate)
                      .arg(highestRate));
}

bool CommandLine::readFrames()
{
    if (!parser.isSet(framesOption))
        return true;

    const auto frames = numberIn(parser.value(framesOption), 1, mostFrames);
    if (!frames)
        return reject(tr("--frames: '%1' is no whole number from 1 to %2")
                          .arg(parser.value(framesOption))
                          .arg(mostFrames));
    result.frames = *frames;
    return true;
}

bool CommandLine::readCloud()
{
    result.view.swapsAxes = parser.isSet(swapOption);
    result.view.cloudFile = parser.value(loadOption);
    if (!parser.isSet(loadOption))
        return !result.view.swapsAxes || reject(tr("--swap needs --load"));
    QFile file(result.view.cloudFile);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return reject(tr("%1: is not a readable file").arg(file.fileName()));
    return file.readLine(16).trimmed() == "ply"
        || reject(tr("%1: is not a PLY file").arg(file.fileName()));
}

bool CommandLine::readScale()
{
    if (!parser.isSet(scaleOption))
        return true;

    const QStringList factors = parser.value(scaleOption).split(QLatin1Char(','));
    bool areFactors = factors.size() == 3;
    for (int i = 0; areFactors && i < 3; ++i) {
        const float factor = factors[i].toFloat(&areFactors);
        areFactors = areFactors && factor > 0.0f && factor <= largestScale;
        result.view.scale[static_cast<std::size_t>(i)] = factor;
    }
    return areFactors
        || reject(tr("--scale: '%1' is no X,Y,Z of factors above 0, at most %2")
                      .arg(parser.value(scaleOption))
                      .arg(largestScale));
}

bool CommandLine::readColor()
{
    if (!parser.isSet(colorOption))
        return true;

    const QString color = parser.value(colorOption);
    result.view.isGradient = color == QLatin1String("gradient");
    return *result.view.isGradient || color == QLatin1String("auto")
        || reject(tr("--color: '%1' is neither auto nor gradient").arg(color));
}

bool CommandLine::readLanguage()
{
    if (!parser.isSet(languageOption))
        return true;
    const QString name = parser.value(languageOption);
    result.language = QLocale(name);
    // What Qt makes of a name that it does not know.
    const bool isKnown = result.language != QLocale::c() || name == QLatin1String("C");
    return isKnown || reject(tr("--language takes a language as en or de_AT, not '%1'").arg(name));
}

bool CommandLine::reject(const QString &reason)
{
    message = reason;
    return false;
}
