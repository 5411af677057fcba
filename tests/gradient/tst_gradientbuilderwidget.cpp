#include "GuiTest.h"

#include "Gradient.h"
#include "GradientBuilderWidget.h"

#include <QColorDialog>
#include <QPaintEngine>
#include <QToolTip>

#include <memory>

namespace {

using Positions = QVector<double>;

std::shared_ptr<Gradient> gradientWith(const QVector<float> &positions, double max)
{
    auto gradient = std::make_shared<Gradient>();
    gradient->setMax(max);
    for (const float position : positions)
        gradient->addStop(position, Qt::blue);
    return gradient;
}

/// Notes the texts that a widget draws.
class TextRecorder : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &engine; }
    QStringList texts() const { return engine.texts; }

protected:
    int metric(PaintDeviceMetric metric) const override { return image.metric(metric); }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine()
            : QPaintEngine(AllFeatures)
        { }
        bool begin(QPaintDevice *) override { return true; }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override { }
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { }
        void drawPath(const QPainterPath &) override { }
        void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
        Type type() const override { return User; }
        void drawTextItem(const QPointF &, const QTextItem &item) override
        {
            texts.append(item.text());
        }

        QStringList texts;
    };

    struct Metrics : QImage
    {
        Metrics()
            : QImage(1000, 1000, Format_RGB32)
        { }
        using QImage::metric;
    };

    mutable Engine engine;
    Metrics image;
};

/// 204 x 84 with a frame of 2: the bar is 200 x 80, its middle at y = 42.
class Editor
{
public:
    explicit Editor(const QVector<float> &positions, double max = 100)
        : gradient(gradientWith(positions, max))
        , widget(gradient, nullptr)
    {
        widget.resize(204, 84);
        widget.show();
        isExposed = QTest::qWaitForWindowExposed(&widget);
    }

    Positions positions() const
    {
        Positions found;
        const QGradientStops stops = gradient->stops();
        for (const QGradientStop &stop : stops)
            found.append(stop.first);
        return found;
    }

    void press(const QPoint &point, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(&widget, button, Qt::NoModifier, point);
    }

    void move(const QPoint &point)
    {
        QMouseEvent event(QEvent::MouseMove, point, widget.mapToGlobal(point), Qt::NoButton,
            Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    }

    void release(const QPoint &point)
    {
        QTest::mouseRelease(&widget, Qt::LeftButton, Qt::NoModifier, point);
    }

    void doubleClick(const QPoint &point)
    {
        // The event alone: a click before and a release after it would report changes of their own.
        QMouseEvent event(QEvent::MouseButtonDblClick, point, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &event);
    }

    QStringList drawnTexts()
    {
        TextRecorder recorder;
        widget.render(&recorder);
        return recorder.texts();
    }

    std::shared_ptr<Gradient> gradient;
    GradientBuilderWidget widget;
    bool isExposed = false;
};

/// Answers the next colour dialog: with the colour, or with Cancel when it is invalid.
class ColorAnswer : public QObject
{
public:
    explicit ColorAnswer(const QColor &color)
        : answer(color)
    {
        connect(&timer, &QTimer::timeout, this, &ColorAnswer::give);
        // Xvfb runs no window manager: a box that closes at once leaves a warning about the focus.
        timer.start(200);
    }

    QColor offered;
    bool hadParent = false;

private:
    void give()
    {
        auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;

        timer.stop();
        offered = dialog->currentColor();
        hadParent = dialog->parentWidget() != nullptr;
        if (!answer.isValid())
            return dialog->reject();
        dialog->setCurrentColor(answer);
        dialog->accept();
    }

    QColor answer;
    QTimer timer;
};

const QPoint middle(102, 42);

} // namespace

class TestGradientBuilderWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesAGradientWithoutBothEnds_data();
    void refusesAGradientWithoutBothEnds();
    void anEditorWithoutGradientIsRefused();
    void snapsToWholeValuesOfTheUpperBound_data();
    void snapsToWholeValuesOfTheUpperBound();
    void addStopRefusesOnlyPositionsAboveOne();
    void handleIsHitTwiceAsWideAsDrawn_data();
    void handleIsHitTwiceAsWideAsDrawn();
    void firstOfTwoHandlesWins();
    void dragMovesAStop_data();
    void dragMovesAStop();
    void labelTellsTheValueUnderTheDraggedStop_data();
    void labelTellsTheValueUnderTheDraggedStop();
    void aReleaseEndsTheDrag();
    void doubleClickOnAHandleRemovesInnerStopsOnly_data();
    void doubleClickOnAHandleRemovesInnerStopsOnly();
    void doubleClickBetweenHandlesAddsAStop_data();
    void doubleClickBetweenHandlesAddsAStop();
    void rightClickRecoloursAStop_data();
    void rightClickRecoloursAStop();
    void hoverExplainsTheHandle();
    void paintsTheGradientAndItsHandles();
    void paintsSilentlyAtAnySize_data();
    void paintsSilentlyAtAnySize();
    void takesTheSizeOfAResizeEvent();
};

void TestGradientBuilderWidget::refusesAGradientWithoutBothEnds_data()
{
    QTest::addColumn<QVector<float>>("positions");

    QTest::newRow("empty, though Qt tells of two stops") << QVector<float>();
    QTest::newRow("no start") << QVector<float>{0.001F, 1.0F};
    QTest::newRow("no end") << QVector<float>{0.0F, 0.999F};
}

void TestGradientBuilderWidget::refusesAGradientWithoutBothEnds()
{
    QFETCH(const QVector<float>, positions);
    QVERIFY_EXCEPTION_THROWN(GradientBuilderWidget(gradientWith(positions, 100), nullptr),
        GradientBuilderWidget::GradientMissingStartEndException);
}

void TestGradientBuilderWidget::anEditorWithoutGradientIsRefused()
{
    QVERIFY_EXCEPTION_THROWN(GradientBuilderWidget(7UL, nullptr),
        GradientBuilderWidget::GradientMissingStartEndException);
    QVERIFY_EXCEPTION_THROWN(GradientBuilderWidget(std::shared_ptr<Gradient>(), nullptr),
        GradientBuilderWidget::GradientMissingStartEndException);
}

void TestGradientBuilderWidget::snapsToWholeValuesOfTheUpperBound_data()
{
    QTest::addColumn<double>("max");
    QTest::addColumn<float>("position");
    QTest::addColumn<float>("expected");

    QTest::newRow("to the nearest") << 100.0 << 0.374F << 0.37F;
    QTest::newRow("half a step goes up") << 4.0 << 0.125F << 0.25F;
    QTest::newRow("half a step goes away from zero") << 4.0 << -0.125F << -0.25F;
    QTest::newRow("no grid without bound") << 0.0 << 0.374F << 0.374F;
    QTest::newRow("no noticeable grid below zero") << -5.0 << 0.374F << 0.374F;
}

void TestGradientBuilderWidget::snapsToWholeValuesOfTheUpperBound()
{
    QFETCH(const double, max);
    QFETCH(const float, position);
    QFETCH(const float, expected);
    const GradientBuilderWidget editor(gradientWith({0.0F, 1.0F}, max), nullptr);
    QCOMPARE(editor.adjustPositionToGranularity(position), expected);
}

void TestGradientBuilderWidget::addStopRefusesOnlyPositionsAboveOne()
{
    Editor editor({0.0F, 1.0F});
    editor.widget.addStop(0.374F, Qt::red);
    editor.widget.addStop(-0.5F, Qt::red);
    editor.widget.addStop(1.0F, Qt::red);
    QVERIFY_EXCEPTION_THROWN(
        editor.widget.addStop(1.001F, Qt::red), GradientBuilderWidget::GradientOutOfRangeException);
    QCOMPARE(editor.positions(), (Positions{0.0, double(0.37F), 1.0}));
    QCOMPARE(editor.gradient->stops().constLast().second, QColor(Qt::red));
}

