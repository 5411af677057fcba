#include "Feeder.h"

#include "FrameSource.h"

#include <cmath>

Feeder::Feeder(std::unique_ptr<FrameSource> frameSource, double rate, int frames)
    : source(std::move(frameSource))
    , limit(frames)
{
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(static_cast<int>(std::lround(1000.0 / rate)));
    connect(&timer, &QTimer::timeout, this, &Feeder::feed);
}

Feeder::~Feeder() = default;

void Feeder::start()
{
    timer.start();
    feed();
}

void Feeder::stop()
{
    timer.stop();
}

void Feeder::feed()
{
    if (limit > 0 && count == limit) {
        timer.stop();
        Q_EMIT finished();
        return;
    }
    ++count;
    Q_EMIT frameReady(source->next(), count);
}
