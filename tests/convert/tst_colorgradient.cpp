#include "ColorGradient.h"

#include <QtTest>

#include <array>

using Rgba = std::array<int, 4>;
Q_DECLARE_METATYPE(Rgba)

class TestColorGradient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheHeatMap()
    {
        Rgba color{};
        ColorGradient().getColorAtValue(0.75f, color[0], color[1], color[2], color[3]);
        QCOMPARE(color, (Rgba{1, 1, 0, 1}));
    }

    void mixesNeighboursAndKeepsEqualPointsInOrder_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<Rgba>("expected");
        QTest::newRow("below") << -20.5f << Rgba{1, 2, 3, 4};
        QTest::newRow("before the first point") << -10.0f << Rgba{10, 20, 200, 40};
        QTest::newRow("quarter, truncated") << 17.5f << Rgba{32, 15, 151, 93};
        QTest::newRow("on the hard edge") << 55.0f << Rgba{0, 255, 0, 128};
        QTest::newRow("behind the hard edge") << 61.25f << Rgba{25, 191, 0, 127};
        QTest::newRow("last point") << 80.0f << Rgba{101, 0, 3, 125};
        QTest::newRow("above") << 80.5f << Rgba{5, 6, 7, 8};
    }

    void mixesNeighboursAndKeepsEqualPointsInOrder()
    {
        QFETCH(const float, value);
        ColorGradient table;
        table.clear();
        table.addColorPoint(1.0f, 101, 0, 3, 125);
        table.addColorPoint(0.75f, 101, 0, 5, 255);
        table.addColorPoint(0.25f, 10, 20, 200, 40);
        table.addColorPoint(0.75f, 0, 255, 0, 128);
        table.setMin(-20);
        table.setMax(80);
        table.setBelowColor({1, 2, 3, 4});
        table.setAboveColor({5, 6, 7, 8});
        Rgba color{};
        table.getColorRawValue(value, color[0], color[1], color[2], color[3]);
        QTEST(color, "expected");
    }
};

QTEST_GUILESS_MAIN(TestColorGradient)
#include "tst_colorgradient.moc"