void TestGradientBuilderWidget::handleIsHitTwiceAsWideAsDrawn_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("isHit");

    QTest::newRow("left edge") << middle - QPoint(20, 0) << true;
    QTest::newRow("beside the left edge") << middle - QPoint(21, 0) << false;
    QTest::newRow("right edge") << middle + QPoint(20, 0) << true;
    QTest::newRow("beside the right edge") << middle + QPoint(21, 0) << false;
    QTest::newRow("upper edge") << middle - QPoint(0, 20) << true;
    QTest::newRow("above the upper edge") << middle - QPoint(0, 21) << false;
    QTest::newRow("lower edge") << middle + QPoint(0, 20) << true;
    QTest::newRow("below the lower edge") << middle + QPoint(0, 21) << false;
}

void TestGradientBuilderWidget::handleIsHitTwiceAsWideAsDrawn()
{
    QFETCH(const QPoint, point);
    QFETCH(const bool, isHit);
    const Editor editor({0.0F, 0.5F, 1.0F});
    if (isHit)
        QCOMPARE(editor.widget.findStopHandleForEvent(point.x(), point.y()), 0.5);
    else
        QVERIFY_EXCEPTION_THROWN(editor.widget.findStopHandleForEvent(point.x(), point.y()),
            GradientBuilderWidget::StopHandleNotFoundException);
}

void TestGradientBuilderWidget::firstOfTwoHandlesWins()
{
    const Editor editor({0.0F, 0.5F, 0.5625F, 1.0F});
    QCOMPARE(editor.widget.findStopHandleForEvent(middle.x() + 12, middle.y()), 0.5);
    QCOMPARE(editor.widget.findStopHandleForEvent(middle.x() + 21, middle.y()), 0.5625);
}

void TestGradientBuilderWidget::dragMovesAStop_data()
{
    QTest::addColumn<double>("max");
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<float>("expected");

    // Positions are parts of the whole width of 204.
    QTest::newRow("to the grid") << 100.0 << middle << QPoint(75, 42) << 0.37F;
    QTest::newRow("anywhere without grid") << 0.0 << middle << QPoint(51, 42) << 0.25F;
    QTest::newRow("less than a step") << 100.0 << middle << QPoint(103, 42) << 0.5F;
    QTest::newRow("more than a step off the middle") << 100.0 << middle << QPoint(105, 42) << 0.51F;
    QTest::newRow("not onto the start") << 100.0 << middle << QPoint(0, 42) << 0.5F;
    QTest::newRow("not past the start") << 100.0 << middle << QPoint(-60, 42) << 0.5F;
    QTest::newRow("not onto the end") << 100.0 << middle << QPoint(204, 42) << 0.5F;
    QTest::newRow("not past the end") << 100.0 << middle << QPoint(400, 42) << 0.5F;
    QTest::newRow("not onto another stop") << 4.0 << middle << QPoint(153, 42) << 0.5F;
    QTest::newRow("not from beside the handle")
        << 100.0 << QPoint(60, 42) << QPoint(75, 42) << 0.5F;
    QTest::newRow("not the start") << 100.0 << QPoint(4, 42) << QPoint(75, 42) << 0.5F;
}

void TestGradientBuilderWidget::dragMovesAStop()
{
    QFETCH(const double, max);
    QFETCH(const QPoint, from);
    QFETCH(const QPoint, to);
    QFETCH(const float, expected);
    Editor editor({0.0F, 0.5F, 0.75F, 1.0F}, max);

    editor.press(from);
    editor.move(to);
    QCOMPARE(editor.positions(), (Positions{0.0, double(expected), 0.75, 1.0}));
}

