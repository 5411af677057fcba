#include "TiffHeader.h"

#include <QFile>

#include <tiffio.h>

#include <memory>

bool TiffHeader::hasHeightSamples() const
{
    if (sampleFormat == SAMPLEFORMAT_IEEEFP)
        return bitsPerSample == 32;
    return (sampleFormat == SAMPLEFORMAT_UINT || sampleFormat == SAMPLEFORMAT_INT)
        && (bitsPerSample == 16 || bitsPerSample == 8);
}

std::optional<TiffHeader> TiffHeader::read(const QString &path)
{
    // libtiff writes to the console on its own; vtkTIFFReader sets handlers, too.
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    const std::unique_ptr<TIFF, decltype(&TIFFClose)> file(
        TIFFOpen(QFile::encodeName(path).constData(), "r"), TIFFClose);
    if (!file)
        return std::nullopt;

    TiffHeader header;
    TIFFGetField(file.get(), TIFFTAG_IMAGEWIDTH, &header.width);
    TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &header.height);
    TIFFGetField(file.get(), TIFFTAG_PHOTOMETRIC, &header.photometric);
    TIFFGetFieldDefaulted(file.get(), TIFFTAG_BITSPERSAMPLE, &header.bitsPerSample);
    TIFFGetFieldDefaulted(file.get(), TIFFTAG_SAMPLESPERPIXEL, &header.samplesPerPixel);
    TIFFGetFieldDefaulted(file.get(), TIFFTAG_SAMPLEFORMAT, &header.sampleFormat);
    header.isTiled = TIFFIsTiled(file.get()) != 0;
    header.hasMoreImages = TIFFLastDirectory(file.get()) == 0;
    return header;
}
