#include "Heights.h"

#include <cmath>

Heights surface(int side, float phase)
{
    const auto count = static_cast<std::size_t>(side);
    Heights heights(count * count);
    auto out = heights.begin();
    for (int row = 0; row < side; ++row) {
        const float wave = 40.0f * std::sin(static_cast<float>(row) * 0.02f + phase);
        for (int column = 0; column < side; ++column)
            *out++ = 100.0f + wave * std::cos(static_cast<float>(column) * 0.013f);
    }
    return heights;
}

Gradient surfaceGradient()
{
    Gradient gradient;
    gradient.setMin(60.0, QColor(0, 0, 80));
    gradient.setMax(140.0, QColor(255, 255, 255));
    gradient.addStop(0.0f, QColor(0, 0, 128));
    gradient.addStop(0.3f, QColor(0, 160, 160));
    gradient.addStop(0.5f, QColor(60, 180, 40));
    gradient.addStop(0.8f, QColor(240, 220, 60));
    gradient.addStop(1.0f, QColor(220, 40, 30));
    return gradient;
}
