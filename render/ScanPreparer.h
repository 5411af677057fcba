#pragma once

#include "ArrayPool.h"
#include "Scan.h"

#include <vtkFloatArray.h>
#include <vtkUnsignedCharArray.h>

#include <array>
#include <memory>

class ColorLookup;

/// Makes scans ready to be drawn: sees to what their makers left open, scales and colours them.
///
/// Any thread may prepare and colour; each scan is touched by one thread at a time.
class ScanPreparer
{
public:
    struct Result
    {
        std::shared_ptr<const Scan> unscaled; ///< what later scales and colours start from
        std::shared_ptr<const Scan> drawn;
    };

    /// Points that were not handed over are copied: what is drawn belongs to nobody else.
    /// \param factors for scene x, y and z; 1 leaves its coordinate untouched
    Result prepare(const Scan &scan, const std::array<float, 3> &factors);

    /// Gives both levels of \a drawn an array "Colors" by the heights of \a unscaled.
    void color(const Scan &drawn, const Scan &unscaled, const ColorLookup &lookup);

private:
    void scale(Scan &drawn, const std::array<float, 3> &factors);
    void replacePoints(vtkPolyData &cloud, const std::array<float, 3> &factors);
    void colorCloud(vtkPolyData &cloud, vtkPolyData &unscaled, const ColorLookup &lookup);

    ArrayPool<vtkFloatArray> scaledPoints;
    ArrayPool<vtkUnsignedCharArray> colors;
};
