#pragma once

#include <QBuffer>
#include <QDataStream>
#include <QImage>

#include <algorithm>
#include <utility>
#include <vector>

/// Files in memory, small enough to know each value.
namespace SampleFiles {

/// Three columns and two rows. Its directory stands in front of the values, so that a file
/// cut short keeps it.
struct Tiff
{
    QDataStream::ByteOrder byteOrder = QDataStream::LittleEndian;
    quint32 bits = 32;
    quint32 photometric = 1;
    quint32 format = 3;
    bool isTiled = false;
    QByteArray values = QByteArray(24, 'x');

    QByteArray bytes() const
    {
        // The values follow the directory, at byte 134.
        const std::vector<std::pair<int, quint32>> tags{{256, 3}, {257, 2}, {258, bits}, {259, 1},
            {262, photometric}, {273, 134}, {277, 1}, {279, quint32(values.size())},
            {isTiled ? 322 : 284, isTiled ? 16 : 1}, {339, format}};
        QByteArray result(byteOrder == QDataStream::LittleEndian ? "II" : "MM");
        QDataStream stream(&result, QIODevice::Append);
        stream.setByteOrder(byteOrder);
        stream << quint16(42) << quint32(8) << quint16(tags.size());
        for (const auto &[tag, value] : tags)
            stream << quint16(tag) << quint16(4) << quint32(1) << value;
        stream << quint32(0);
        return result + values;
    }
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

inline QByteArray png(const QImage &image)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

/// \param samples two rows of three
template <typename Sample>
QByteArray greyPng(QImage::Format format, const std::vector<Sample> &samples)
{
    QImage image(3, 2, format);
    for (int row = 0; row < 2; ++row)
        std::copy_n(&samples[static_cast<std::size_t>(row) * 3], 3,
            reinterpret_cast<Sample *>(image.scanLine(row)));
    return png(image);
}

inline QByteArray colourPng()
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    return png(image);
}

} // namespace SampleFiles
