#pragma once

#include "HeightMap.h"

#include <QCoreApplication>
#include <QString>

#include <optional>

class QFile;
class vtkImageReader2;

/// Reads a height map from a file whose suffix names the format: TIFF with 32-bit float, 16-bit or
/// 8-bit grey values, PNG or binary PGM with 16-bit or 8-bit ones, or raw little-endian floats.
///
/// Grey values are taken as heights unchanged, and row 0 of the file becomes profile 0. Nothing
/// that the image libraries have to say reaches the console: errorString() tells it in one line.
/// To be used while the process has a single thread.
class HeightMapReader
{
    Q_DECLARE_TR_FUNCTIONS(HeightMapReader)

public:
    static constexpr int largestSide = 65536;
    /// Keeps a damaged header from asking for all the memory of the machine.
    static constexpr qint64 largestPointCount = qint64{64} * 1024 * 1024;

    /// \return whether a file of this name holds nothing but heights, so that read() needs a width
    static bool isRaw(const QString &path);

    /// \param path name of a file
    /// \param rawWidth values per profile of a raw file, at most largestSide; others ignore it
    /// \return nothing for a file that is missing, damaged or of another type
    [[nodiscard]] std::optional<HeightMap> read(const QString &path, int rawWidth = 0);

    /// Why the last read() returned nothing.
    QString errorString() const { return error; }

private:
    enum class RowOrder { TopFirst, BottomFirst };

    std::optional<HeightMap> readRaw(QFile &file, int width);
    std::optional<HeightMap> readTiff(QFile &file);
    std::optional<HeightMap> readPng(QFile &file);
    std::optional<HeightMap> readPgm(QFile &file);
    std::optional<HeightMap> decode(vtkImageReader2 *reader, const QString &path, RowOrder order);
    bool isSoundPng(QFile &file);
    bool hasAcceptableSize(qint64 width, qint64 height);
    std::nullopt_t reject(const QString &reason);

    QString error;
};
