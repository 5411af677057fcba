#include "ScannerSimulator.h"

#include "MachinedPart.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float dropout = 1000.0F;
constexpr double dropoutShare = 0.004;
constexpr float noiseDeviation = 0.35F;
/// Values of recorded noise; each profile starts anywhere within them.
constexpr std::size_t noiseLength = 1 << 18;

int scaled(int length, double share)
{
    return std::max(1, static_cast<int>(std::lround(length * share)));
}

} // namespace

ScannerSimulator::ScannerSimulator(QSize frameSize)
    : frame{frameSize.width(), frameSize.height(), {}}
    , period(scaled(frameSize.height(), 1.25))
    , step(scaled(period, 1.0 / 48))
{
    frame.heights.resize(
        static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(frame.height));
    scanPart();
    shadeSteps();
    recordNoise();
}

HeightMap &ScannerSimulator::next()
{
    for (int row = 0; row < frame.height; ++row)
        writeProfile(
            frame.heights.data() + std::ptrdiff_t(row) * frame.width, (firstRow + row) % period);
    firstRow = (firstRow + step) % period;
    return frame;
}

void ScannerSimulator::scanPart()
{
    const double xScale = MachinedPart::beltWidth / frame.width;
    const double yScale = MachinedPart::pitch / period;
    // Heights shrink with the profile, so that the picture keeps its proportions at every size.
    const auto zScale = static_cast<float>(1.0 / xScale);

    belt.reserve(static_cast<std::size_t>(frame.width) * static_cast<std::size_t>(period));
    for (int row = 0; row < period; ++row) {
        for (int column = 0; column < frame.width; ++column)
            belt.push_back(zScale * MachinedPart::heightAt(column * xScale, row * yScale));
    }
}

// The sensor looks from one side, so a steep wall hides some of what stands behind it.
void ScannerSimulator::shadeSteps()
{
    const auto width = static_cast<std::size_t>(frame.width);
    const auto steep = static_cast<float>(40.0 * frame.width / MachinedPart::beltWidth);
    const int reach = scaled(frame.width, 0.006);
    std::bernoulli_distribution isHidden(0.7);
    for (std::size_t row = 0; row < static_cast<std::size_t>(period); ++row) {
        float *profile = belt.data() + row * width;
        int hidden = 0;
        for (std::size_t column = 1; column < width; ++column) {
            const float drop = profile[column - 1] - profile[column];
            if (drop > steep && profile[column] > 0)
                hidden = reach;
            else if (hidden > 0)
                --hidden;
            if (hidden > 0 && isHidden(random))
                profile[column] = MachinedPart::noEcho;
        }
    }
}

void ScannerSimulator::recordNoise()
{
    std::normal_distribution<float> deviation(0.0F, noiseDeviation);
    std::bernoulli_distribution isDropout(dropoutShare);
    const auto scale = static_cast<float>(frame.width / MachinedPart::beltWidth);
    noise.resize(noiseLength);
    for (float &value : noise)
        value = isDropout(random) ? dropout : scale * deviation(random);
}

void ScannerSimulator::writeProfile(float *profile, int beltRow)
{
    const auto width = static_cast<std::size_t>(frame.width);
    std::uniform_int_distribution<std::size_t> anyStart(0, noise.size() - width);
    const float *deviation = noise.data() + anyStart(random);
    const float *surface = belt.data() + static_cast<std::size_t>(beltRow) * width;
    for (std::size_t i = 0; i < width; ++i) {
        const bool isSeen = surface[i] > MachinedPart::noEcho && deviation[i] < dropout;
        profile[i] = isSeen ? surface[i] + deviation[i] : MachinedPart::noEcho;
    }
}
