#include "DataConverter.h"
#include "IndividualBound.h"
#include "SampleCount.h"
#include "ScanConverter.h"

#include <QtTest>

#include <vtkPoints.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using Heights = std::vector<float>;
Q_DECLARE_METATYPE(Heights)

namespace {

const float *coordinates(vtkPolyData &cloud)
{
    return static_cast<const float *>(cloud.GetPoints()->GetVoidPointer(0));
}

Heights randomBits(std::size_t count)
{
    std::mt19937 random(7);
    Heights heights(count);
    for (float &height : heights) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::memcpy(&height, &bits, sizeof bits);
    }
    return heights;
}

/// Mostly zero, with ordinary heights in between.
Heights sparse(std::size_t count)
{
    std::mt19937 random(11);
    Heights heights(count);
    for (float &height : heights)
        height = random() % 4 == 0 ? static_cast<float>(random() % 1000) - 300.0f : 0.0f;
    return heights;
}

std::array<double, 6> boxOf(vtkPolyData &cloud)
{
    std::array<double, 6> box = unknownBox;
    const float *xyz = coordinates(cloud);
    for (vtkIdType i = 0; i < 3 * cloud.GetNumberOfPoints(); ++i) {
        const auto axis = static_cast<std::size_t>(2 * (i % 3));
        const double value = static_cast<double>(xyz[i]);
        if (!std::isfinite(value))
            continue;
        const bool isFirst = box[axis] > box[axis + 1];
        box[axis] = isFirst ? value : std::min(box[axis], value);
        box[axis + 1] = isFirst ? value : std::max(box[axis + 1], value);
    }
    return box;
}

} // namespace

class TestScanConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsThePlainRules_data()
    {
        constexpr float inf = std::numeric_limits<float>::infinity();
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        constexpr float denormal = std::numeric_limits<float>::denorm_min();
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<Heights>("heights");
        const auto grid = [](const char *name, int width, const Heights &heights) {
            const int rows = static_cast<int>(heights.size()) / width;
            QTest::newRow(name) << width << rows << heights;
        };
        grid("any bits", 61, randomBits(61 * 40));
        grid("any bits, one column", 1, randomBits(500));
        grid("any bits, one row", 500, randomBits(500));
        grid("sparse", 37, sparse(37 * 50));
        grid("sparse, one column", 1, sparse(300));
        grid("sparse, one row", 300, sparse(300));
        grid("zeros", 5, Heights(20, -0.0f));
        grid("NaN alone", 17, Heights(17 * 3, nan));
        grid("infinite", 3, {-inf, inf, 1, 0, -inf, -2});
        grid("negative", 2, {-3, -1, -2, -5});
        grid("denormal", 2, {denormal, 0, denormal, -denormal});
        grid("one point", 1, {4});
        grid("first row of one point", 3, {0, 0, 8, 0, 5, 7, 0, 0, 0});
        grid("rows that begin further and further right", 3, {1, 0, 0, 0, 2, 0, 0, 0, 3});
        grid("rows that begin further and further left", 3, {0, 0, 1, 0, 2, 0, 3, 0, 0});
        QTest::newRow("no width") << 0 << 4 << Heights();
        QTest::newRow("two negative sizes") << -2 << -3 << Heights{1, 2, 3, 4, 5, 9};
        QTest::newRow("product wraps to four") << 65537 << 65540 << Heights(4, 2.0f);
    }

    void followsThePlainRules()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(Heights, heights);
        if (qint64(width) * height > qint64(heights.size()))
            heights.resize(static_cast<std::size_t>(wrappedSampleCount(width, height)), 2.0f);
        ScanConverter converter;
        for (const bool showZero : {true, false, true}) {
            const Scan scan = converter.convert(heights.data(), width, height, showZero);
            const auto expected = showZero
                ? DataConverter::convertToPolyData(heights.data(), width, height)
                : DataConverter::convertToPolyDataNoZero(heights.data(), width, height);
            const vtkIdType points = expected->GetNumberOfPoints();
            QCOMPARE(scan.cloud->GetNumberOfPoints(), points);
            const auto bytes = static_cast<std::size_t>(points) * 3 * sizeof(float);
            QVERIFY(bytes == 0
                || !std::memcmp(coordinates(*scan.cloud), coordinates(*expected), bytes));

            const auto samples = static_cast<std::int64_t>(heights.size());
            const float top = individualBound(heights.data(), samples, 0, 1)[1];
            QCOMPARE(
                scan.bounds, (std::array<double, 6>{0, double(width), 0, double(height), 0, top}));
            const auto columns = individualBound(coordinates(*expected), 3 * points, 3, 3);
            QCOMPARE(scan.heightRange, (std::array<double, 2>{columns[0], columns[1]}));
            QCOMPARE(scan.box, boxOf(*expected));
            QVERIFY(scan.isHandedOver);
        }
    }

    void memoryIsUsedAgainOnlyWhenNobodyLooks()
    {
        Heights heights = sparse(100 * 100);
        ScanConverter converter;
        Scan first = converter.convert(heights.data(), 100, 100, true);
        const float *const memory = coordinates(*first.cloud);
        const Scan second = converter.convert(heights.data(), 100, 100, false);
        QVERIFY(coordinates(*second.cloud) != memory);

        first = {};
        heights[5] = 4321.0f;
        const Scan third = converter.convert(heights.data(), 100, 100, true);
        QCOMPARE(coordinates(*third.cloud), memory);
        QCOMPARE(coordinates(*third.cloud)[17], 4321.0f);

        const Heights zeros(heights.size());
        const Scan blank = converter.convert(zeros.data(), 100, 100, false);
        QCOMPARE(blank.cloud->GetNumberOfPoints(), 0);
        QCOMPARE(blank.cloud->GetPoints()->GetData()->GetSize(), 3 * vtkIdType(zeros.size()));
    }

    void subsampleKeepsRowsAndColumns_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("step");
        QTest::newRow("within the budget") << 400 << 500 << 1;
        QTest::newRow("square") << 900 << 1000 << 3;
        QTest::newRow("wide") << 450000 << 2 << 5;
        QTest::newRow("high") << 2 << 500000 << 5;
        // The products wrap to 300001 and 300016.
        QTest::newRow("widest") << std::numeric_limits<int>::max() << 2147183647 << 2;
        QTest::newRow("far wider than the samples") << (1 << 30) + 4 << 75004 << 2;
    }

    void subsampleKeepsRowsAndColumns()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, step);
        const Heights heights = sparse(static_cast<std::size_t>(wrappedSampleCount(width, height)));
        for (const bool showZero : {true, false}) {
            const Scan scan = ScanConverter().convert(heights.data(), width, height, showZero);
            QCOMPARE(scan.subsample.step, step);
            if (step == 1) {
                QVERIFY(!scan.subsample.cloud);
                continue;
            }
            const vtkIdType kept = scan.subsample.cloud->GetNumberOfPoints();
            QVERIFY(kept <= subsampleBudget * 11 / 10);
            const vtkIdType room = scan.subsample.cloud->GetPoints()->GetData()->GetSize();
            QVERIFY(room <= 3 * subsampleBudget * 11 / 10);
            QVERIFY(!showZero || kept > subsampleBudget / 3);
            const float *point = coordinates(*scan.subsample.cloud);
            for (vtkIdType i = 0; i < kept; ++i, point += 3) {
                const auto sample = static_cast<std::size_t>(point[1]) * std::size_t(width)
                    + static_cast<std::size_t>(point[0]);
                QCOMPARE(point[2], heights[sample]);
                QVERIFY(showZero || point[2] != 0.0f);
            }
        }
    }

    void theSpacingOfAForeignCloudIsFound()
    {
        const Heights heights = sparse(900 * 1000);
        const Scan scan = ScanConverter().convert(heights.data(), 900, 1000, true);
        vtkPoints &points = *scan.cloud->GetPoints();
        auto *xyz = static_cast<float *>(points.GetVoidPointer(0));
        for (vtkIdType i = 0; i < points.GetNumberOfPoints(); ++i, xyz += 3) {
            xyz[0] *= 0.01f;
            xyz[1] *= 0.03f;
        }
        const Subsample subsample = cloudSubsample(points);
        QVERIFY(qAbs(subsample.spacing - 0.03f) < 1e-4f);
        const vtkIdType all = scan.subsample.cloud->GetNumberOfPoints();
        QVERIFY(qAbs(subsample.cloud->GetNumberOfPoints() - all) < all / 20);
    }
};

QTEST_GUILESS_MAIN(TestScanConverter)
#include "tst_scanconverter.moc"
