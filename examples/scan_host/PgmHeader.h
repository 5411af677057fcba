#pragma once

#include <QtGlobal>

#include <optional>

class QIODevice;

/// What precedes the samples of a binary PGM file.
struct PgmHeader
{
    int width = 0;
    int height = 0;
    /// Largest sample, in [1, 65535].
    int maximum = 0;
    /// Bytes in front of the first sample.
    qint64 size = 0;

    qint64 sampleBytes() const { return maximum > 255 ? 2 : 1; }

    /// Reads from the start of the device.
    /// \return nothing when the device holds something else
    static std::optional<PgmHeader> read(QIODevice &device);
};
