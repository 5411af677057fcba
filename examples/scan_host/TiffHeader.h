#pragma once

#include <QtGlobal>

#include <optional>

class QIODevice;

/// The tags of a TIFF file that decide whether its first image is a height map.
struct TiffHeader
{
    enum Photometric { WhiteIsZero = 0, BlackIsZero = 1 };
    enum SampleFormat { Unsigned = 1, Signed = 2, Float = 3 };

    quint32 width = 0;
    quint32 height = 0;
    // What a file without the tag means; none may leave out the photometric one.
    quint32 bitsPerSample = 1;
    quint32 samplesPerPixel = 1;
    quint32 sampleFormat = Unsigned;
    quint32 photometric = BlackIsZero;
    bool isTiled = false;
    bool hasMoreImages = false;

    /// 32-bit floats or integers of 16 or 8 bits.
    bool hasHeightSamples() const;

    /// Reads classic and big files in both byte orders.
    /// \return nothing when the device holds something else, or ends within the directory
    static std::optional<TiffHeader> read(QIODevice &device);
};
