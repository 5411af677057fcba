#include "PlyReader.h"

#include "ArrayMemory.h"
#include "PlyHeader.h"
#include "PointCloud.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPLYReader.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include <locale.h>

namespace {

/// VTK 9.1 reads lines into a buffer of 4096 bytes and never recovers from a longer one.
constexpr std::size_t longestVertexLine = 4000;

/// VTK reads with strtod, which a host's locale may have taught to want a comma.
class NumbersInC
{
public:
    NumbersInC()
        : numbers(newlocale(LC_ALL_MASK, "C", nullptr))
        , before(uselocale(numbers))
    { }
    ~NumbersInC()
    {
        uselocale(before);
        freelocale(numbers);
    }
    Q_DISABLE_COPY_MOVE(NumbersInC)

private:
    locale_t numbers;
    locale_t before;
};

bool isNumber(std::string_view word)
{
    if (word.size() > 1 && word[0] == '+' && word[1] != '-')
        word.remove_prefix(1);
    double value = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    // Too large a number is infinite for VTK, not an end.
    return error != std::errc::invalid_argument && end == word.data() + word.size();
}

std::string_view takeWord(std::string_view &line)
{
    constexpr std::string_view blanks = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    return word;
}

bool startsWithNumbers(std::string_view line, std::size_t count)
{
    if (line.size() > longestVertexLine)
        return false;
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    for (std::size_t i = 0; i < count; ++i) {
        if (!isNumber(takeWord(line)))
            return false;
    }
    return true;
}

/// \return the length of the vertices' lines at the start of \a text, 0 when one is not in order
std::size_t vertexLinesLength(std::string_view text, const PlyHeader &header)
{
    std::size_t position = 0;
    for (qint64 i = 0; i < header.vertexCount; ++i) {
        if (position >= text.size())
            return 0;
        const std::size_t end = std::min(text.find('\n', position), text.size());
        const std::string_view line = text.substr(position, end - position);
        if (!startsWithNumbers(line, header.vertexProperties.size()))
            return 0;
        position = end + 1;
    }
    return std::min(position, text.size());
}

const char *skipBlanks(const char *begin, const char *end)
{
    return std::find_if(begin, end, [](char each) { return each != ' ' && each != '\t'; });
}

/// \return behind the number, null when there is none that stands alone or fits a double
const char *readCoordinate(const char *begin, const char *end, float &coordinate)
{
    double value = 0.0;
    const auto [behind, error] = std::from_chars(skipBlanks(begin, end), end, value);
    coordinate = static_cast<float>(value);
    const bool standsAlone = behind == end || std::strchr(" \t\r\n", *behind) != nullptr;
    return error == std::errc() && standsAlone ? behind : nullptr;
}

/// \return behind the line, null when something is left of it
const char *endLine(const char *begin, const char *end)
{
    begin = skipBlanks(begin, end);
    if (begin != end && *begin == '\r')
        ++begin;
    if (begin == end)
        return end;
    return *begin == '\n' ? begin + 1 : nullptr;
}

bool holdsOnlyCoordinates(const PlyHeader &header)
{
    const std::vector<PlyHeader::Property> &found = header.vertexProperties;
    const auto names = {"x", "y", "z"};
    return header.format == PlyHeader::Format::Ascii
        && std::equal(found.begin(), found.end(), names.begin(), names.end(),
            [](const PlyHeader::Property &property, const char *name) {
                return property.type == "float" && property.name == name;
            });
}

/// The viewer's own files, in a fraction of the time that VTK takes: the operator waits.
/// \return null for anything that VTK might read otherwise
vtkSmartPointer<vtkFloatArray> readCoordinates(std::string_view text, const PlyHeader &header)
{
    auto xyz = freshArray<vtkFloatArray>(header.vertexCount, 3);
    float *coordinates = xyz->GetPointer(0);
    const char *position = text.data();
    const char *end = position + text.size();
    for (qint64 i = 0; i < header.vertexCount; ++i) {
        for (int axis = 0; axis < 3 && position; ++axis)
            position = readCoordinate(position, end, *coordinates++);
        if (position)
            position = endLine(position, end);
        if (!position)
            return nullptr;
    }
    return xyz;
}

/// \return what stands behind the header as far as vertices may reach; empty when the file holds
///         less than the header promises
std::string vertexData(QFile &file, const PlyHeader &header)
{
    const qint64 available = file.size() - file.pos();
    if (header.vertexCount == 0 || header.vertexBytes() > available)
        return {};
    const bool isAscii = header.format == PlyHeader::Format::Ascii;
    std::string data(static_cast<std::size_t>(isAscii ? available : header.vertexBytes()), '\0');
    const auto size = static_cast<qint64>(data.size());
    return file.read(data.data(), size) == size ? data : std::string();
}

/// \return the vertices under a header that promises nothing else; empty when they are not in order
std::string textForVtk(std::string data, const PlyHeader &header)
{
    if (header.format == PlyHeader::Format::Ascii) {
        data.resize(vertexLinesLength(data, header));
        if (data.empty())
            return {};
        // VTK 9.1 drops a last line without an end and repeats the point before.
        data += '\n';
    }
    return data.insert(0, header.text().toStdString());
}

vtkSmartPointer<vtkPolyData> emptyCloud()
{
    return cloudOver(vtkNew<vtkPoints>());
}

vtkSmartPointer<vtkPolyData> cloudFrom(vtkPLYReader &reader)
{
    const NumbersInC guard;
    reader.Update();
    vtkSmartPointer<vtkPolyData> cloud = emptyCloud();
    vtkPolyData *output = reader.GetOutput();
    if (output->GetPoints() == nullptr)
        return cloud;
    cloud->SetPoints(output->GetPoints());
    cloud->GetPointData()->SetScalars(output->GetPointData()->GetScalars());
    return cloud;
}

/// Lets the reader take the text from memory.
template <typename Reader>
auto hand(std::string text, Reader &reader, QTemporaryFile &, int)
    -> decltype(reader.SetInputString(text), bool())
{
    reader.ReadFromInputStringOn();
    reader.SetInputString(text);
    return true;
}

/// VTK 8.2 reads files only.
template <typename Reader> bool hand(std::string text, Reader &reader, QTemporaryFile &copy, long)
{
    const auto size = static_cast<qint64>(text.size());
    const bool isWritten = copy.open() && copy.write(text.data(), size) == size && copy.flush();
    reader.SetFileName(QFile::encodeName(copy.fileName()).constData());
    return isWritten;
}

vtkSmartPointer<vtkPolyData> readByVtk(std::string data, const PlyHeader &header)
{
    vtkNew<vtkPLYReader> reader;
    QTemporaryFile copy;
    std::string text = textForVtk(std::move(data), header);
    if (text.empty() || !hand(std::move(text), *reader, copy, 0))
        return emptyCloud();
    return cloudFrom(*reader);
}

vtkSmartPointer<vtkPolyData> read(QFile &file)
{
    const std::optional<PlyHeader> header = PlyHeader::read(file);
    std::string data = header ? vertexData(file, *header) : std::string();
    if (data.empty())
        return emptyCloud();
    vtkSmartPointer<vtkFloatArray> xyz;
    if (holdsOnlyCoordinates(*header))
        xyz = readCoordinates(data, *header);
    return xyz ? cloudOver(xyz) : readByVtk(std::move(data), *header);
}

} // namespace

vtkSmartPointer<vtkPolyData> readPly(const QString &path)
{
    if (path.contains(QChar::Null) || !QFileInfo(path).isFile())
        return emptyCloud();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return emptyCloud();
    try {
        return read(file);
    } catch (const std::bad_alloc &) {
        return emptyCloud();
    }
}
