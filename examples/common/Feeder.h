#pragma once

#include <QObject>
#include <QTimer>

#include <memory>

class FrameSource;
struct HeightMap;

/// Hands out the frames of a source at a steady rate.
class Feeder : public QObject
{
    Q_OBJECT

public:
    /// \param frames after which it stops; 0: never
    Feeder(std::unique_ptr<FrameSource> source, double rate, int frames);
    ~Feeder() override;

    /// The first frame is due at once.
    void start();

    /// No further frame until the next start.
    void stop();

Q_SIGNALS:
    /// \param count frames so far, this one included
    void frameReady(HeightMap &frame, int count);
    /// One period after the last frame.
    void finished();

private:
    void feed();

    std::unique_ptr<FrameSource> source;
    QTimer timer;
    int limit;
    int count = 0;
};
