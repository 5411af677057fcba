#include "AxesLayout.h"

#include "VtkCompatibility.h"

#include <QByteArray>

#include <vtkCubeAxesActor.h>
#include <vtkNew.h>
#include <vtkRenderer.h>
#include <vtkStringArray.h>
#include <vtkTextProperty.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Height of a text in pixels: VTK's own default.
constexpr double textHeight = 10.0;
/// Between axis and labels, and between labels and title, in pixels: VTK's own as well. In views of
/// less than the roomy height the titles would leave the picture at that distance.
constexpr double textOffset = 20.0;
constexpr double roomyHeight = 400.0;
/// Of a digit, and of the gap between two labels, in heights of the text.
constexpr double digitWidth = 0.8;
constexpr double labelGap = 0.8;
/// An axis that points at the operator has no room for any text.
constexpr double shortestAxis = 4.0;

std::array<double, 2> toDisplay(vtkRenderer &renderer, double x, double y, double z)
{
    renderer.SetWorldPoint(x, y, z, 1.0);
    renderer.WorldToDisplay();
    const double *display = renderer.GetDisplayPoint();
    return {display[0], display[1]};
}

double lengthOnScreen(vtkRenderer &renderer, const double *box, int axis)
{
    std::array<double, 3> end{box[0], box[2], box[4]};
    const auto from = toDisplay(renderer, end[0], end[1], end[2]);
    end[static_cast<std::size_t>(axis)] = box[2 * axis + 1];
    const auto to = toDisplay(renderer, end[0], end[1], end[2]);
    return std::hypot(to[0] - from[0], to[1] - from[1]);
}

/// The distance of ticks that the actor chooses, which it does not tell.
double tickStep(double range)
{
    const double decade = std::pow(10.0, std::floor(std::log10(range) + 1e-9));
    const int decades = static_cast<int>(range / decade) + 1;
    if (decades <= 2)
        return decade / 5;
    return decades < 5 ? decade / 2 : decade;
}

/// The smallest of 1, 2, 5, 10, 20, ... that is not below \a least.
int roundStride(double least)
{
    for (int decade = 1; decade < 1000000; decade *= 10) {
        for (const int factor : {1, 2, 5}) {
            if (factor * decade >= least)
                return factor * decade;
        }
    }
    return 1000000;
}

bool isSame(vtkStringArray *old, vtkStringArray &labels)
{
    if (!old || old->GetNumberOfValues() != labels.GetNumberOfValues())
        return false;
    for (vtkIdType i = 0; i < labels.GetNumberOfValues(); ++i) {
        if (old->GetValue(i) != labels.GetValue(i))
            return false;
    }
    return true;
}

double *rangeOf(vtkCubeAxesActor &axes, int axis)
{
    return axis == 0 ? axes.GetXAxisRange()
        : axis == 1  ? axes.GetYAxisRange()
                     : axes.GetZAxisRange();
}

bool hasSpan(const double *range)
{
    const double span = range[1] - range[0];
    return span > 0.0 && std::isfinite(span);
}

/// The actor reads labels and offsets again for a new range only: here one that no label shows.
void rebuild(vtkCubeAxesActor &axes, int axis)
{
    double *range = rangeOf(axes, axis);
    if (!hasSpan(range))
        return;
    range[1] = std::nextafter(range[1], HUGE_VAL);
    axes.Modified();
}

void setLabels(vtkCubeAxesActor &axes, int axis, vtkStringArray *labels)
{
    vtkStringArray *old = axes.GetAxisLabels(axis);
    if (labels ? isSame(old, *labels) : !old)
        return;
    axes.SetAxisLabels(axis, labels);
    rebuild(axes, axis);
}

/// Labels each tick of an axis that starts at 0, or leaves the tick without a text.
void labelAxis(vtkCubeAxesActor &axes, int axis, double length, bool isZeroLabelled)
{
    if (!hasSpan(rangeOf(axes, axis)) || !std::isfinite(length))
        return;
    const double range = rangeOf(axes, axis)[1];
    const double step = tickStep(range);
    const double digits = std::max(1.0, std::floor(std::log10(range)) + 1);
    const double room = axes.GetScreenSize() * (digits * digitWidth + labelGap);
    const int stride = roundStride(room / (length * step / range));

    vtkNew<vtkStringArray> labels;
    // One more than there are ticks, or the actor would spread the labels evenly.
    const int count = static_cast<int>(range / step) + 2;
    for (int i = 0; i < count; ++i) {
        const bool isLabelled = i % stride == 0 && i * step <= range && (i > 0 || isZeroLabelled);
        labels->InsertNextValue(
            isLabelled ? QByteArray::number(i * step, 'g', 6).constData() : " ");
    }
    setLabels(axes, axis, labels);
}

/// Four digits, and all that stand before the point.
QByteArray heightLabel(double height)
{
    const int digits = static_cast<int>(std::log10(std::max(std::abs(height), 1.0))) + 1;
    return QByteArray::number(height, 'g', std::clamp(digits, 4, 9));
}

/// The height axis starts anywhere: it has the actor's own labels where these stand apart, one at
/// each end otherwise, or no text at all.
void labelHeights(vtkCubeAxesActor &axes, double length, bool isReadable)
{
    const double *range = axes.GetZAxisRange();
    if (!hasSpan(range) || !std::isfinite(length))
        return;
    axes.GetTitleTextProperty(2)->SetOpacity(isReadable ? 1.0 : 0.0);
    const double span = range[1] - range[0];
    const double room = axes.GetScreenSize() * (4 * digitWidth + labelGap);
    if (length * tickStep(span) / span >= room) {
        setLabels(axes, 2, nullptr);
        return;
    }
    vtkNew<vtkStringArray> ends;
    for (const double height : {range[0], range[1]})
        ends->InsertNextValue(isReadable ? heightLabel(height).constData() : " ");
    setLabels(axes, 2, ends);
}

void setTextSize(vtkCubeAxesActor &axes, double height, double offset)
{
    if (axes.GetScreenSize() == height && axes.GetLabelOffset() == offset)
        return;
    axes.SetScreenSize(height);
    axes.SetLabelOffset(offset);
    VtkCompatibility::setTitleOffset(axes, offset);
    for (int axis = 0; axis < 3; ++axis)
        rebuild(axes, axis);
}

} // namespace

void layOutAxes(vtkCubeAxesActor &axes, vtkRenderer &renderer, double pixelRatio)
{
    if (!axes.GetVisibility())
        return;
    setTextSize(axes, textHeight * pixelRatio,
        textOffset * std::min(pixelRatio, renderer.GetSize()[1] / roomyHeight));
    const double *box = axes.GetBounds();
    const double height = lengthOnScreen(renderer, box, 2);
    const bool areHeightsReadable = height > shortestAxis * axes.GetScreenSize();
    labelAxis(axes, 0, lengthOnScreen(renderer, box, 0), true);
    // The first profile lies at an end of the height axis in the usual views, under its label.
    labelAxis(axes, 1, lengthOnScreen(renderer, box, 1), !areHeightsReadable);
    labelHeights(axes, height, areHeightsReadable);
}

void releaseAxisLabels(vtkCubeAxesActor &axes)
{
    for (int axis = 0; axis < 3; ++axis)
        axes.SetAxisLabels(axis, nullptr);
}
