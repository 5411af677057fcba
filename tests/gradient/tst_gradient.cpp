#include "GradientFactory.h"

#include <QtTest>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

const QColor quarterRed(255, 0, 0, 64);
const QColor halfBlue(10, 20, 200, 128);

/// Invalid when nothing was written.
QColor colorOf(const Gradient &gradient, double value)
{
    int r = -1;
    int g = -1;
    int b = -1;
    int a = -1;
    gradient.getColorFromValue(value, r, g, b, a);
    return QColor(r, g, b, a);
}

QJsonObject object(const char *json)
{
    return QJsonDocument::fromJson(json).object();
}

QJsonObject written(const Gradient &gradient)
{
    QJsonObject json;
    gradient.write(json);
    return json;
}

Gradient readFrom(const QJsonObject &json)
{
    Gradient gradient;
    gradient.read(json);
    return gradient;
}

Gradient redToBlue()
{
    Gradient gradient(7);
    gradient.addStop(0.0f, quarterRed);
    gradient.addStop(1.0f, halfBlue);
    return gradient;
}

} // namespace

class TestGradient : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newGradientColorsNothing();
    void colorFromValue_data();
    void colorFromValue();
    void boundsAreWholeAndHeldToInt_data();
    void boundsAreWholeAndHeldToInt();
    void boundColorsKeepAlpha();
    void everySetterTellsOnce();
    void stopReplacesColorAtItsPosition();
    void stopOffTheAxisIsDropped_data();
    void stopOffTheAxisIsDropped();
    void stopIsFoundAtItsWidenedPosition();
    void removeNeedsTheExactPosition();
    void removingTheLastStopLeavesNone();
    void blackAndWhiteIsNotTakenForEmpty();
    void moveStop_data();
    void moveStop();
    void emptyGradientStaysEmpty();
    void tableFollowsChangesThroughThePointer();
    void copyIsIndependent();
    void nullSourceChangesNothing();
    void copyToItselfKeepsAll();
    void resetKeepsNameAndBounds();
    void jsonRoundTripLosesOnlyAlpha();
    void readIsLenient_data();
    void readIsLenient();
    void readTakesManyStops();
    void paintRunsFromLeftToRight();
    void factoryOrdersItsStops();
    void travelsInVariants();
};

void TestGradient::newGradientColorsNothing()
{
    const Gradient gradient(0);
    QVERIFY(!gradient.isValid());
    QVERIFY(gradient.getName().isEmpty());
    QCOMPARE(gradient.getMinColor(), QColor(245, 66, 230));
    for (const double value : {-1e9, 0.0, 5.0, infinity})
        QVERIFY(!colorOf(gradient, value).isValid());
}

void TestGradient::colorFromValue_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QColor>("expected");

    QTest::newRow("below the lower bound") << -1.0 << QColor(245, 66, 230);
    QTest::newRow("first stop") << 0.0 << quarterRed;
    QTest::newRow("quarter is truncated") << 25.0 << QColor(193, 5, 50, 80);
    QTest::newRow("exactly on the last stop") << 100.0 << halfBlue;
    QTest::newRow("a trifle above, lost in single precision") << 100.000001 << halfBlue;
    QTest::newRow("above the upper bound") << 101.0 << QColor(1, 2, 3, 4);
    QTest::newRow("above every float") << 1e300 << QColor(1, 2, 3, 4);
}

void TestGradient::colorFromValue()
{
    QFETCH(const double, value);
    QFETCH(const QColor, expected);
    Gradient gradient = redToBlue();
    gradient.setMax(100, QColor(1, 2, 3, 4));
    QCOMPARE(colorOf(gradient, value), expected);
}

void TestGradient::boundsAreWholeAndHeldToInt_data()
{
    QTest::addColumn<double>("bound");
    QTest::addColumn<double>("expected");

    QTest::newRow("positive") << 2.9 << 2.0;
    QTest::newRow("negative") << -2.9 << -2.0;
    QTest::newRow("huge") << 1e12 << 2147483647.0;
    QTest::newRow("minus infinity") << -infinity << -2147483648.0;
    QTest::newRow("NaN") << notANumber << 0.0;
}

