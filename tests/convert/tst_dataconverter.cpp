#include "DataConverter.h"
#include "GradientFactory.h"

#include <QtTest>

#include <vtkDoubleArray.h>
#include <vtkNew.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <memory>
#include <vector>

namespace {

using Coordinates = std::vector<float>;
using Convert = vtkSmartPointer<vtkPolyData> (*)(float *, int, int);

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr int lowest = std::numeric_limits<int>::min();

struct Free
{
    void operator()(unsigned char *pixels) const { std::free(pixels); }
};

struct RangeMap
{
    std::unique_ptr<unsigned char, Free> pixels;
    QImage image;
};

template <typename Value>
RangeMap rangeMap(std::vector<Value> values, int w, int h, bool grey, const Gradient &gradient)
{
    unsigned char *out = nullptr;
    const QImage image =
        DataConverter::generateImageRangeMap(values.data(), w, h, out, grey, gradient);
    return {std::unique_ptr<unsigned char, Free>(out), image};
}

std::vector<QRgb> pixelsOf(const QImage &image)
{
    std::vector<QRgb> result;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            result.push_back(image.pixel(x, y));
    return result;
}

Coordinates coordinatesOf(vtkPoints *points)
{
    Coordinates result;
    for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i)
        for (const double coordinate : std::array<double, 3>{
                 points->GetPoint(i)[0], points->GetPoint(i)[1], points->GetPoint(i)[2]})
            result.push_back(static_cast<float>(coordinate));
    return result;
}

} // namespace

Q_DECLARE_METATYPE(Convert)

class TestDataConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointsAreColumnRowAndValue();
    void zerosOfEitherSignAreSkippedButNotNan();
    void buffersWithoutSamplesGiveNoPoints_data();
    void buffersWithoutSamplesGiveNoPoints();
    void wrappedProductEndsInsideARow();
    void swapIsItsOwnInverse();
    void swapReachesDoublesAndEmptyClouds();
    void rangeOfFloats_data();
    void rangeOfFloats();
    void rangeOfBytes_data();
    void rangeOfBytes();
    void rangeOfVectorSkipsWhatIsNotAboveZero();
    void distance_data();
    void distance();
    void hueRamp_data();
    void hueRamp();
    void greyImageFollowsTheDistance();
    void byteRangeWraps();
    void gradientColorsTheImage();
    void gradientWithoutBoundsLeavesTheImageBlack();
    void gradientWithoutStopsGivesTheHueRamp();
    void imageOfUnusableSizeIsNull_data();
    void imageOfUnusableSizeIsNull();
};

void TestDataConverter::pointsAreColumnRowAndValue()
{
    Coordinates heights{1, 0, 3, 4, 5, notANumber};
    const auto points = DataConverter::convertToPointData(heights.data(), 3, 2);
    QCOMPARE(points->GetNumberOfPoints(), 6);
    QVERIFY(qIsNaN(points->GetPoint(5)[2]));
    points->SetPoint(5, 2, 1, 6);
    QCOMPARE(
        coordinatesOf(points), (Coordinates{0, 0, 1, 1, 0, 0, 2, 0, 3, 0, 1, 4, 1, 1, 5, 2, 1, 6}));
}

void TestDataConverter::zerosOfEitherSignAreSkippedButNotNan()
{
    Coordinates heights{0, 2, -0.0f, 1e-45f, notANumber, 0};
    const auto points = DataConverter::convertToPointDataNoZero(heights.data(), 2, 3);
    QCOMPARE(points->GetNumberOfPoints(), 3);
    QCOMPARE(points->GetData()->GetNumberOfValues(), 9);
    QVERIFY(qIsNaN(points->GetPoint(2)[2]));
    points->SetPoint(2, 0, 2, 7);
    QCOMPARE(coordinatesOf(points), (Coordinates{1, 0, 2, 1, 1, 1e-45f, 0, 2, 7}));
}

