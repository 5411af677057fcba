#include "TiffHeader.h"

#include <QDataStream>
#include <QIODevice>

namespace {

enum Tag : quint16 {
    ImageWidth = 256,
    ImageLength = 257,
    BitsPerSample = 258,
    PhotometricInterpretation = 262,
    SamplesPerPixel = 277,
    TileWidth = 322,
    SampleFormat = 339
};

/// The two kinds of file differ in the width of counts and offsets.
class DirectoryReader
{
public:
    explicit DirectoryReader(QIODevice &file)
        : device(file)
        , stream(&file)
    { }

    bool start();
    std::optional<TiffHeader> readDirectory();

private:
    quint16 read16();
    quint32 read32();
    quint64 readOffset();
    void readEntry(TiffHeader &header);
    bool isGood() const { return stream.status() == QDataStream::Ok; }

    QIODevice &device;
    QDataStream stream;
    bool isBig = false;
};

bool DirectoryReader::start()
{
    if (!device.seek(0))
        return false;
    const QByteArray byteOrder = device.read(2);
    if (byteOrder != "II" && byteOrder != "MM")
        return false;
    stream.setByteOrder(byteOrder == "II" ? QDataStream::LittleEndian : QDataStream::BigEndian);

    const quint16 version = read16();
    isBig = version == 43;
    if (isBig)
        return read16() == sizeof(quint64) && read16() == 0;
    return version == 42;
}

std::optional<TiffHeader> DirectoryReader::readDirectory()
{
    const quint64 offset = readOffset();
    if (!isGood() || offset >= quint64(device.size()) || !device.seek(qint64(offset)))
        return std::nullopt;

    TiffHeader header;
    const quint64 entries = isBig ? readOffset() : read16();
    for (quint64 i = 0; i < entries && isGood(); ++i)
        readEntry(header);
    header.hasMoreImages = readOffset() != 0;
    if (!isGood())
        return std::nullopt;
    return header;
}

void DirectoryReader::readEntry(TiffHeader &header)
{
    constexpr quint16 shortType = 3;
    const quint16 tag = read16();
    const quint16 type = read16();
    readOffset(); // number of values: the tags of interest have one
    const qint64 next = device.pos() + (isBig ? 8 : 4);
    const quint32 value = type == shortType ? read16() : read32();
    device.seek(next);

    switch (tag) {
    case ImageWidth:
        header.width = value;
        break;
    case ImageLength:
        header.height = value;
        break;
    case BitsPerSample:
        header.bitsPerSample = value;
        break;
    case PhotometricInterpretation:
        header.photometric = value;
        break;
    case SamplesPerPixel:
        header.samplesPerPixel = value;
        break;
    case TileWidth:
        header.isTiled = true;
        break;
    case SampleFormat:
        header.sampleFormat = value;
        break;
    default:
        break;
    }
}

quint16 DirectoryReader::read16()
{
    quint16 value = 0;
    stream >> value;
    return value;
}

quint32 DirectoryReader::read32()
{
    quint32 value = 0;
    stream >> value;
    return value;
}

quint64 DirectoryReader::readOffset()
{
    if (!isBig)
        return read32();
    quint64 value = 0;
    stream >> value;
    return value;
}

} // namespace

bool TiffHeader::hasHeightSamples() const
{
    if (sampleFormat == Float)
        return bitsPerSample == 32;
    return (sampleFormat == Unsigned || sampleFormat == Signed)
        && (bitsPerSample == 16 || bitsPerSample == 8);
}

std::optional<TiffHeader> TiffHeader::read(QIODevice &device)
{
    DirectoryReader reader(device);
    if (!reader.start())
        return std::nullopt;
    return reader.readDirectory();
}
