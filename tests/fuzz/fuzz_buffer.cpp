// Any sizes, as far as the host has memory for them, and any bits as heights.
#include "FuzzSupport.h"

#include "DataConverter.h"
#include "OlvikProfileData.h"
#include "ProcessData.h"

#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <new>
#include <vector>

namespace {

constexpr int mostSamples = 1 << 14;

void convert(const OlvikProfileData &profile, int count)
{
    float *heights = profile.GetRawPtr();
    const int width = profile.GetWidth();
    const int height = profile.GetHeight();
    const ProcessData worker(nullptr, nullptr);
    worker.computeIndividualBound(heights, count, 0, 1);
    const auto all = DataConverter::convertToPolyData(heights, width, height);
    const auto some = DataConverter::convertToPolyDataNoZero(heights, width, height);
    require(all->GetNumberOfPoints() == (width > 0 && height > 0 ? count : 0),
        "one point for each sample");
    require(some->GetNumberOfPoints() <= all->GetNumberOfPoints(), "zeros are left out");
    worker.computeBounds(static_cast<float *>(all->GetPoints()->GetVoidPointer(0)),
        static_cast<long>(3 * all->GetNumberOfPoints()));
    DataConverter::swapzy(some);
}

template <typename Value>
void paint(Value *values, const OlvikProfileData &profile, bool grey, const Gradient &gradient)
{
    unsigned char *pixels = nullptr;
    {
        const QImage image = DataConverter::generateImageRangeMap(
            values, profile.GetWidth(), profile.GetHeight(), pixels, grey, gradient);
        require(image.isNull() == (pixels == nullptr), "an image has pixels");
        require(image.isNull() || image.size() == QSize(profile.GetWidth(), profile.GetHeight()),
            "an image has the buffer's sizes");
    }
    std::free(pixels);
}

Gradient anyGradient(FuzzedDataProvider &input)
{
    Gradient gradient;
    gradient.setMin(input.ConsumeIntegral<int>());
    gradient.setMax(input.ConsumeIntegral<int>());
    for (int stops = input.ConsumeIntegralInRange(0, 3); stops > 0; --stops)
        gradient.addStop(input.ConsumeProbability<float>(), input.ConsumeIntegral<QRgb>());
    return gradient;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing();
    FuzzedDataProvider input(data, size);
    const int width = input.ConsumeIntegral<int>();
    const int height = input.ConsumeIntegral<int>();
    const bool grey = input.ConsumeBool();
    const Gradient gradient = anyGradient(input);
    const auto product = static_cast<std::uint32_t>(width) * static_cast<std::uint32_t>(height);
    const auto count = static_cast<std::int32_t>(product);
    if (count > mostSamples)
        return 0;

    // Exactly as large as promised, so that no read beyond it goes unseen.
    std::vector<float> heights(static_cast<std::size_t>(std::max(count, 0)));
    for (std::size_t done = 0; done < heights.size() && input.remaining_bytes() > 0;)
        done +=
            (input.ConsumeData(&heights[done], sizeof(float) * (heights.size() - done)) + 3) / 4;
    try {
        const OlvikProfileData profile(width, height, heights.data());
        require(count >= 0, "negative sizes are refused");
        convert(profile, count);
        paint(heights.data(), profile, grey, gradient);
        paint(reinterpret_cast<unsigned char *>(heights.data()), profile, grey, gradient);
    } catch (const std::bad_array_new_length &) {
        require(count < 0, "all other sizes are taken");
    }
    return 0;
}
