#include "DataConverter.h"
#include "GradientFactory.h"

#include <QtTest>

#include <vtkPoints.h>
#include <vtkPolyData.h>

#include <cstdlib>
#include <limits>
#include <new>
#include <vector>

#include <sys/resource.h>

namespace {

using Coordinates = std::vector<float>;

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

QByteArray rangeMap(Coordinates values, bool grey, const Gradient &gradient)
{
    unsigned char *out = nullptr;
    auto image = DataConverter::generateImageRangeMap(values.data(), 3, 2, out, grey, gradient);
    const QByteArray bytes(reinterpret_cast<const char *>(image.constBits()), 18);
    std::free(out);
    return bytes.toHex();
}

QByteArray textOf(vtkPoints *points)
{
    QByteArray text;
    for (vtkIdType i = 0; i < 3 * points->GetNumberOfPoints(); ++i)
        text += QByteArray::number(points->GetPoint(i / 3)[i % 3]) + (i % 3 == 2 ? "; " : " ");
    return text;
}

std::pair<double, double> rangeOf(Coordinates values)
{
    return DataConverter::getminmax(values.data(), static_cast<long>(values.size()));
}

QColor hueOf(float value)
{
    const int distance = DataConverter::getDistance(value, 1.0f, 51.0f);
    unsigned char r = 1, g = 1, b = 1;
    DataConverter::distanceToColor(static_cast<unsigned char>(distance), r, g, b);
    return QColor(r, g, b);
}

} // namespace

class TestDataConverter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pointsAreColumnRowAndValueWithOrWithoutZeros()
    {
        Coordinates heights{1, 0, -0.0f, 4, notANumber, 0.5f};
        const auto all = DataConverter::convertToPointData(heights.data(), 3, 2);
        QCOMPARE(textOf(all), QByteArray("0 0 1; 1 0 0; 2 0 0; 0 1 4; 1 1 nan; 2 1 0.5; "));
        const auto noZero = DataConverter::convertToPointDataNoZero(heights.data(), 3, 2);
        QCOMPARE(textOf(noZero), QByteArray("0 0 1; 0 1 4; 1 1 nan; 2 1 0.5; "));
    }

    void negativeAndWrappingSizesGiveNothing_data()
    {
        QTest::addColumn<int>("w");
        QTest::addColumn<int>("h");
        QTest::newRow("negative height") << 2 << -1;
        QTest::newRow("both negative") << -2 << -3;
        QTest::newRow("wraps to 0") << 65536 << 65536;
        QTest::newRow("wraps below 0") << 46341 << 46341;
    }

    void negativeAndWrappingSizesGiveNothing()
    {
        QFETCH(const int, w);
        QFETCH(const int, h);
        float one = 1.0f;
        unsigned char *out = nullptr;
        QCOMPARE(DataConverter::convertToPolyData(&one, w, h)->GetNumberOfPoints(), 0);
        QCOMPARE(DataConverter::convertToPolyDataNoZero(&one, w, h)->GetNumberOfPoints(), 0);
        QVERIFY(DataConverter::generateImageRangeMap(&one, w, h, out, true, Gradient()).isNull());
    }

    void linesThatAnImageCannotHoldGiveNothing()
    {
        std::vector<unsigned char> line(std::numeric_limits<int>::max() / 24 + 1);
        unsigned char *out = nullptr;
        const int width = static_cast<int>(line.size());
        QVERIFY(DataConverter::generateImageRangeMap(line.data(), width, 1, out, true, Gradient())
                    .isNull());
        QVERIFY(!out);
    }

    /// Whatever the console is told fails the test.
    void noMemoryIsAnException()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizer's own allocator ends the process");
#endif
        rlimit before;
        getrlimit(RLIMIT_AS, &before);
        const rlimit fourGigabytes = {4UL << 30, before.rlim_max};
        setrlimit(RLIMIT_AS, &fourGigabytes);
        float one = 1.0f;
        for (const auto convert :
            {DataConverter::convertToPolyData, DataConverter::convertToPolyDataNoZero})
            QVERIFY_EXCEPTION_THROWN(convert(&one, 40000, 40000), std::bad_alloc);
        setrlimit(RLIMIT_AS, &before);
    }

    void minimumNeedsASampleThatIsNoNewMaximum()
    {
        QCOMPARE(rangeOf({1, 2, 3}), std::make_pair(std::numeric_limits<double>::max(), 3.0));
        QCOMPARE(rangeOf({3, 2, 1}), std::make_pair(1.0, 3.0));
        QCOMPARE(rangeOf({-1, -5, -2}), std::make_pair(-5.0, 1.0));
        QCOMPARE(rangeOf({notANumber, 4, notANumber, 2}), std::make_pair(2.0, 4.0));
    }

    void hueFollowsTheTruncatedDistance()
    {
        QCOMPARE(hueOf(1.0f), QColor(0, 59, 255));
        QCOMPARE(hueOf(13.0f), QColor(0, 255, 224));
        QCOMPARE(hueOf(33.0f), QColor(152, 255, 0));
        QCOMPARE(hueOf(47.1f), QColor(255, 94, 0));
    }

    void rangeMapFollowsGreyOrGradient()
    {
        QCOMPARE(rangeMap({40, 10, 20, notANumber, 10, 40}, true, Gradient()),
            QByteArray("ffffff000000555555000000000000ffffff"));
        Gradient gradient = GradientFactory::WhiteAndBlack();
        gradient.setMin(0, QColor(1, 2, 3));
        gradient.setMax(100, QColor(4, 5, 6));
        const QByteArray expected = "010203ffffffbfbfbf040506000000ffffff";
        QCOMPARE(rangeMap({-1, 0, 25, 101, 100, 0}, false, gradient), expected);
    }

    void swapExchangesYAndZ()
    {
        Coordinates heights{7, 8};
        const auto cloud = DataConverter::convertToPolyData(heights.data(), 1, 2);
        QCOMPARE(cloud->GetBounds()[5], 8.0);
        DataConverter::swapzy(cloud);
        QCOMPARE(textOf(cloud->GetPoints()), QByteArray("0 7 0; 0 8 1; "));
        QCOMPARE(cloud->GetBounds()[5], 1.0);
    }
};

QTEST_GUILESS_MAIN(TestDataConverter)
#include "tst_dataconverter.moc"
