#include "ColorLookup.h"

#include <QtTest>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

using Rgb = std::array<unsigned char, 3>;

Rgb colorOf(const ColorLookup &lookup, float height)
{
    Rgb rgb;
    lookup.colorHeights(&height, 1, 1, rgb.data());
    return rgb;
}

Rgb plainColor(const ColorGradient &gradient, float height)
{
    int r = 0;
    int g = 0;
    int b = 0;
    int a = 0;
    gradient.getColorRawValue(height, r, g, b, a);
    return {static_cast<unsigned char>(r), static_cast<unsigned char>(g),
        static_cast<unsigned char>(b)};
}

ColorGradient gradientOf(const QVector<ColorPoint> &points, int min, int max)
{
    ColorGradient gradient;
    gradient.clear();
    for (const ColorPoint &point : points)
        gradient.addColorPoint(point.val, static_cast<float>(point.r), static_cast<float>(point.g),
            static_cast<float>(point.b), 255.0f);
    gradient.setMin(min);
    gradient.setMax(max);
    return gradient;
}

} // namespace

Q_DECLARE_METATYPE(ColorGradient)

class TestColorLookup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void equalsTheGradientForEachHeight_data()
    {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        const QVector<ColorPoint> rainbow = {{0, 0, 255, 0, 0.0f}, {0, 255, 255, 0, 0.25f},
            {0, 255, 0, 0, 0.5f}, {255, 255, 0, 0, 0.75f}, {255, 0, 0, 0, 1.0f}};
        QTest::addColumn<ColorGradient>("gradient");
        const auto row = [](const char *name, const ColorGradient &gradient) {
            QTest::newRow(name) << gradient;
        };
        row("rainbow", gradientOf(rainbow, 0, 1000));
        row("negative bounds", gradientOf(rainbow, -70, -3));
        row("one unit", gradientOf(rainbow, 7, 8));
        row("bounds of which floats know few", gradientOf(rainbow, 1 << 30, (1 << 30) + 1000));
        row("all integers", gradientOf(rainbow, lowest, highest));
        row("exchanged bounds", gradientOf(rainbow, 10, -10));
        row("equal bounds", gradientOf(rainbow, 10, 10));
        row("no bounds", gradientOf(rainbow, 0, 0));
        row("no points", gradientOf({}, 0, 100));
        row("one point", gradientOf({{1, 2, 3, 0, 0.4f}}, 0, 100));
        row("hard edges",
            gradientOf({{9, 0, 0, 0, 0.3f}, {200, 9, 1, 0, 0.3f}, {9, 0, 0, 0, 0.30001f}}, 0, 100));
        row("components that bytes cannot hold",
            gradientOf({{-900, 5000, 0, 0, 0.0f}, {124, 904, 1 << 20, 0, 1.0f}}, 0, 100));
        row("positions outside the axis and NaN",
            gradientOf({{0, 9, 0, 0, -3.0f}, {255, 0, 0, 0, nan}, {7, 80, 9, 0, 2.0f}}, 0, 100));
    }

    void equalsTheGradientForEachHeight()
    {
        QFETCH(ColorGradient, gradient);
        const ColorLookup lookup(gradient);
        std::mt19937 random(3);
        const double min = std::min(gradient.getMin(), gradient.getMax());
        const double length = std::abs(double(gradient.getMax()) - double(gradient.getMin()));
        std::uniform_real_distribution<double> inside(min - length / 50.0, min + length * 1.02);
        const auto check = [&](float height) {
            if (colorOf(lookup, height) == plainColor(gradient, height))
                return true;
            qWarning("differs at %.9g", static_cast<double>(height));
            return false;
        };
        for (int i = 0; i < 200'000; ++i) {
            float height = static_cast<float>(inside(random));
            QVERIFY(check(height));
            const auto bits = static_cast<std::uint32_t>(random());
            std::memcpy(&height, &bits, sizeof bits);
            QVERIFY(check(height));
        }
        // On both sides of each step of a component: where the colours of neighbouring floats
        // differ.
        for (int i = 0; i < 2000; ++i) {
            float low = static_cast<float>(inside(random));
            float high = low + static_cast<float>(length / 300.0);
            while (std::nextafter(low, high) < high) {
                const float middle = low + (high - low) / 2.0f;
                const bool isSame = plainColor(gradient, low) == plainColor(gradient, middle);
                (isSame ? low : high) = middle;
            }
            QVERIFY(check(low) && check(high));
        }
    }
};

QTEST_GUILESS_MAIN(TestColorLookup)
#include "tst_colorlookup.moc"
