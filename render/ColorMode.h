#pragma once

/// How the cloud is coloured. Other values than these draw it uncoloured.
enum ColorMode : int {
    Auto = 0, ///< by the height shader: red at the low end of the range, blue at its top
    UserGradient = 1, ///< by the current gradient, one colour for each point
};
