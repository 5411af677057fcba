#include "PgmHeader.h"

#include <QIODevice>

#include <cctype>

namespace {

constexpr int longestNumber = 9;

/// \return the first character that belongs to no comment
std::optional<char> nextCharacter(QIODevice &device)
{
    char c = 0;
    if (!device.getChar(&c))
        return std::nullopt;
    if (c != '#')
        return c;
    while (c != '\n' && c != '\r') {
        if (!device.getChar(&c))
            return std::nullopt;
    }
    return c;
}

/// Takes the one character of white space behind the number too.
std::optional<int> nextNumber(QIODevice &device)
{
    std::optional<char> c = nextCharacter(device);
    while (c && std::isspace(static_cast<unsigned char>(*c)))
        c = nextCharacter(device);

    int number = 0;
    int digits = 0;
    for (; c && *c >= '0' && *c <= '9' && digits < longestNumber; ++digits) {
        number = number * 10 + (*c - '0');
        c = nextCharacter(device);
    }
    if (digits == 0 || !c || !std::isspace(static_cast<unsigned char>(*c)))
        return std::nullopt;
    return number;
}

/// Writers that end lines with two characters do so behind the last number, where the format has
/// one; a line feed may be a sample, though.
void skipLineFeed(QIODevice &device, qint64 samplesSize)
{
    const bool endsLine = device.seek(device.pos() - 1) && device.peek(2) == "\r\n";
    device.skip(endsLine && device.bytesAvailable() > samplesSize + 1 ? 2 : 1);
}

} // namespace

std::optional<PgmHeader> PgmHeader::read(QIODevice &device)
{
    if (!device.seek(0) || device.read(2) != "P5")
        return std::nullopt;

    const std::optional<int> width = nextNumber(device);
    const std::optional<int> height = nextNumber(device);
    const std::optional<int> maximum = nextNumber(device);
    if (!width || !height || !maximum || *maximum < 1 || *maximum > 65535)
        return std::nullopt;
    PgmHeader header{*width, *height, *maximum, 0};
    skipLineFeed(device, header.sampleBytes() * header.width * header.height);
    header.size = device.pos();
    return header;
}
