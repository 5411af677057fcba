#pragma once

#include "FrameSource.h"

#include <QSize>

#include <random>
#include <vector>

/// A line scanner over a belt that carries machined parts: each frame shows the belt a little
/// further on, with fresh noise and dropouts, which arrive as exact zeros.
///
/// What does not change from frame to frame is computed once, so that a frame costs a few
/// milliseconds. Two simulators of one size deliver the same frames.
class ScannerSimulator : public FrameSource
{
public:
    /// \param frameSize values per profile and profiles of a frame; neither is 0
    explicit ScannerSimulator(QSize frameSize);

    HeightMap &next() override;

    /// Profiles by which the belt moves between two frames.
    int profilesPerFrame() const { return step; }

private:
    void scanPart();
    void shadeSteps();
    void recordNoise();
    void writeProfile(float *profile, int beltRow);

    HeightMap frame;
    int period;
    int step;
    int firstRow = 0;
    std::mt19937 random;
    /// One period of the belt: period * frame.width heights, 0 where nothing is ever seen.
    std::vector<float> belt;
    /// Added to what the sensor sees; a value at or above dropout replaces it by 0.
    std::vector<float> noise;
};
