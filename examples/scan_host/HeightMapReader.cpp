#include "HeightMapReader.h"

#include "PgmHeader.h"
#include "StderrMute.h"
#include "TiffHeader.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

#include <vtkCommand.h>
#include <vtkFloatArray.h>
#include <vtkImageData.h>
#include <vtkImageReader2.h>
#include <vtkNew.h>
#include <vtkPNGReader.h>
#include <vtkPointData.h>
#include <vtkTIFFReader.h>

#include <algorithm>

namespace {

struct ReaderFaults
{
    bool any = false;
    void note() { any = true; }
};

bool hasSuffix(const QString &path, std::initializer_list<const char *> suffixes)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return std::any_of(suffixes.begin(), suffixes.end(),
        [&suffix](const char *candidate) { return suffix == QLatin1String(candidate); });
}

HeightMap toHeightMap(vtkImageData *image, bool lastRowFirst)
{
    const int width = image->GetDimensions()[0];
    const int height = image->GetDimensions()[1];
    vtkNew<vtkFloatArray> samples;
    samples->DeepCopy(image->GetPointData()->GetScalars());

    HeightMap map{width, height, {}};
    map.heights.resize(static_cast<std::size_t>(samples->GetNumberOfValues()));
    for (int row = 0; row < height; ++row) {
        const int source = lastRowFirst ? height - 1 - row : row;
        std::copy_n(samples->GetPointer(vtkIdType(source) * width), width,
            map.heights.begin() + std::ptrdiff_t(row) * width);
    }
    return map;
}

} // namespace

bool HeightMapReader::isRaw(const QString &path)
{
    return hasSuffix(path, {"f32", "raw", "bin"});
}

std::optional<HeightMap> HeightMapReader::read(const QString &path, int rawWidth)
{
    const QFileInfo info(path);
    if (!info.exists())
        return reject(tr("there is no such file"));
    if (!info.isFile())
        return reject(info.isDir() ? tr("is a directory") : tr("is not a regular file"));

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return reject(file.errorString());
    if (file.size() == 0)
        return reject(tr("is empty"));

    if (isRaw(path))
        return readRaw(file, rawWidth);
    if (hasSuffix(path, {"tif", "tiff"}))
        return readTiff(file);
    if (hasSuffix(path, {"png"}))
        return readPng(file);
    if (hasSuffix(path, {"pgm", "pnm"}))
        return readPgm(file);
    return reject(
        tr("has an unknown suffix; known are tif, tiff, png, pgm, pnm, f32, raw and bin"));
}

std::optional<HeightMap> HeightMapReader::readRaw(QFile &file, int width)
{
    const qint64 profileBytes = qint64(width) * qint64(sizeof(float));
    if (width < 1)
        return reject(tr("is a raw file, which needs the number of values per profile"));
    if (file.size() % profileBytes != 0)
        return reject(tr("has %1 bytes, which is no whole number of profiles of %2 values")
                          .arg(file.size())
                          .arg(width));

    const qint64 height = file.size() / profileBytes;
    if (!hasAcceptableSize(width, height))
        return std::nullopt;

    HeightMap map{width, static_cast<int>(height), {}};
    map.heights.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (file.read(reinterpret_cast<char *>(map.heights.data()), file.size()) != file.size())
        return reject(file.errorString());
    qFromLittleEndian<quint32>(
        map.heights.data(), static_cast<qsizetype>(map.heights.size()), map.heights.data());
    return map;
}

std::optional<HeightMap> HeightMapReader::readTiff(QFile &file)
{
    const std::optional<TiffHeader> header = TiffHeader::read(file.fileName());
    if (!header)
        return reject(tr("is not a TIFF file, or is cut short"));
    if (header->samplesPerPixel != 1 || header->photometric > TiffHeader::BlackIsZero)
        return reject(tr("is not a grey image"));
    // vtkTIFFReader inverts such values, or leaves them uninitialised when they have 16 or 32 bits.
    if (header->photometric != TiffHeader::BlackIsZero)
        return reject(tr("counts its grey values from white"));
    // It would take half-precision floats for integers.
    if (!header->hasHeightSamples())
        return reject(
            tr("has samples that are neither 32-bit floats nor 16-bit or 8-bit integers"));
    // It scrambles tiles without a word.
    if (header->isTiled)
        return reject(tr("is stored in tiles"));
    if (header->hasMoreImages)
        return reject(tr("holds more than one image"));
    if (!hasAcceptableSize(header->width, header->height))
        return std::nullopt;

    vtkNew<vtkTIFFReader> reader;
    // A type that is set overrules the file's own; this one keeps the rows in the file's order.
    reader->SetOrientationType(1);
    return decode(reader, file.fileName(), RowOrder::TopFirst);
}