void TestGradient::boundsAreWholeAndHeldToInt()
{
    QFETCH(const double, bound);
    QFETCH(const double, expected);
    Gradient gradient;
    gradient.setMin(bound);
    QCOMPARE(gradient.getMin(), expected);
    gradient.setMax(bound, Qt::red);
    QCOMPARE(gradient.getMax(), expected);
}

void TestGradient::boundColorsKeepAlpha()
{
    Gradient gradient;
    gradient.setMin(-5.0, quarterRed);
    gradient.setMax(5.0, halfBlue);
    QCOMPARE(gradient.getMinColor(), quarterRed);
    QCOMPARE(gradient.getMaxColor(), halfBlue);
    QCOMPARE(colorOf(gradient, -6.0), quarterRed);
}

void TestGradient::everySetterTellsOnce()
{
    Gradient gradient;
    const QSignalSpy spy(&gradient, &Gradient::updated);
    gradient.setName("ice");
    gradient.setMin(1);
    gradient.setMax(2, Qt::red);
    gradient.copyfromOther(redToBlue());
    QCOMPARE(spy.count(), 4);

    gradient.addStop(0.5f, Qt::red);
    gradient.moveStop(0.5, 0.6);
    gradient.removeStop(0.6);
    gradient.read(written(gradient));
    gradient.reset();
    QCOMPARE(spy.count(), 4);
}

void TestGradient::stopReplacesColorAtItsPosition()
{
    Gradient gradient = redToBlue();
    gradient.addStop(1.0f, Qt::green);
    gradient.setMax(10);
    QCOMPARE(gradient.stops().size(), 2);
    QCOMPARE(colorOf(gradient, 10.0), QColor(Qt::green));
}

void TestGradient::stopOffTheAxisIsDropped_data()
{
    QTest::addColumn<float>("position");

    QTest::newRow("below") << -0.001f;
    QTest::newRow("above") << 1.001f;
    QTest::newRow("NaN") << static_cast<float>(notANumber);
    QTest::newRow("infinite") << static_cast<float>(infinity);
}

void TestGradient::stopOffTheAxisIsDropped()
{
    QFETCH(const float, position);
    Gradient gradient;
    gradient.addStop(position, Qt::red);
    QVERIFY(!gradient.isValid());
}

void TestGradient::stopIsFoundAtItsWidenedPosition()
{
    Gradient gradient = redToBlue();
    gradient.addStop(0.3f, Qt::red);
    QVERIFY(gradient.isStop(static_cast<double>(0.3f)));
    QVERIFY(gradient.isStop(static_cast<double>(0.3f) + 1e-14));
    QVERIFY(!gradient.isStop(0.3));
    QVERIFY(gradient.isStop(0.0));
    QVERIFY(!gradient.isStop(1e-300));
}

void TestGradient::removeNeedsTheExactPosition()
{
    Gradient gradient = redToBlue();
    gradient.addStop(0.3f, Qt::red);
    gradient.removeStop(0.3);
    QCOMPARE(gradient.stops().size(), 3);
    gradient.removeStop(static_cast<double>(0.3f));
    QCOMPARE(gradient.stops(), redToBlue().stops());
}

void TestGradient::removingTheLastStopLeavesNone()
{
    Gradient gradient;
    gradient.addStop(0.5f, Qt::red);
    gradient.setMax(10);
    gradient.removeStop(0.5);
    QVERIFY(!gradient.isValid());
    QVERIFY(gradient.stops().isEmpty());
    QVERIFY(!colorOf(gradient, 5.0).isValid());
}

void TestGradient::blackAndWhiteIsNotTakenForEmpty()
{
    Gradient gradient = GradientFactory::BlackAndWhite();
    gradient.updategrad();
    QCOMPARE(gradient.stops().size(), 2);
    gradient.removeStop(0.0);
    QCOMPARE(gradient.stops(), (QGradientStops{{1.0, Qt::white}}));
}

void TestGradient::moveStop_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("moves");
    QTest::addColumn<QGradientStops>("expected");

    const QGradientStops before{{0.0, quarterRed}, {0.5, Qt::green}, {1.0, halfBlue}};
    const QGradientStops without{{0.0, quarterRed}, {1.0, halfBlue}};
    QTest::newRow("past a neighbour")
        << 0.0 << 0.7 << true
        << QGradientStops{{0.5, Qt::green}, {0.7, quarterRed}, {1.0, halfBlue}};
    QTest::newRow("onto another") << 0.5 << 1.0 << false << before;
    QTest::newRow("onto itself") << 0.5 << 0.5 << false << before;
    QTest::newRow("from nowhere") << 0.4 << 0.6 << false << before;
    QTest::newRow("off the axis") << 0.5 << 1.5 << true << without;
    QTest::newRow("to NaN") << 0.5 << notANumber << true << without;
}

