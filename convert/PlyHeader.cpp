#include "PlyHeader.h"

#include <QIODevice>
#include <QList>

#include <algorithm>
#include <limits>

namespace {

/// Of lines that are no remark; VTK 9.1 reads them into a buffer of 4096 bytes.
constexpr qint64 longestHeaderLine = 1024;
/// Without remarks. Keeps a hostile file from filling the memory with properties.
constexpr qint64 longestHeader = 1024LL * 1024;

using Words = QList<QByteArray>;

/// \return 0 for an unknown type
qint64 sizeOfType(const QByteArray &type)
{
    struct Entry
    {
        const char *name;
        qint64 size;
    };
    static constexpr Entry entries[] = {{"char", 1}, {"int8", 1}, {"uchar", 1}, {"uint8", 1},
        {"short", 2}, {"int16", 2}, {"ushort", 2}, {"uint16", 2}, {"int", 4}, {"int32", 4},
        {"uint", 4}, {"uint32", 4}, {"float", 4}, {"float32", 4}, {"double", 8}, {"float64", 8}};
    const auto *found = std::find_if(std::begin(entries), std::end(entries),
        [&type](const Entry &entry) { return type == entry.name; });
    return found == std::end(entries) ? 0 : found->size;
}

bool isScalarType(const QByteArray &type)
{
    return sizeOfType(type) > 0;
}

std::optional<PlyHeader::Format> formatFromName(const QByteArray &name)
{
    if (name == "ascii")
        return PlyHeader::Format::Ascii;
    if (name == "binary_little_endian")
        return PlyHeader::Format::LittleEndian;
    if (name == "binary_big_endian")
        return PlyHeader::Format::BigEndian;
    return std::nullopt;
}

QByteArray nameOf(PlyHeader::Format format)
{
    switch (format) {
    case PlyHeader::Format::LittleEndian:
        return "binary_little_endian";
    case PlyHeader::Format::BigEndian:
        return "binary_big_endian";
    case PlyHeader::Format::Ascii:
        break;
    }
    return "ascii";
}

bool isRemark(const Words &words)
{
    return words.first() == "comment" || words.first() == "obj_info";
}

/// \return the first words of a remark, all words of other lines; nothing for a line without an
///         end, too long a line, or one that is no text
std::optional<Words> readWords(QIODevice &device)
{
    QByteArray part = device.readLine(longestHeaderLine);
    const Words words = part.simplified().split(' ');
    // Tools keep whole tables in one remark, which needs no memory.
    while (isRemark(words) && !part.isEmpty() && !part.endsWith('\n') && !part.contains('\0'))
        part = device.readLine(longestHeaderLine);
    if (!part.endsWith('\n') || part.contains('\0'))
        return std::nullopt;
    return words;
}

class Parser
{
public:
    std::optional<PlyHeader> parse(QIODevice &device)
    {
        // By itself: in another kind of file a remark may have no end.
        const QByteArray magic = device.readLine(longestHeaderLine);
        if (!magic.endsWith('\n') || magic.simplified() != "ply")
            return std::nullopt;
        for (qint64 length = 0; length < longestHeader;) {
            const qint64 start = device.pos();
            const std::optional<Words> words = readWords(device);
            if (!words)
                return std::nullopt;
            if (isRemark(*words))
                continue;
            length += device.pos() - start;
            if (*words == Words{"end_header"})
                return isComplete() ? std::make_optional(header) : std::nullopt;
            if (!accept(*words))
                return std::nullopt;
        }
        return std::nullopt;
    }

private:
    enum class Element { None, Vertex, Other };

    bool isComplete() const
    {
        return hasFormat && hasVertices && hasProperty("x") && hasProperty("y") && hasProperty("z");
    }

    bool hasProperty(const char *name) const
    {
        return std::any_of(header.vertexProperties.begin(), header.vertexProperties.end(),
            [name](const PlyHeader::Property &property) { return property.name == name; });
    }

    bool accept(const Words &words)
    {
        const QByteArray &keyword = words.first();
        if (keyword == "format")
            return acceptFormat(words);
        if (keyword == "element")
            return acceptElement(words);
        return keyword == "property" && acceptProperty(words);
    }

    bool acceptFormat(const Words &words)
    {
        if (hasFormat || words.size() != 3 || words[2] != "1.0")
            return false;
        const std::optional<PlyHeader::Format> format = formatFromName(words[1]);
        if (!format)
            return false;
        header.format = *format;
        hasFormat = true;
        return true;
    }

    bool acceptElement(const Words &words)
    {
        if (words.size() != 3)
            return false;
        bool isNumber = false;
        const qint64 count = words[2].toLongLong(&isNumber);
        if (!isNumber || count < 0 || count > std::numeric_limits<int>::max())
            return false;
        if (words[1] == "vertex")
            return acceptVertices(count);
        element = Element::Other;
        // VTK does not step over the elements that it does not know: it takes them for vertices.
        return hasVertices || count == 0;
    }

    bool acceptVertices(qint64 count)
    {
        if (hasVertices)
            return false;
        element = Element::Vertex;
        hasVertices = true;
        header.vertexCount = count;
        return true;
    }

    bool acceptProperty(const Words &words)
    {
        if (words.size() == 5 && words[1] == "list")
            return element == Element::Other && isScalarType(words[2]) && isScalarType(words[3]);
        if (words.size() != 3 || element == Element::None || !isScalarType(words[1]))
            return false;
        if (element == Element::Vertex)
            header.vertexProperties.push_back({words[1], words[2]});
        return true;
    }

    PlyHeader header;
    Element element = Element::None;
    bool hasFormat = false;
    bool hasVertices = false;
};

} // namespace

qint64 PlyHeader::vertexBytes() const
{
    // The limits of the header's length and of the count keep the products far from overflow.
    if (format == Format::Ascii) {
        constexpr qint64 digitAndSeparator = 2;
        const auto columns = static_cast<qint64>(vertexProperties.size());
        return std::max<qint64>(0, vertexCount * columns * digitAndSeparator - 1);
    }
    qint64 stride = 0;
    for (const Property &property : vertexProperties)
        stride += sizeOfType(property.type);
    return vertexCount * stride;
}

QByteArray PlyHeader::text() const
{
    QByteArray result = "ply\nformat " + nameOf(format) + " 1.0\nelement vertex "
        + QByteArray::number(vertexCount) + '\n';
    for (const Property &property : vertexProperties)
        result += "property " + property.type + ' ' + property.name + '\n';
    return result + "end_header\n";
}

std::optional<PlyHeader> PlyHeader::read(QIODevice &device)
{
    return Parser().parse(device);
}
