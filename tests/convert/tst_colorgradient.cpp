#include "ColorGradient.h"

#include <QtTest>

#include <array>
#include <limits>

namespace {

using Rgba = std::array<int, 4>;

constexpr Rgba untouched{-7, -8, -9, -10};
constexpr Rgba boundDefault{245, 66, 230, 255};
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr int lowest = std::numeric_limits<int>::min();

Rgba colorAt(const ColorGradient &table, float t)
{
    Rgba color = untouched;
    table.getColorAtValue(t, color[0], color[1], color[2], color[3]);
    return color;
}

Rgba colorOf(const ColorGradient &table, float value)
{
    Rgba color = untouched;
    table.getColorRawValue(value, color[0], color[1], color[2], color[3]);
    return color;
}

ColorGradient tableOf(std::initializer_list<ColorPoint> points)
{
    ColorGradient table;
    table.clear();
    for (const ColorPoint &point : points)
        table.addColorPoint(point.val, static_cast<float>(point.r), static_cast<float>(point.g),
            static_cast<float>(point.b), static_cast<float>(point.a));
    return table;
}

std::vector<float> positions(const ColorGradient &table)
{
    std::vector<float> result;
    for (const ColorPoint &point : table.colorPoints())
        result.push_back(point.val);
    return result;
}

} // namespace

Q_DECLARE_METATYPE(Rgba)

class TestColorGradient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheUnitHeatMap();
    void keepsPointsSortedAndEqualOnesInOrder();
    void pointAtNanStaysBehindAllOthers();
    void truncatesComponentsOfPoints();
    void mixesNeighbouringPoints_data();
    void mixesNeighbouringPoints();
    void emptyTableLeavesOutputsUntouched();
    void mapsBoundsOntoTheAxis_data();
    void mapsBoundsOntoTheAxis();
    void zeroBoundsLeaveOutputsUntouched();
    void flatBoundsGiveTheLastPoint();
    void boundsOfFullIntRangeDoNotOverflow();
};

void TestColorGradient::startsWithTheUnitHeatMap()
{
    const ColorGradient table;
    QCOMPARE(positions(table), (std::vector<float>{0.0f, 0.25f, 0.5f, 0.75f, 1.0f}));
    QCOMPARE(colorAt(table, 0.0f), (Rgba{0, 0, 1, 1}));
    QCOMPARE(colorAt(table, 0.75f), (Rgba{1, 1, 0, 1}));
    QVERIFY(table.isValid());
}

void TestColorGradient::keepsPointsSortedAndEqualOnesInOrder()
{
    ColorGradient table;
    table.addColorPoint(0.5f, 255, 0, 0, 200);
    table.addColorPoint(0.6f, 1, 2, 3, 4);
    QCOMPARE(positions(table), (std::vector<float>{0.0f, 0.25f, 0.5f, 0.5f, 0.6f, 0.75f, 1.0f}));
    QCOMPARE(table.colorPoints()[3].r, 255);
    QCOMPARE(colorAt(table, 0.5f), (Rgba{255, 0, 0, 200}));
}

void TestColorGradient::pointAtNanStaysBehindAllOthers()
{
    ColorGradient table =
        tableOf({{1, 1, 1, 1, 0.9f}, {2, 2, 2, 2, notANumber}, {3, 3, 3, 3, 0.5f}});
    QCOMPARE(table.colorPoints()[0].r, 3);
    QCOMPARE(table.colorPoints()[2].r, 2);
    table.addColorPoint(0.95f, 4, 4, 4, 4);
    QCOMPARE(colorAt(table, 0.92f), (Rgba{lowest, lowest, lowest, lowest}));
}

void TestColorGradient::truncatesComponentsOfPoints()
{
    ColorGradient table;
    table.clear();
    table.addColorPoint(0.0f, 1.9f, -1.9f, notANumber, 1e20f);
    QCOMPARE(colorAt(table, 0.0f), (Rgba{1, -1, lowest, lowest}));
}