void TestGradient::moveStop()
{
    QFETCH(const double, from);
    QFETCH(const double, to);
    QFETCH(const bool, moves);
    QFETCH(const QGradientStops, expected);
    Gradient gradient = redToBlue();
    gradient.addStop(0.5f, Qt::green);
    QCOMPARE(gradient.moveStop(from, to), moves);
    QCOMPARE(gradient.stops(), expected);
    QCOMPARE(written(gradient)["stops"].toArray().size(), expected.size());
}

void TestGradient::emptyGradientStaysEmpty()
{
    Gradient gradient;
    gradient.removeStop(0.0);
    QVERIFY(!gradient.moveStop(0.0, 0.5));
    gradient.updategrad();
    QVERIFY(!gradient.isStop(0.0));
    Gradient copy(gradient);
    const Gradient moved(std::move(copy));
    QVERIFY(!moved.isValid());
    QVERIFY(readFrom(written(moved)).stops().isEmpty());
}

void TestGradient::tableFollowsChangesThroughThePointer()
{
    Gradient gradient;
    gradient.setMax(100);
    gradient.getQtgrad()->setStops({{0.0, Qt::black}, {1.0, Qt::white}});
    gradient.updategrad();
    QCOMPARE(colorOf(gradient, 50.0), QColor(127, 127, 127));
}

void TestGradient::copyIsIndependent()
{
    Gradient source = redToBlue();
    source.setName("ice");
    source.setMax(100, quarterRed);
    const Gradient copy(std::make_shared<Gradient>(source));
    source.setMax(10);
    source.removeStop(0.0);
    QCOMPARE(copy.getName(), QString("ice"));
    QCOMPARE(copy.getMaxColor(), quarterRed);
    QCOMPARE(colorOf(copy, 25.0), QColor(193, 5, 50, 80));
}

void TestGradient::nullSourceChangesNothing()
{
    Gradient gradient = redToBlue();
    const QSignalSpy spy(&gradient, &Gradient::updated);
    gradient = std::shared_ptr<Gradient>();
    QCOMPARE(gradient.stops().size(), 2);
    QVERIFY(spy.isEmpty());
    QVERIFY(!Gradient(std::shared_ptr<Gradient>()).isValid());
}

void TestGradient::copyToItselfKeepsAll()
{
    Gradient gradient = redToBlue();
    gradient.setMax(100);
    const Gradient &same = gradient;
    gradient = same;
    QCOMPARE(colorOf(gradient, 25.0), QColor(193, 5, 50, 80));
}

void TestGradient::resetKeepsNameAndBounds()
{
    Gradient gradient = redToBlue();
    gradient.setName("ice");
    gradient.setMin(-3, quarterRed);
    gradient.reset();
    QVERIFY(!gradient.isValid());
    QCOMPARE(gradient.getName(), QString("ice"));
    QCOMPARE(colorOf(gradient, -4.0), quarterRed);
}

void TestGradient::jsonRoundTripLosesOnlyAlpha()
{
    Gradient gradient = redToBlue();
    gradient.addStop(0.3f, QColor(9, 8, 7));
    gradient.setName(QString::fromUtf8("Höhe"));
    gradient.setMin(-20, quarterRed);
    gradient.setMax(80, halfBlue);
    const QJsonObject json = written(gradient);
    QCOMPARE(json, object(R"({"name": "Höhe", "min": -20, "max": 80,
            "stops": [[255, 0, 0, 0], [9, 8, 7, 0.30000001192092896], [10, 20, 200, 1]],
            "minColor": [255, 0, 0, 64], "maxColor": [10, 20, 200, 128]})"));

    const Gradient back = readFrom(json);
    QCOMPARE(written(back), json);
    QCOMPARE(colorOf(back, 80.0), QColor(10, 20, 200, 255));
}

