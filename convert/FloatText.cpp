#include "FloatText.h"

#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int significantDigits = 17;
constexpr quint64 tenTo8 = 100'000'000;
constexpr quint64 tenTo16 = tenTo8 * tenTo8;
constexpr quint64 zeros = 0x3030303030303030;

template <std::size_t size> constexpr std::array<quint64, size> powersOf(quint64 base)
{
    std::array<quint64, size> powers = {1};
    for (std::size_t i = 1; i < size; ++i)
        powers[i] = powers[i - 1] * base;
    return powers;
}

constexpr auto powersOf5 = powersOf<21>(5);
constexpr auto powersOf10 = powersOf<8>(10);

/// Splits in halves, three times at once: twice four digits, four times two, eight times one.
/// \param value below 10^8
/// \return its digits, one a byte, the first in the lowest
constexpr quint64 digitsOf(quint64 value)
{
    const quint64 fours = value / 10'000 + ((value % 10'000) << 32);
    const quint64 hundreds = ((fours * 10'486) >> 20) & 0x0000'007f'0000'007f;
    const quint64 twos = hundreds + ((fours - hundreds * 100) << 16);
    const quint64 tens = ((twos * 103) >> 10) & 0x000f'000f'000f'000f;
    return tens + ((twos - tens * 10) << 8);
}

/// \param value below 10^8
char *appendWhole(char *text, quint64 value)
{
    const quint64 digits = digitsOf(value);
    constexpr quint64 lastDigit = quint64(1) << 56;
    const auto leadingZeros = qCountTrailingZeroBits(digits | lastDigit) / 8;
    qToLittleEndian<quint64>((digits | zeros) >> (8 * leadingZeros), text);
    return text + (8 - leadingZeros);
}

/// \param value below 10^16, written with leading and without trailing zeros
char *appendDecimals(char *text, quint64 value)
{
    const quint64 front = digitsOf(value / tenTo8);
    const quint64 back = digitsOf(value % tenTo8);
    qToLittleEndian<quint64>(front | zeros, text);
    qToLittleEndian<quint64>(back | zeros, text + 8);
    return back != 0 ? text + 16 - qCountLeadingZeroBits(back) / 8
                     : text + 8 - qCountLeadingZeroBits(front) / 8;
}

/// \return value / 2^shift, ties to even
template <typename Unsigned> quint64 dividedByPowerOf2(Unsigned value, int shift)
{
    const Unsigned odd = (value >> shift) & 1;
    const Unsigned justBelowHalf = (Unsigned(1) << (shift - 1)) - 1;
    return static_cast<quint64>((value + justBelowHalf + odd) >> shift);
}

/// \param value in [1, 10^8), or 0
char *appendLarge(char *text, float value)
{
    const auto whole = static_cast<quint32>(value);
    char *const point = appendWhole(text, whole);
    const float rest = value - static_cast<float>(whole);
    if (rest == 0.0f)
        return point;

    // From 1 on, no float has more binary places. 10^n / 2^23 is 5^n / 2^(23 - n).
    constexpr int binaryPlaces = 23;
    const auto scaled = static_cast<quint64>(rest * 0x1p23f);
    const auto decimals = static_cast<int>(significantDigits - (point - text));
    const quint64 fraction = dividedByPowerOf2(
        scaled * powersOf5[static_cast<std::size_t>(decimals)], binaryPlaces - decimals);
    *point = '.';
    return appendDecimals(
        point + 1, fraction * powersOf10[static_cast<std::size_t>(16 - decimals)]);
}

/// \param value in [10^-4, 1)
char *appendSmall(char *text, float value)
{
    constexpr int binaryPlaces = 37;
    const int leadingZeros = int(value < 0.1) + int(value < 0.01) + int(value < 0.001);
    const int decimals = significantDigits + leadingZeros;
    const auto scaled = static_cast<quint64>(value * 0x1p37f);
    const quint64 digits = dividedByPowerOf2(
        Wide(scaled) * powersOf5[static_cast<std::size_t>(decimals)], binaryPlaces - decimals);
    text = std::copy_n("0.000", 2 + leadingZeros, text);
    *text++ = static_cast<char>('0' + digits / tenTo16);
    return appendDecimals(text, digits % tenTo16);
}

} // namespace

char *appendFloat(char *text, float value)
{
    const float magnitude = std::abs(value);
    const bool isLarge = magnitude >= 1.0f && magnitude < 1e8f;
    const bool isSmall = magnitude < 1.0f && magnitude >= 1e-4;
    if (!isLarge && !isSmall && magnitude != 0.0f)
        return std::to_chars(text, text + floatTextRoom, static_cast<double>(value),
            std::chars_format::general, significantDigits)
            .ptr;

    // The next character overwrites the sign of a number that has none.
    *text = '-';
    text += std::signbit(value) ? 1 : 0;
    return isSmall ? appendSmall(text, magnitude) : appendLarge(text, magnitude);
}