void TestDataConverter::buffersWithoutSamplesGiveNoPoints_data()
{
    QTest::addColumn<Convert>("convert");
    QTest::addColumn<bool>("isNull");
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("h");

    const std::array<std::pair<const char *, Convert>, 2> conversions{
        {{"all", DataConverter::convertToPolyData},
            {"no zero", DataConverter::convertToPolyDataNoZero}}};
    for (const auto &[name, convert] : conversions) {
        QTest::addRow("%s: no width", name) << convert << false << 0 << 3;
        QTest::addRow("%s: negative height", name) << convert << false << 2 << -1;
        QTest::addRow("%s: both negative", name) << convert << false << -2 << -3;
        QTest::addRow("%s: wraps to 0", name) << convert << false << 65536 << 65536;
        QTest::addRow("%s: wraps below 0", name) << convert << false << 46341 << 46341;
        QTest::addRow("%s: no buffer", name) << convert << true << 2 << 2;
    }
}

void TestDataConverter::buffersWithoutSamplesGiveNoPoints()
{
    QFETCH(const Convert, convert);
    QFETCH(const bool, isNull);
    QFETCH(const int, w);
    QFETCH(const int, h);
    float height = 1.0f;
    QCOMPARE(convert(isNull ? nullptr : &height, w, h)->GetNumberOfPoints(), 0);
}

void TestDataConverter::wrappedProductEndsInsideARow()
{
    Coordinates heights(131073, 1.0f);
    heights.back() = 9.0f;
    for (const Convert convert :
        {DataConverter::convertToPolyData, DataConverter::convertToPolyDataNoZero}) {
        const auto cloud = convert(heights.data(), 65537, 65537);
        QCOMPARE(cloud->GetNumberOfPoints(), 131073);
        const double *last = cloud->GetPoint(131072);
        QCOMPARE((std::array{last[0], last[1], last[2]}), (std::array{65535.0, 1.0, 9.0}));
    }
}

void TestDataConverter::swapIsItsOwnInverse()
{
    Coordinates heights{7, 8};
    const auto cloud = DataConverter::convertToPolyData(heights.data(), 1, 2);
    QCOMPARE(cloud->GetBounds()[5], 8.0);
    DataConverter::swapzy(cloud);
    QCOMPARE(coordinatesOf(cloud->GetPoints()), (Coordinates{0, 7, 0, 0, 8, 1}));
    QCOMPARE(cloud->GetBounds()[5], 1.0);
    DataConverter::swapzy(cloud);
    QCOMPARE(coordinatesOf(cloud->GetPoints()), (Coordinates{0, 0, 7, 0, 1, 8}));
}

void TestDataConverter::swapReachesDoublesAndEmptyClouds()
{
    vtkNew<vtkPoints> points;
    points->SetDataTypeToDouble();
    points->InsertNextPoint(1, 2, 3);
    DataConverter::swapzy(vtkSmartPointer<vtkPoints>(points));
    QCOMPARE(coordinatesOf(points), (Coordinates{1, 3, 2}));

    const auto cloud = vtkSmartPointer<vtkPolyData>::New();
    DataConverter::swapzy(cloud);
    QCOMPARE(cloud->GetNumberOfPoints(), 0);
}

void TestDataConverter::rangeOfFloats_data()
{
    QTest::addColumn<Coordinates>("values");
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");

    QTest::newRow("rising") << Coordinates{1, 2, 3} << largest << 3.0;
    QTest::newRow("falling") << Coordinates{3, 2, 1} << 1.0 << 3.0;
    QTest::newRow("rising again below the first") << Coordinates{5, 3, 4, 6} << 3.0 << 6.0;
    QTest::newRow("small") << Coordinates{0.5f} << largest << 1.0;
    QTest::newRow("just one") << Coordinates{1.5f, 0.25f} << 0.25 << 1.5;
    QTest::newRow("negative") << Coordinates{-1, -5, -2} << -5.0 << 1.0;
    QTest::newRow("NaN") << Coordinates{notANumber, 4, notANumber, 2, notANumber} << 2.0 << 4.0;
    QTest::newRow("infinite") << Coordinates{infinity, 2, -infinity} << -double(infinity)
                              << double(infinity);
    QTest::newRow("none") << Coordinates{} << largest << 1.0;
}