void TestColorGradient::mixesNeighbouringPoints_data()
{
    QTest::addColumn<float>("t");
    QTest::addColumn<Rgba>("expected");

    QTest::newRow("before the first point") << 0.1f << Rgba{10, 20, 200, 40};
    QTest::newRow("minus infinity") << -infinity << Rgba{10, 20, 200, 40};
    QTest::newRow("a quarter of the way") << 0.375f << Rgba{32, 15, 151, 93};
    QTest::newRow("on the hard edge") << 0.75f << Rgba{0, 255, 0, 128};
    QTest::newRow("behind the hard edge") << 0.8125f << Rgba{25, 191, 0, 127};
    QTest::newRow("on the last point") << 1.0f << Rgba{101, 0, 3, 125};
    QTest::newRow("behind the last point") << 1.5f << Rgba{101, 0, 3, 125};
    QTest::newRow("NaN") << notANumber << Rgba{101, 0, 3, 125};
}

void TestColorGradient::mixesNeighbouringPoints()
{
    QFETCH(const float, t);
    QFETCH(const Rgba, expected);
    const ColorGradient table = tableOf({{10, 20, 200, 40, 0.25f}, {101, 0, 5, 255, 0.75f},
        {0, 255, 0, 128, 0.75f}, {101, 0, 3, 125, 1.0f}});
    QCOMPARE(colorAt(table, t), expected);
}

void TestColorGradient::emptyTableLeavesOutputsUntouched()
{
    ColorGradient table = tableOf({});
    table.setMax(10);
    QVERIFY(!table.isValid());
    QCOMPARE(colorAt(table, 0.5f), untouched);
    QCOMPARE(colorOf(table, 5.0f), untouched);
    QCOMPARE(colorOf(table, 11.0f), boundDefault);
}

void TestColorGradient::mapsBoundsOntoTheAxis_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<Rgba>("expected");

    QTest::newRow("below") << -20.5f << Rgba{1, 2, 3, 4};
    QTest::newRow("on the lower bound") << -20.0f << Rgba{0, 0, 0, 0};
    QTest::newRow("a quarter") << 5.0f << Rgba{25, 50, 12, 63};
    QTest::newRow("on the upper bound") << 80.0f << Rgba{100, 200, 50, 255};
    QTest::newRow("above") << 80.5f << Rgba{5, 6, 7, 8};
    QTest::newRow("infinity") << infinity << Rgba{5, 6, 7, 8};
    QTest::newRow("NaN is inside") << notANumber << Rgba{100, 200, 50, 255};
}

void TestColorGradient::mapsBoundsOntoTheAxis()
{
    QFETCH(const float, value);
    QFETCH(const Rgba, expected);
    ColorGradient table = tableOf({{0, 0, 0, 0, 0.0f}, {100, 200, 50, 255, 1.0f}});
    table.setMin(-20);
    table.setMax(80);
    table.setBelowColor({1, 2, 3, 4});
    table.setAboveColor({5, 6, 7, 8});
    QCOMPARE(colorOf(table, value), expected);
}

void TestColorGradient::zeroBoundsLeaveOutputsUntouched()
{
    ColorGradient table;
    table.setMax(100);
    table.setMax(0);
    for (const float value : {-1.0f, 0.0f, 1e9f, notANumber})
        QCOMPARE(colorOf(table, value), untouched);
}

void TestColorGradient::flatBoundsGiveTheLastPoint()
{
    ColorGradient table;
    table.setMin(10);
    table.setMax(10);
    QCOMPARE(colorOf(table, 10.0f), (Rgba{1, 0, 0, 1}));
    QCOMPARE(colorOf(table, 10.5f), boundDefault);
}

void TestColorGradient::boundsOfFullIntRangeDoNotOverflow()
{
    ColorGradient table = tableOf({{lowest, 0, 0, 0, 0.0f}, {2147483520, 40, 80, 255, 1.0f}});
    table.setMin(lowest);
    table.setMax(std::numeric_limits<int>::max());
    const Rgba color = colorOf(table, -1073741824.0f);
    QCOMPARE(color[1], 10);
    QVERIFY(color[0] < -1000000000);
}

QTEST_GUILESS_MAIN(TestColorGradient)
#include "tst_colorgradient.moc"
