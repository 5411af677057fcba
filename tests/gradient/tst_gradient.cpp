#include "Gradient.h"

#include <QtTest>

#include <QPainter>

#include <limits>

namespace {

const QColor quarterRed(255, 0, 0, 64);
const QColor halfBlue(10, 20, 200, 128);

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
    void colorFromValue_data()
    {
        QTest::addColumn<int>("max");
        QTest::addColumn<double>("value");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("below") << 100 << -1.0 << QColor(245, 66, 230);
        QTest::newRow("quarter is truncated") << 100 << 25.0 << QColor(193, 5, 50, 80);
        QTest::newRow("last stop") << 100 << 100.0 << halfBlue;
        QTest::newRow("above") << 100 << 101.0 << QColor(1, 2, 3, 4);
        QTest::newRow("both bounds 0") << 0 << 5.0 << QColor(9, 9, 9, 9);
    }

    void colorFromValue()
    {
        QFETCH(const int, max);
        QFETCH(const double, value);
        Gradient gradient = redToBlue();
        gradient.setMax(max, QColor(1, 2, 3, 4));
        int r = 9, g = 9, b = 9, a = 9;
        gradient.getColorFromValue(value, r, g, b, a);
        QTEST(QColor(r, g, b, a), "expected");
    }

    void stopIsFoundAtItsWidenedPosition()
    {
        Gradient gradient = redToBlue();
        gradient.addStop(0.3f, Qt::red);
        QVERIFY(!gradient.isStop(0.3));
        gradient.removeStop(0.3);
        QVERIFY(gradient.isStop(static_cast<double>(0.3f)));
        gradient.removeStop(static_cast<double>(0.3f));
        QCOMPARE(gradient.stops(), redToBlue().stops());
    }

    void positionOffTheAxisIsIgnoredWithAWarning()
    {
        Gradient gradient = redToBlue();
        for (const float position : {-0.1F, 1.1F, std::numeric_limits<float>::quiet_NaN()}) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^QGradient::setColorAt: "));
            gradient.addStop(position, Qt::red);
        }
        QCOMPARE(gradient.stops(), redToBlue().stops());
    }

    void emptyGradientStaysEmpty()
    {
        Gradient gradient;
        gradient.addStop(0.5f, Qt::red);
        gradient.removeStop(0.5);
        gradient.removeStop(0.0);
        const Gradient copy(gradient);
        QVERIFY(copy.stops().isEmpty());
    }

    void stopDoesNotMoveOntoAnother()
    {
        Gradient gradient = redToBlue();
        QVERIFY(!gradient.moveStop(0.0, 1.0));
        QCOMPARE(gradient.stops(), redToBlue().stops());
        QVERIFY(gradient.moveStop(0.0, 0.5));
        QCOMPARE(gradient.stops(), (QGradientStops{{0.5, quarterRed}, {1.0, halfBlue}}));
    }

    void jsonRoundTripLosesOnlyAlpha()
    {
        Gradient gradient = redToBlue();
        gradient.setName(QString::fromUtf8("Höhe"));
        gradient.setMin(-20, quarterRed);
        gradient.setMax(80, halfBlue);
        QJsonObject json, again;
        gradient.write(json);
        const char *expected = R"({"name": "Höhe", "min": -20, "max": 80,
            "stops": [[255, 0, 0, 0], [10, 20, 200, 1]],
            "minColor": [255, 0, 0, 64], "maxColor": [10, 20, 200, 128]})";
        QCOMPARE(json, QJsonDocument::fromJson(expected).object());
        Gradient back;
        back.read(json);
        back.write(again);
        QCOMPARE(again, json);
        QCOMPARE(back.stops(), (QGradientStops{{0.0, Qt::red}, {1.0, QColor(10, 20, 200)}}));
    }

    void readIsLenient()
    {
        const char *malformed = R"({"stops": [[1, 2], ["x", 5, 6, 1], [1, 1, 1, -1]]})";
        Gradient gradient = redToBlue();
        gradient.read(QJsonDocument::fromJson(malformed).object());
        QCOMPARE(gradient.stops(), (QGradientStops{{0, QColor(1, 2, 0)}, {1, QColor(0, 5, 6)}}));
        gradient.read({{"stops", 3}});
        QVERIFY(gradient.stops().isEmpty());
    }

    void manyStopsAreThinnedOut()
    {
        QJsonArray stops;
        for (int number = 0; number <= 60000; ++number)
            stops.append(QJsonArray{0, 0, 0, number / 60000.0});
        Gradient gradient;
        gradient.read({{"stops", stops}});
        const QGradientStops read = gradient.stops();
        QCOMPARE(read.size(), 10000);
        QCOMPARE(read.first().first, 0.0);
        QCOMPARE(read.at(5000).first, static_cast<double>(30003 / 60000.0F));
        QCOMPARE(read.last().first, 1.0);
    }

    void paintRunsFromLeftToRight()
    {
        QImage image(220, 20, QImage::Format_RGB32);
        image.fill(Qt::green);
        QPainter painter(&image);
        Gradient gradient;
        gradient.addStop(0.0f, QColor(200, 0, 0));
        gradient.addStop(1.0f, QColor(0, 0, 200));
        gradient.paint(&painter, QRect(10, 5, 201, 10), QPalette());
        QVERIFY(qAbs(image.pixelColor(60, 10).red() - 150) <= 3);
        QCOMPARE(image.pixelColor(60, 16), QColor(Qt::green));
    }
};

QTEST_GUILESS_MAIN(TestGradient)
#include "tst_gradient.moc"
