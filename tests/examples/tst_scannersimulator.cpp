#include "ScannerSimulator.h"

#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

double shareOfZeros(const HeightMap &map)
{
    const auto zeros = std::count(map.heights.begin(), map.heights.end(), 0.0F);
    return static_cast<double>(zeros) / static_cast<double>(map.heights.size());
}

float heightAt(const HeightMap &map, int column, int row)
{
    return map.heights[static_cast<std::size_t>(row) * static_cast<std::size_t>(map.width)
        + static_cast<std::size_t>(column)];
}

} // namespace

class TestScannerSimulator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesOfAnySizeHoldAPartWithDropouts_data();
    void framesOfAnySizeHoldAPartWithDropouts();
    void partTravelsUnderTheLine();
    void noiseChangesWhereThePartDoesNot();
    void scannersOfOneSizeDeliverTheSameFrames();
};

void TestScannerSimulator::framesOfAnySizeHoldAPartWithDropouts_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("the default") << QSize(1024, 768);
    QTest::newRow("the smallest") << QSize(16, 16);
    QTest::newRow("a few wide profiles") << QSize(4096, 16);
    QTest::newRow("many narrow profiles") << QSize(16, 4096);
}

void TestScannerSimulator::framesOfAnySizeHoldAPartWithDropouts()
{
    QFETCH(QSize, size);
    ScannerSimulator scanner(size);

    for (int i = 0; i < 60; ++i) {
        const HeightMap &frame = scanner.next();

        QCOMPARE(QSize(frame.width, frame.height), size);
        QCOMPARE(frame.heights.size(), std::size_t(size.width()) * std::size_t(size.height()));
        const auto [low, high] = std::minmax_element(frame.heights.begin(), frame.heights.end());
        QVERIFY(*low >= 0);
        // The boss, in steps of the profile's own pitch, is a fifth as high as the profile is long.
        QVERIFY(i > 0 || std::abs(*high / static_cast<float>(size.width()) - 0.196F) < 0.01F);
        QVERIFY(shareOfZeros(frame) < 0.1);
    }
    QVERIFY(shareOfZeros(scanner.next()) > 0.001);
}

void TestScannerSimulator::partTravelsUnderTheLine()
{
    ScannerSimulator scanner(QSize(512, 384));
    const HeightMap before = scanner.next();
    const HeightMap &after = scanner.next();
    const int step = scanner.profilesPerFrame();
    QVERIFY(step > 0);

    int compared = 0;
    for (int row = 0; row < after.height - step; ++row) {
        for (int column = 0; column < after.width; ++column) {
            const float was = heightAt(before, column, row + step);
            const float is = heightAt(after, column, row);
            if (was == 0 || is == 0)
                continue;
            QVERIFY2(std::abs(is - was) < 3, qPrintable(QString::number(is - was)));
            ++compared;
        }
    }
    QVERIFY(compared > after.width * (after.height - step) * 9 / 10);
}

void TestScannerSimulator::noiseChangesWhereThePartDoesNot()
{
    ScannerSimulator scanner(QSize(512, 384));
    const HeightMap before = scanner.next();
    const HeightMap &after = scanner.next();
    const int step = scanner.profilesPerFrame();

    int equal = 0;
    for (int column = 0; column < after.width; ++column)
        equal += heightAt(before, column, 200 + step) == heightAt(after, column, 200) ? 1 : 0;

    QVERIFY(equal < after.width / 10);
}

void TestScannerSimulator::scannersOfOneSizeDeliverTheSameFrames()
{
    ScannerSimulator first(QSize(64, 48));
    ScannerSimulator second(QSize(64, 48));
    first.next();
    second.next();

    QCOMPARE(first.next().heights, second.next().heights);
}

QTEST_GUILESS_MAIN(TestScannerSimulator)
#include "tst_scannersimulator.moc"
