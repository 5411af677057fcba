#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QImage>
#include <QVector>

#include <vtkSmartPointer.h>

#include <utility>

class vtkPoints;
class vtkPolyData;

/// Turns height buffers into points and false-colour images, without any state.
///
/// A buffer holds w values per row and h rows, row-major; the value of row r and column c becomes
/// the point (c, r, value), without any scale. Whatever the sizes, no more than the 32-bit,
/// wrapping product w * h of values is read: a null buffer, a size that is not positive or a
/// product that wraps to 0 or below is an empty buffer. Safe on any thread; results belong to the
/// caller.
class OLVIK3DVIEWER_EXPORT DataConverter
{
public:
    DataConverter() = delete;

    /// One point per sample, zeros and NaN included.
    /// \throws std::bad_alloc when there is no memory for the points, like all conversions to
    /// points
    static vtkSmartPointer<vtkPoints> convertToPointData(float *buffer, int w, int h);

    /// Without the samples that are +0 or -0, which the sensor writes where it saw nothing. NaN is
    /// kept.
    static vtkSmartPointer<vtkPoints> convertToPointDataNoZero(float *buffer, int w, int h);

    /// The points alone, without cells.
    static vtkSmartPointer<vtkPolyData> convertToPolyData(float *buffer, int w, int h);
    static vtkSmartPointer<vtkPolyData> convertToPolyDataNoZero(float *buffer, int w, int h);

    /// Exchanges y and z of every point in place.
    static void swapzy(const vtkSmartPointer<vtkPoints> &points);
    static void swapzy(const vtkSmartPointer<vtkPolyData> &polyData);

    /// (min, max) in one pass, under rules that the colouring relies on: the maximum is searched
    /// from 0 upwards and a maximum below 1 becomes 1; a value that raises the maximum is no
    /// candidate for the minimum. Strictly rising positive values and empty buffers therefore leave
    /// the minimum at the largest number of the result type. NaN is skipped.
    static std::pair<double, double> getminmax(float *values, long count);
    static std::pair<unsigned char, unsigned char> getminmax(unsigned char *values, long count);
    static std::pair<double, double> getminmax(const QVector<double> &values);

    /// (value - min) * 255 / range in single precision, truncated toward zero and not clamped; the
    /// low byte is the distance that distanceToColor() takes. NaN, infinity (a range of 0) and what
    /// no int can hold give the smallest int, whose low byte is 0.
    static int getDistance(float value, float min, float range);

    /// Hue at full saturation and value, from red at 255 down to blue, 226 degrees, at 0.
    /// \param[out] r,g,b components in [0, 1]
    static void distanceToColor(unsigned char distance, float &r, float &g, float &b);
    /// \param[out] r,g,b components in 0..255, truncated
    static void distanceToColor(
        unsigned char distance, unsigned char &r, unsigned char &g, unsigned char &b);

    /// False-colour image of the buffer, RGB888 with 3 * w bytes per line.
    /// \param[out] out the pixels, to be released with free() after the image; null when there are
    ///        none
    /// \param grey grey by getDistance() instead of colours
    /// \param gradient the colours; one without stops stands for the hue ramp of distanceToColor(),
    ///        one whose bounds are both 0 colours every pixel black
    /// \return an image over \a out; a null image for an empty buffer, a product of the sizes that
    ///        wraps, lines that QImage cannot hold (INT_MAX bits), or without memory
    static QImage generateImageRangeMap(
        float *values, int w, int h, unsigned char *&out, bool grey, const Gradient &gradient);
    static QImage generateImageRangeMap(unsigned char *values, int w, int h, unsigned char *&out,
        bool grey, const Gradient &gradient);
};
