#pragma once

#include "Pipeline.h"

/// Follows frames until they are on screen. Measures in milliseconds.
class FrameClock
{
public:
    explicit FrameClock(Pipeline &pipeline);

    /// Runs the event loop until the new window has settled.
    static void settle();

    /// From handing a buffer over to the frame on screen.
    double show(Heights &heights, int side);

    /// From a cloud that waits for the GUI thread to the frame on screen.
    double showConverted();

    /// The same picture again, without any change.
    double redraw();

    /// A step of the camera, or whatever else \a change does, to the frame on screen.
    double showChange(const std::function<void()> &change);

    /// New clouds that have reached the screen so far.
    int shownClouds() const { return clouds; }

private:
    void waitForCloud();

    Pipeline &pipeline;
    bool isRendered = false;
    int clouds = 0;
    int swaps = 0;
};
