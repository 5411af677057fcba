#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

class QIODevice;

/// What precedes the vertices of a PLY file, as far as reading its points needs it.
struct PlyHeader
{
    enum class Format { Ascii, LittleEndian, BigEndian };

    struct Property
    {
        QByteArray type;
        QByteArray name;
    };

    Format format = Format::Ascii;
    /// In [0, INT_MAX].
    qint64 vertexCount = 0;
    /// Scalars only, x, y and z among them.
    std::vector<Property> vertexProperties;

    /// The least that the vertices need behind the header, in bytes; exact in the binary formats.
    qint64 vertexBytes() const;

    /// A header for the same vertices and nothing else.
    QByteArray text() const;

    /// Reads from the start of the device and leaves it at the first vertex. Elements behind the
    /// vertices are allowed but not kept.
    /// \return nothing when the device holds something else or a header that cannot be trusted
    static std::optional<PlyHeader> read(QIODevice &device);
};