void TestGradientBuilderWidget::labelTellsTheValueUnderTheDraggedStop_data()
{
    QTest::addColumn<double>("max");
    QTest::addColumn<QPoint>("from");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QStringList>("texts");

    QTest::newRow("inner stop") << 100.0 << middle << QPoint(75, 42) << QStringList{"37"};
    QTest::newRow("a position just below its value")
        << 100.0 << middle << QPoint(59, 42) << QStringList{"29"};
    QTest::newRow("pressed, not moved") << 8.0 << middle << middle << QStringList{"4"};
    QTest::newRow("no grid") << 0.0 << middle << QPoint(75, 42) << QStringList();
    QTest::newRow("end stop") << 100.0 << QPoint(202, 42) << QPoint(75, 42) << QStringList();
    QTest::newRow("beside a handle") << 100.0 << QPoint(60, 42) << QPoint(75, 42) << QStringList();
}

void TestGradientBuilderWidget::labelTellsTheValueUnderTheDraggedStop()
{
    QFETCH(const double, max);
    QFETCH(const QPoint, from);
    QFETCH(const QPoint, to);
    QFETCH(const QStringList, texts);
    Editor editor({0.0F, 0.5F, 1.0F}, max);
    editor.press(from);
    editor.move(to);
    QCOMPARE(editor.drawnTexts(), texts);

    editor.release(to);
    QCOMPARE(editor.drawnTexts(), QStringList());
}

void TestGradientBuilderWidget::aReleaseEndsTheDrag()
{
    Editor editor({0.0F, 0.5F, 1.0F});
    QSignalSpy updated(&editor.widget, &GradientBuilderWidget::gradientUpdated);
    editor.press(middle);
    editor.move({75, 42});
    QCOMPARE(updated.count(), 0);

    editor.release({75, 42});
    editor.move({150, 42});
    QCOMPARE(updated.count(), 1);
    QCOMPARE(editor.positions(), (Positions{0.0, double(0.37F), 1.0}));
}

void TestGradientBuilderWidget::doubleClickOnAHandleRemovesInnerStopsOnly_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<Positions>("left");

    QTest::newRow("start") << QPoint(4, 42) << Positions{0.0, double(0.3F), 1.0};
    QTest::newRow("inner stop") << QPoint(62, 42) << Positions{0.0, 1.0};
    QTest::newRow("end") << QPoint(200, 42) << Positions{0.0, double(0.3F), 1.0};
}

void TestGradientBuilderWidget::doubleClickOnAHandleRemovesInnerStopsOnly()
{
    QFETCH(const QPoint, point);
    QFETCH(const Positions, left);
    Editor editor({0.0F, 0.3F, 1.0F});
    QSignalSpy updated(&editor.widget, &GradientBuilderWidget::gradientUpdated);
    editor.doubleClick(point);
    QCOMPARE(editor.positions(), left);
    QCOMPARE(updated.count(), 3 - left.size());
}

void TestGradientBuilderWidget::doubleClickBetweenHandlesAddsAStop_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QColor>("answer");
    QTest::addColumn<Positions>("expected");

    QTest::newRow("beside") << QPoint(75, 42) << QColor(1, 2, 3)
                            << Positions{0.0, double(0.37F), 1.0};
    QTest::newRow("above an end") << QPoint(10, 5) << QColor(1, 2, 3)
                                  << Positions{0.0, double(0.05F), 1.0};
    QTest::newRow("cancelled") << QPoint(75, 42) << QColor() << Positions{0.0, 1.0};
}

void TestGradientBuilderWidget::doubleClickBetweenHandlesAddsAStop()
{
    QFETCH(const QPoint, point);
    QFETCH(const QColor, answer);
    QFETCH(const Positions, expected);
    Editor editor({0.0F, 1.0F});
    QVERIFY(editor.isExposed);
    QSignalSpy updated(&editor.widget, &GradientBuilderWidget::gradientUpdated);
    const ColorAnswer user(answer);

    editor.doubleClick(point);
    QVERIFY(!user.hadParent);
    QCOMPARE(updated.count(), 1);
    QCOMPARE(editor.positions(), expected);
    if (answer.isValid())
        QCOMPARE(editor.gradient->stops().at(1).second, answer);
}

