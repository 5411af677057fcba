#include "PlyReader.h"

#include "PlyHeader.h"

#include <QFile>
#include <QFileInfo>

#include <vtkNew.h>
#include <vtkPLYReader.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <algorithm>
#include <charconv>
#include <new>
#include <string>
#include <string_view>
#include <system_error>

#include <locale.h>

namespace {

/// VTK 9.1 reads lines into a buffer of 4096 bytes and never recovers from a longer one.
constexpr std::size_t longestLine = 4000;

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
    if (line.size() > longestLine)
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

bool append(std::string &text, QIODevice &device, qint64 size)
{
    const std::size_t before = text.size();
    text.resize(before + static_cast<std::size_t>(size));
    return device.read(text.data() + before, size) == size;
}

/// \return the file's vertices under a header that promises nothing else; empty when it has none
///         or not all that it promises
std::string vertexText(QFile &file)
{
    const std::optional<PlyHeader> header = PlyHeader::read(file);
    if (!header || header->vertexCount == 0)
        return {};
    const qint64 available = file.size() - file.pos();
    if (header->vertexBytes() > available)
        return {};

    std::string text = header->text().toStdString();
    const std::size_t headerSize = text.size();
    const bool ascii = header->format == PlyHeader::Format::Ascii;
    if (!append(text, file, ascii ? available : header->vertexBytes()))
        return {};
    if (!ascii)
        return text;

    const std::size_t length =
        vertexLinesLength(std::string_view(text).substr(headerSize), *header);
    if (length == 0)
        return {};
    text.resize(headerSize + length);
    // VTK 9.1 drops a last line without an end and repeats the point before.
    text += '\n';
    return text;
}

vtkSmartPointer<vtkPolyData> emptyCloud()
{
    auto cloud = vtkSmartPointer<vtkPolyData>::New();
    cloud->SetPoints(vtkNew<vtkPoints>());
    return cloud;
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

vtkSmartPointer<vtkPolyData> read(QFile &file)
{
    vtkNew<vtkPLYReader> reader;
    reader->ReadFromInputStringOn();
    {
        const std::string text = vertexText(file);
        if (text.empty())
            return emptyCloud();
        reader->SetInputString(text);
    }
    return cloudFrom(*reader);
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