void TestDataConverter::rangeOfFloats()
{
    QFETCH(Coordinates, values);
    QFETCH(const double, min);
    QFETCH(const double, max);
    const auto count = static_cast<long>(values.size());
    QCOMPARE(DataConverter::getminmax(values.data(), count), std::make_pair(min, max));
    QCOMPARE(DataConverter::getminmax(values.data(), -1), std::make_pair(largest, 1.0));
}

void TestDataConverter::rangeOfBytes_data()
{
    QTest::addColumn<QByteArray>("values");
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");

    QTest::newRow("zeros") << QByteArray(2, '\0') << 0 << 1;
    QTest::newRow("rising") << QByteArray("\x02\xc8") << 255 << 200;
    QTest::newRow("falling") << QByteArray("\xc8\x02") << 2 << 200;
    QTest::newRow("none") << QByteArray() << 255 << 1;
}

void TestDataConverter::rangeOfBytes()
{
    QFETCH(QByteArray, values);
    QFETCH(const int, min);
    QFETCH(const int, max);
    auto *bytes = reinterpret_cast<unsigned char *>(values.data());
    const auto [actualMin, actualMax] = DataConverter::getminmax(bytes, values.size());
    QCOMPARE(int(actualMin), min);
    QCOMPARE(int(actualMax), max);
}

void TestDataConverter::rangeOfVectorSkipsWhatIsNotAboveZero()
{
    const QVector<double> values{1e-310, 4.5, -2.0, 3.0};
    QCOMPARE(DataConverter::getminmax(values), std::make_pair(-2.0, 4.5));
    // Below the smallest normal number: no new maximum, hence a candidate for the minimum.
    QCOMPARE(DataConverter::getminmax(QVector<double>{1e-310}), std::make_pair(1e-310, 1.0));
    QCOMPARE(DataConverter::getminmax(QVector<double>()), std::make_pair(largest, 1.0));
}

void TestDataConverter::distance_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<float>("min");
    QTest::addColumn<float>("range");
    QTest::addColumn<int>("expected");

    QTest::newRow("half is truncated") << 10.0f << 0.0f << 20.0f << 127;
    QTest::newRow("full") << 20.0f << 0.0f << 20.0f << 255;
    QTest::newRow("not clamped below") << -1.0f << 1.0f << 100.0f << -5;
    QTest::newRow("not clamped above") << 40.0f << 0.0f << 20.0f << 510;
    QTest::newRow("NaN") << notANumber << 0.0f << 1.0f << lowest;
    QTest::newRow("no range") << 3.0f << 1.0f << 0.0f << lowest;
    QTest::newRow("no int holds it") << 3e38f << 0.0f << 2.0f << lowest;
    QTest::newRow("just too large") << 2147483648.0f << 0.0f << 255.0f << lowest;
}

void TestDataConverter::distance()
{
    QFETCH(const float, value);
    QFETCH(const float, min);
    QFETCH(const float, range);
    QFETCH(const int, expected);
    QCOMPARE(DataConverter::getDistance(value, min, range), expected);
}

void TestDataConverter::hueRamp_data()
{
    QTest::addColumn<int>("distance");
    QTest::addColumn<QColor>("expected");

    QTest::newRow("red to yellow") << 230 << QColor(255, 94, 0);
    QTest::newRow("yellow to green") << 160 << QColor(152, 255, 0);
    QTest::newRow("green to cyan") << 60 << QColor(0, 255, 224);
    QTest::newRow("cyan to blue") << 20 << QColor(0, 134, 255);
    QTest::newRow("red end") << 255 << QColor(255, 0, 0);
    QTest::newRow("blue end") << 0 << QColor(0, 59, 255);
}

