#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QDataStream>
#include <QImage>

#include <vector>

/// Files in memory, small enough to know each value.
namespace SampleFiles {

/// A TIFF file whose directory stands in front of the values, so that a file cut short keeps it.
struct Tiff
{
    QDataStream::ByteOrder byteOrder = QDataStream::LittleEndian;
    bool isBig = false;
    quint32 width = 3;
    quint32 height = 2;
    quint16 bits = 32;
    quint16 compression = 1;
    quint16 photometric = 1;
    quint16 orientation = 1;
    quint16 channels = 1;
    quint16 format = 3;
    bool isTiled = false;
    bool hasNextImage = false;
    QByteArray values;

    QByteArray bytes() const;
};

template <typename Sample>
QByteArray inOrder(const std::vector<Sample> &samples, QDataStream::ByteOrder order)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
    for (const Sample sample : samples)
        stream << sample;
    return bytes;
}

inline QByteArray Tiff::bytes() const
{
    QByteArray result(byteOrder == QDataStream::LittleEndian ? "II" : "MM");
    QDataStream stream(&result, QIODevice::Append);
    stream.setByteOrder(byteOrder);
    const auto writeOffset = [&stream, this](quint64 offset) {
        if (isBig)
            stream << offset;
        else
            stream << static_cast<quint32>(offset);
    };
    const auto writeEntry = [&stream, &writeOffset, this](quint16 tag, quint32 value) {
        constexpr quint16 longType = 4;
        stream << tag << longType;
        writeOffset(1);
        stream << value;
        if (isBig)
            stream << quint32(0);
    };

    constexpr quint16 entries = 11;
    const quint64 directory = isBig ? 16 : 8;
    const quint64 end = isBig ? directory + 8 + entries * 20 + 8 : directory + 2 + entries * 12 + 4;
    stream << quint16(isBig ? 43 : 42);
    if (isBig)
        stream << quint16(8) << quint16(0) << directory << quint64(entries);
    else
        stream << static_cast<quint32>(directory) << entries;
    writeEntry(256, width);
    writeEntry(257, height);
    writeEntry(258, bits);
    writeEntry(259, compression);
    writeEntry(262, photometric);
    writeEntry(273, static_cast<quint32>(end));
    writeEntry(274, orientation);
    writeEntry(277, channels);
    writeEntry(279, static_cast<quint32>(values.size()));
    writeEntry(isTiled ? 322 : 284, isTiled ? 16 : 1);
    writeEntry(339, format);
    writeOffset(hasNextImage ? directory : 0);
    return result + values;
}

inline QByteArray png(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

template <typename Sample>
QByteArray greyPng(QImage::Format format, int width, const std::vector<Sample> &samples)
{
    QImage image(width, static_cast<int>(samples.size()) / width, format);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto column = i % static_cast<std::size_t>(width);
        const int row = static_cast<int>(i) / width;
        reinterpret_cast<Sample *>(image.scanLine(row))[column] = samples[i];
    }
    return png(image);
}

inline QByteArray colourPng()
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    return png(image);
}

} // namespace SampleFiles
