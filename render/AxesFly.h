#pragma once

/// Where the cube axes are drawn; stored in the settings as an integer.
enum class AxesFly : int {
    Dynamic = 1, ///< along the outer edges of the box, following the camera
    Fixed = 2, ///< three axes that meet in one corner
    BoundingBox = 3, ///< all edges of the box
};