std::optional<HeightMap> HeightMapReader::readPng(QFile &file)
{
    // vtkPNGReader 9.1 crashes on any fault that libpng finds: it jumps back into a function that
    // has returned already. Only what Qt decodes to the end may reach it.
    if (!isSoundPng(file))
        return std::nullopt;
    vtkNew<vtkPNGReader> reader;
    return decode(reader, file.fileName(), RowOrder::BottomFirst);
}

bool HeightMapReader::isSoundPng(QFile &file)
{
    const StderrMute mute;
    QImageReader probe(&file, "png");
    const QSize size = probe.size();
    const QImage::Format format = probe.imageFormat();
    if (!size.isValid()) {
        reject(tr("is not a PNG file, or is cut short"));
        return false;
    }
    if (format != QImage::Format_Grayscale16 && format != QImage::Format_Grayscale8) {
        reject(tr("is not a grey image of 16 or 8 bits without transparency"));
        return false;
    }
    if (!hasAcceptableSize(size.width(), size.height()))
        return false;
    // Qt makes up the last chunk's checksum where it is missing.
    if (!probe.read().isNull() && file.seek(0) && file.readAll().contains("IEND\xae\x42\x60\x82"))
        return true;
    reject(tr("is a damaged PNG file"));
    return false;
}

std::optional<HeightMap> HeightMapReader::readPgm(QFile &file)
{
    const std::optional<PgmHeader> header = PgmHeader::read(file);
    if (!header)
        return reject(tr("is not a binary PGM file (P5)"));
    if (!hasAcceptableSize(header->width, header->height))
        return std::nullopt;
    if (file.size() - header->size < header->sampleBytes() * header->width * header->height)
        return reject(tr("is cut short"));

    // vtkPNMReader 9.1 takes 16-bit samples for pairs of 8-bit ones and never returns from a header
    // that is cut short, so VTK only reads what follows the header.
    vtkNew<vtkImageReader2> reader;
    reader->SetFileDimensionality(2);
    reader->SetHeaderSize(static_cast<unsigned long>(header->size));
    reader->SetDataExtent(0, header->width - 1, 0, header->height - 1, 0, 0);
    reader->SetDataScalarType(header->sampleBytes() == 2 ? VTK_UNSIGNED_SHORT : VTK_UNSIGNED_CHAR);
    reader->SetDataByteOrderToBigEndian();
    // "Lower left" is where VTK says that the first row of the file lies; it then keeps the order.
    reader->FileLowerLeftOn();
    return decode(reader, file.fileName(), RowOrder::TopFirst);
}

std::optional<HeightMap> HeightMapReader::decode(
    vtkImageReader2 *reader, const QString &path, RowOrder order)
{
    // The reader's pipeline and the image libraries write to the console, whoever observes.
    const StderrMute mute;
    ReaderFaults faults;
    reader->AddObserver(vtkCommand::ErrorEvent, &faults, &ReaderFaults::note);
    reader->SetFileName(QFile::encodeName(path).constData());
    reader->Update();

    vtkImageData *image = reader->GetOutput();
    if (faults.any || reader->GetErrorCode() != 0 || !image->GetPointData()->GetScalars())
        return reject(tr("is damaged or cut short"));
    if (image->GetNumberOfScalarComponents() != 1 || image->GetDimensions()[2] != 1)
        return reject(tr("does not hold one grey image"));
    return toHeightMap(image, order == RowOrder::BottomFirst);
}

bool HeightMapReader::hasAcceptableSize(qint64 width, qint64 height)
{
    if (width >= 1 && height >= 1 && width <= largestSide && height <= largestSide
        && width * height <= largestPointCount)
        return true;
    reject(tr("has a size of %1 x %2; accepted are 1 to %3 on a side and %4 in all")
               .arg(width)
               .arg(height)
               .arg(largestSide)
               .arg(largestPointCount));
    return false;
}

std::nullopt_t HeightMapReader::reject(const QString &reason)
{
    error = reason;
    return std::nullopt;
}
