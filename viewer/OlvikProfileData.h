#pragma once

#include "Olvik3DViewerExport.h"

#include <QMetaType>

#include <memory>

/// One buffer of heights on its way from the host to the screen.
///
/// Copies share the heights, which are never written after construction; copies may be made and
/// dropped on any thread.
class OLVIK3DVIEWER_EXPORT OlvikProfileData
{
public:
    /// No heights: null array, both sizes 0.
    OlvikProfileData() = default;

    /// Copies the heights.
    /// \param width values per profile
    /// \param height number of profiles
    /// \param values width * height heights, row-major, not null unless the product is 0
    /// \throws std::bad_array_new_length when the 32-bit product of the sizes is negative
    /// \throws std::bad_alloc when there is no memory for the copy
    OlvikProfileData(int width, int height, float *values);

    /// Takes over an array of width * height heights that nobody writes to any more.
    OlvikProfileData(int width, int height, std::shared_ptr<float> values);

    float *GetRawPtr() const { return data.get(); }
    int GetWidth() const { return width; }
    int GetHeight() const { return height; }

private:
    std::shared_ptr<float> data;
    int width = 0;
    int height = 0;
};

Q_DECLARE_METATYPE(OlvikProfileData)
