#include "GuiTest.h"

#include "HeightBuffers.h"
#include "Olvik3DViewerWidget.h"
#include "ProcessData.h"

#include <limits>

using Heights = std::vector<float>;
Q_DECLARE_METATYPE(Heights)

class TestProcessData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boundOfEachStep_data()
    {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        constexpr float denormal = std::numeric_limits<float>::denorm_min();
        constexpr float largest = std::numeric_limits<float>::max();

        QTest::addColumn<Heights>("values");
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("step");
        QTest::addColumn<float>("min");
        QTest::addColumn<float>("max");

        QTest::newRow("falling") << Heights{3, 2, 1} << 0 << 1 << 1.0f << 3.0f;
        QTest::newRow("rising values never lower the minimum")
            << Heights{1, 2, 3} << 0 << 1 << 0.0f << 3.0f;
        QTest::newRow("negative values never raise the maximum")
            << Heights{-1, -3, -2} << 0 << 1 << -3.0f << 0.0f;
        QTest::newRow("only every third")
            << Heights{9, 9, 9, 4, 9, 9, 5, 9, 9, 2} << 3 << 3 << 2.0f << 5.0f;
        QTest::newRow("NaN counts for nothing")
            << Heights{nan, 5, nan, 2, nan} << 0 << 1 << 2.0f << 5.0f;
        QTest::newRow("denormals lower the minimum only")
            << Heights{5, denormal} << 0 << 1 << denormal << 5.0f;
        QTest::newRow("the largest float is no minimum")
            << Heights{largest, largest} << 0 << 1 << 0.0f << largest;
        QTest::newRow("no step") << Heights{3, 2, 1} << 0 << 0 << 0.0f << 0.0f;
        QTest::newRow("backwards") << Heights{3, 2, 1} << 2 << -1 << 0.0f << 0.0f;
    }

    void boundOfEachStep()
    {
        QFETCH(Heights, values);
        QFETCH(int, start);
        QFETCH(int, step);
        const ProcessData worker(nullptr, nullptr);
        const std::vector<float> bound = worker.computeIndividualBound(
            values.data(), static_cast<long>(values.size()), start, step);
        QCOMPARE(bound.size(), std::size_t{2});
        QTEST(bound[0], "min");
        QTEST(bound[1], "max");
    }

    void emptyRecordsAreNotNull()
    {
        HeightBuffers buffers;
        for (int i = 0; i < 3; ++i)
            QVERIFY(buffers.copyOf(nullptr, 0, 4).GetRawPtr());
    }

    void requestOfABuffer_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<Heights>("heights");
        QTest::addColumn<bool>("showZero");
        QTest::addColumn<int>("points");
        QTest::addColumn<float>("colorMin");
        QTest::addColumn<float>("colorMax");
        QTest::addColumn<float>("top");

        QTest::newRow("grid without zeros")
            << 3 << Heights{4, 2, 0, 1, 0, 8} << false << 4 << 0.0f << 2.0f << 8.0f;
        QTest::newRow("one row rises along its columns")
            << 4 << Heights{5, 5, 5, 6} << true << 4 << 0.0f << 3.0f << 6.0f;
        QTest::newRow("no zeros in the first column shifts the low end")
            << 3 << Heights{0, 7, 8, 0, 9, 1} << false << 4 << 1.0f << 2.0f << 9.0f;
    }

    void requestOfABuffer()
    {
        QFETCH(int, width);
        QFETCH(Heights, heights);
        QFETCH(bool, showZero);
        QFETCH(float, top);
        const int rows = static_cast<int>(heights.size()) / width;
        Olvik3DViewerWidget view;
        ProcessData worker(&view, nullptr);
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);

        worker.onNewProfileData(OlvikProfileData(width, rows, heights.data()), showZero);

        QVERIFY(!worker.isProcessingData());
        QCOMPARE(requests.size(), 1);
        const auto request = requests[0][0].value<Olvik3DViewerWidget::RenderData>();
        QTEST(static_cast<int>(request.polyData->GetNumberOfPoints()), "points");
        QTEST(request.min, "colorMin");
        QTEST(request.max, "colorMax");
        QCOMPARE(request.scaleFactor, 1.0f / top);
        QCOMPARE(request.xRange[1], static_cast<double>(width));
        QCOMPARE(request.yRange[1], static_cast<double>(rows));
        QCOMPARE(request.zRange[0], 0.0);
        QCOMPARE(request.zRange[1], static_cast<double>(top));
    }
};

OLVIK_GUI_TEST_MAIN(TestProcessData)
#include "tst_processdata.moc"
