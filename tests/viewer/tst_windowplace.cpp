#include "WindowPlace.h"

#include <QtTest>

#include <climits>

class TestWindowPlace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedPlacesStayReachable_data()
    {
        QTest::addColumn<QPoint>("position");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRect>("place");
        const auto row = [](const char *name, QPoint position, QSize size, const QRect &place) {
            QTest::newRow(name) << position << size << place;
        };
        constexpr QSize size(500, 400);
        row("on the second screen", {2500, 300}, size, {{2500, 300}, size});
        row("under the second, lower screen", {2500, 900}, size, {{2500, 679}, size});
        row("too far to the left and above", {-470, -50}, size, {{-460, 0}, size});
        row("without a size", {10, 20}, QSize(), {{10, 20}, QSize()});
        row("less than no size", {10, 20}, {INT_MIN, INT_MIN}, {{10, 20}, QSize()});
        row("damaged", {INT_MIN, INT_MAX}, {16777215, 16777215}, {-3160, 1039, 3200, 1080});
    }

    void storedPlacesStayReachable()
    {
        QFETCH(QPoint, position);
        QFETCH(QSize, size);
        QTEST(reachablePlace(position, size, {{0, 0, 1920, 1080}, {1920, 0, 1280, 720}}), "place");
    }
};

QTEST_GUILESS_MAIN(TestWindowPlace)
#include "tst_windowplace.moc"