void TestGradientBuilderWidget::rightClickRecoloursAStop_data()
{
    QTest::addColumn<float>("position");
    QTest::addColumn<QColor>("answer");
    QTest::addColumn<Positions>("expected");

    QTest::newRow("on the grid") << 0.5F << QColor(1, 2, 3) << Positions{0.0, 0.5, 1.0};
    QTest::newRow("off the grid, a stop beside it")
        << 0.504F << QColor(1, 2, 3) << Positions{0.0, 0.5, double(0.504F), 1.0};
    QTest::newRow("cancelled") << 0.504F << QColor() << Positions{0.0, double(0.504F), 1.0};
}

void TestGradientBuilderWidget::rightClickRecoloursAStop()
{
    QFETCH(const float, position);
    QFETCH(const QColor, answer);
    QFETCH(const Positions, expected);
    Editor editor({0.0F, position, 1.0F});
    QVERIFY(editor.isExposed);
    const ColorAnswer user(answer);

    editor.press(middle, Qt::RightButton);
    QCOMPARE(user.offered, QColor(Qt::blue));
    QVERIFY(!user.hadParent);
    QCOMPARE(editor.positions(), expected);
    if (answer.isValid())
        QCOMPARE(editor.gradient->stops().at(1).second, answer);
}

void TestGradientBuilderWidget::hoverExplainsTheHandle()
{
    Editor editor({0.0F, 0.5F, 1.0F});
    editor.move(middle);
    QCOMPARE(QToolTip::text(),
        QString("Left click & drag: move point\nDouble click: Remove\nRgiht click: Edit"));

    editor.move({60, 42});
    QTRY_VERIFY(!QToolTip::isVisible());
}

void TestGradientBuilderWidget::paintsTheGradientAndItsHandles()
{
    Editor editor({0.0F, 0.5F, 1.0F});
    editor.gradient->addStop(1.0F, Qt::green);
    const QImage image = editor.widget.grab().toImage();
    QCOMPARE(image.pixelColor(50, 5), QColor(Qt::blue));
    QVERIFY(image.pixelColor(200, 5).green() > 240);
    QCOMPARE(image.pixelColor(102, 22), QColor(Qt::white));
    QCOMPARE(image.pixelColor(92, 40), QColor(Qt::red));
    QCOMPARE(image.pixelColor(112, 40), QColor(Qt::red));
}

void TestGradientBuilderWidget::paintsSilentlyAtAnySize_data()
{
    QTest::addColumn<QSize>("size");

    QTest::newRow("nothing") << QSize(0, 0);
    QTest::newRow("one pixel") << QSize(1, 1);
    QTest::newRow("only frame") << QSize(4, 4);
    QTest::newRow("flat") << QSize(300, 5);
    QTest::newRow("narrow") << QSize(5, 300);
}

void TestGradientBuilderWidget::paintsSilentlyAtAnySize()
{
    QFETCH(const QSize, size);
    Editor editor({0.0F, 0.5F, 1.0F});
    editor.press(middle);
    editor.widget.resize(size);
    editor.widget.grab();
    QCOMPARE(editor.drawnTexts(), size.isEmpty() ? QStringList() : QStringList{"50"});
}

void TestGradientBuilderWidget::takesTheSizeOfAResizeEvent()
{
    Editor editor({0.0F, 1.0F});
    QResizeEvent event({310, 90}, editor.widget.size());
    QApplication::sendEvent(&editor.widget, &event);
    QCOMPARE(editor.widget.size(), QSize(310, 90));
}

OLVIK_GUI_TEST_MAIN(TestGradientBuilderWidget)
#include "tst_gradientbuilderwidget.moc"