void TestGradient::readIsLenient_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QByteArray>("stops");
    QTest::addColumn<double>("max");

    QTest::newRow("empty") << QByteArray("{}") << QByteArray("[]") << 0.0;
    QTest::newRow("wrong types") << QByteArray(R"({"stops": 3, "max": "9", "maxColor": {}})")
                                 << QByteArray("[]") << 0.0;
    QTest::newRow("fractional bound") << QByteArray(R"({"max": 9.5})") << QByteArray("[]") << 0.0;
    QTest::newRow("short stop") << QByteArray(R"({"stops": [[1, 2]], "max": 9})")
                                << QByteArray("[[1, 2, 0, 0]]") << 9.0;
    QTest::newRow("component of 300")
        << QByteArray(R"({"stops": [[300, 5, 5, 0.5]]})") << QByteArray("[[0, 0, 0, 0.5]]") << 0.0;
    QTest::newRow("same position twice")
        << QByteArray(R"({"stops": [[1, 1, 1, 0.5], [9, 9, 9, 0.25], [2, 2, 2, 0.5]]})")
        << QByteArray("[[9, 9, 9, 0.25], [2, 2, 2, 0.5]]") << 0.0;
    QTest::newRow("off the axis") << QByteArray(
        R"({"stops": [[1, 1, 1, -1], [2, 2, 2, 1e300], [3, 3, 3, 1.00000001]]})")
                                  << QByteArray("[[3, 3, 3, 1]]") << 0.0;
}

void TestGradient::readIsLenient()
{
    QFETCH(const QByteArray, json);
    QFETCH(const QByteArray, stops);
    QFETCH(const double, max);
    Gradient gradient = redToBlue();
    gradient.setMax(5, Qt::red);
    gradient.read(object(json));
    QCOMPARE(written(gradient)["stops"].toArray(), QJsonDocument::fromJson(stops).array());
    QCOMPARE(gradient.getMax(), max);
    QCOMPARE(gradient.getMaxColor(), QColor(0, 0, 0, 0));
}

void TestGradient::readTakesManyStops()
{
    QJsonArray stops;
    for (int i = 20000; i >= 0; --i)
        stops.append(QJsonArray{i % 256, 0, 0, i / 20000.0});
    QElapsedTimer timer;
    timer.start();
    const Gradient gradient = readFrom({{"stops", stops}});
    QCOMPARE(gradient.stops().size(), 20001);
    QVERIFY(timer.elapsed() < 20000);
}

void TestGradient::paintRunsFromLeftToRight()
{
    QImage image(220, 20, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    Gradient gradient;
    gradient.addStop(0.0f, QColor(200, 0, 0));
    gradient.addStop(1.0f, QColor(0, 0, 200));
    gradient.paint(&painter, QRect(10, 5, 201, 10), QPalette());
    QCOMPARE(painter.pen().color(), QColor(Qt::red));
    painter.end();

    const QColor quarter = image.pixelColor(60, 10);
    QVERIFY(qAbs(quarter.red() - 150) <= 3);
    QVERIFY(qAbs(quarter.blue() - 50) <= 3);
    QCOMPARE(image.pixelColor(8, 10), QColor(Qt::green));
    QCOMPARE(image.pixelColor(212, 10), QColor(Qt::green));
    QCOMPARE(image.pixelColor(60, 3), QColor(Qt::green));
    QCOMPARE(image.pixelColor(60, 16), QColor(Qt::green));
}

void TestGradient::factoryOrdersItsStops()
{
    const QGradientStops dark{{0.0, Qt::black}, {1.0, Qt::white}};
    const QGradientStops bright{{0.0, Qt::white}, {1.0, Qt::black}};
    QCOMPARE(GradientFactory::BlackAndWhite().stops(), dark);
    QCOMPARE(GradientFactory::WhiteAndBlack().stops(), bright);
}

void TestGradient::travelsInVariants()
{
    const auto shared = std::make_shared<Gradient>(redToBlue());
    QCOMPARE(QVariant::fromValue(shared).value<std::shared_ptr<Gradient>>(), shared);
    QCOMPARE(QVariant::fromValue(*shared).value<Gradient>().stops(), shared->stops());
}

QTEST_GUILESS_MAIN(TestGradient)
#include "tst_gradient.moc"
