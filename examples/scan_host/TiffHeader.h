#pragma once

#include <QString>

#include <optional>

/// The tags of a TIFF file that decide whether its first image is a height map.
struct TiffHeader
{
    enum Photometric { WhiteIsZero = 0, BlackIsZero = 1 };

    quint32 width = 0;
    quint32 height = 0;
    quint16 bitsPerSample = 0;
    quint16 samplesPerPixel = 0;
    quint16 sampleFormat = 0;
    quint16 photometric = BlackIsZero; ///< no file may leave it out, but some do
    bool isTiled = false;
    bool hasMoreImages = false;

    /// 32-bit floats or integers of 16 or 8 bits.
    bool hasHeightSamples() const;

    /// \return nothing when the file holds something else, or ends within the directory
    static std::optional<TiffHeader> read(const QString &path);
};
