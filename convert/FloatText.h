#pragma once

#include <cstddef>

/// What appendFloat() may touch: more than the longest text, "-3.4028234663852886e+38".
constexpr std::size_t floatTextRoom = 32;

/// Writes the float as printf's "%.17g" does in the C locale, without an end of string.
///
/// Never fails; any thread may call it.
/// \param text has room for floatTextRoom characters; what is behind the text is undefined
/// \return the end of the text
char *appendFloat(char *text, float value);