void TestDataConverter::hueRamp()
{
    QFETCH(const int, distance);
    QFETCH(const QColor, expected);
    unsigned char r = 1;
    unsigned char g = 1;
    unsigned char b = 1;
    DataConverter::distanceToColor(static_cast<unsigned char>(distance), r, g, b);
    QCOMPARE(QColor(r, g, b), expected);
}

void TestDataConverter::greyImageFollowsTheDistance()
{
    const Gradient unused = GradientFactory::BlackAndWhite();
    const RangeMap map = rangeMap<float>({40, 10, 20, notANumber, 10, 40}, 3, 2, true, unused);
    QCOMPARE(map.image.format(), QImage::Format_RGB888);
    QCOMPARE(map.image.bytesPerLine(), 9);
    QCOMPARE(pixelsOf(map.image),
        (std::vector<QRgb>{qRgb(255, 255, 255), qRgb(0, 0, 0), qRgb(85, 85, 85), qRgb(0, 0, 0),
            qRgb(0, 0, 0), qRgb(255, 255, 255)}));
}

void TestDataConverter::byteRangeWraps()
{
    // Minimum 255, maximum 200, range 201: (2 - 255) * 255 / 201 is -320, (200 - 255) * 255 / 201
    // -69.
    const RangeMap map = rangeMap<unsigned char>({2, 200}, 2, 1, true, Gradient());
    QCOMPARE(pixelsOf(map.image), (std::vector<QRgb>{qRgb(192, 192, 192), qRgb(187, 187, 187)}));
}

void TestDataConverter::gradientColorsTheImage()
{
    Gradient gradient = GradientFactory::WhiteAndBlack();
    gradient.setMin(0, QColor(1, 2, 3));
    gradient.setMax(100, QColor(4, 5, 6));
    const RangeMap map = rangeMap<float>({-1, 0, 25, 101}, 2, 2, false, gradient);
    QCOMPARE(pixelsOf(map.image),
        (std::vector<QRgb>{
            qRgb(1, 2, 3), qRgb(255, 255, 255), qRgb(191, 191, 191), qRgb(4, 5, 6)}));
}

void TestDataConverter::gradientWithoutBoundsLeavesTheImageBlack()
{
    const RangeMap map =
        rangeMap<unsigned char>({9, 200}, 1, 2, false, GradientFactory::WhiteAndBlack());
    QCOMPARE(pixelsOf(map.image), (std::vector<QRgb>{qRgb(0, 0, 0), qRgb(0, 0, 0)}));
}

void TestDataConverter::gradientWithoutStopsGivesTheHueRamp()
{
    const RangeMap map = rangeMap<float>({255, 0, 20}, 3, 1, false, Gradient());
    QCOMPARE(pixelsOf(map.image),
        (std::vector<QRgb>{qRgb(255, 0, 0), qRgb(0, 59, 255), qRgb(0, 134, 255)}));
}

void TestDataConverter::imageOfUnusableSizeIsNull_data()
{
    QTest::addColumn<int>("w");
    QTest::addColumn<int>("h");

    QTest::newRow("no height") << 3 << 0;
    QTest::newRow("both negative") << -2 << -2;
    QTest::newRow("wraps to 0") << 65536 << 65536;
    QTest::newRow("wraps to a positive product") << 65537 << 65537;
    QTest::newRow("line too long") << 715827883 << 1;
}

void TestDataConverter::imageOfUnusableSizeIsNull()
{
    QFETCH(const int, w);
    QFETCH(const int, h);
    std::vector<float> values{1.0f};
    unsigned char garbage = 0;
    unsigned char *out = &garbage;
    QVERIFY(
        DataConverter::generateImageRangeMap(values.data(), w, h, out, false, Gradient()).isNull());
    QVERIFY(!out);
}

QTEST_GUILESS_MAIN(TestDataConverter)
#include "tst_dataconverter.moc"
