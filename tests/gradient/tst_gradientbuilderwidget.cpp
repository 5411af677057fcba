#include "GuiTest.h"

#include "Gradient.h"
#include "GradientBuilderWidget.h"

#include <memory>

namespace {

using Positions = QVector<float>;

const QColor chosen(1, 2, 3);

/// From black to blue.
std::shared_ptr<Gradient> gradientWith(const Positions &positions)
{
    auto gradient = std::make_shared<Gradient>();
    gradient->setMax(100);
    for (const float position : positions)
        gradient->addStop(position, QColor(0, 0, qRound(255 * position)));
    return gradient;
}

/// 204 wide with a frame of 2, its middle at (102, 42); one step of the grid is two pixels.
class Editor
{
public:
    explicit Editor(const Positions &positions)
        : gradient(gradientWith(positions))
        , widget(gradient, nullptr)
    {
        widget.resize(204, 84);
        widget.show();
        QVERIFY(QTest::qWaitForWindowExposed(&widget));
    }

    Positions positions() const
    {
        Positions found;
        const QGradientStops stops = gradient->stops();
        for (const QGradientStop &stop : stops)
            found.append(static_cast<float>(stop.first));
        return found;
    }

    void drag(int from, int to)
    {
        QTest::mousePress(widget.windowHandle(), Qt::LeftButton, {}, {from, 42});
        QTest::mouseMove(widget.windowHandle(), {to, 42});
        QTest::mouseRelease(widget.windowHandle(), Qt::LeftButton, {}, {to, 42});
    }

    void answerNextColorDialog()
    {
        // Xvfb runs no window manager: a box that closes at once leaves a warning about the focus.
        QTimer::singleShot(200, &widget, [this] {
            auto *dialog = qobject_cast<QColorDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            proposed = dialog->currentColor();
            dialog->setCurrentColor(chosen);
            dialog->accept();
        });
    }

    std::shared_ptr<Gradient> gradient;
    GradientBuilderWidget widget;
    QColor proposed;
};

} // namespace

class TestGradientBuilderWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesAGradientWithoutBothEnds()
    {
        using Missing = GradientBuilderWidget::GradientMissingStartEndException;
        QVERIFY_EXCEPTION_THROWN(
            GradientBuilderWidget(gradientWith({0.1F, 1.0F}), nullptr), Missing);
        QVERIFY_EXCEPTION_THROWN(
            GradientBuilderWidget(gradientWith({0.0F, 0.9F}), nullptr), Missing);
        QVERIFY_EXCEPTION_THROWN(GradientBuilderWidget(7UL, nullptr), Missing);
    }

    void dragMovesInnerStopsAlongTheGrid()
    {
        Editor editor({0.0F, 0.5F, 1.0F});
        editor.drag(102, 75);
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.37F, 1.0F}));

        editor.drag(75, -60);
#if QT_VERSION_MAJOR >= 6
        const QRegularExpression outside("^Mouse event at .* occurs outside target window");
        for (int event = 0; event < 2; ++event)
            QTest::ignoreMessage(QtWarningMsg, outside);
#endif
        editor.drag(75, 400);
        editor.drag(4, 150);
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.37F, 1.0F}));
    }

    void doubleClickAddsAndRemovesInnerStops()
    {
        Editor editor({0.0F, 1.0F});
        editor.answerNextColorDialog();
        QTest::mouseDClick(editor.widget.windowHandle(), Qt::LeftButton, {}, {75, 42});
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.37F, 1.0F}));
        QCOMPARE(editor.proposed, QColor(0, 0, 94));
        QCOMPARE(editor.gradient->stops().at(1).second, chosen);

        for (const int x : {4, 75, 200})
            QTest::mouseDClick(editor.widget.windowHandle(), Qt::LeftButton, {}, {x, 42});
        QCOMPARE(editor.positions(), (Positions{0.0F, 1.0F}));
    }

    void stopsInDoublePrecisionAreEdited()
    {
        Editor editor({0.0F, 1.0F});
        for (const double position : {0.3, 0.8})
            editor.gradient->getQtgrad()->setColorAt(position, Qt::red);
        editor.drag(62, 102);
        editor.answerNextColorDialog();
        QTest::mouseClick(editor.widget.windowHandle(), Qt::RightButton, {}, {162, 42});
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.5F, 0.8F, 1.0F}));
        QCOMPARE(editor.gradient->stops().at(2).second, chosen);
        QTest::mouseDClick(editor.widget.windowHandle(), Qt::LeftButton, {}, {162, 42});
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.5F, 1.0F}));
    }

    void rightClickEndsADrag()
    {
        Editor editor({0.0F, 0.5F, 1.0F});
        editor.answerNextColorDialog();
        QTest::mousePress(&editor.widget, Qt::LeftButton, {}, {102, 42});
        QTest::mousePress(&editor.widget, Qt::RightButton, {}, {102, 42});
        QTest::mouseMove(&editor.widget, {75, 42});
        QCOMPARE(editor.positions(), (Positions{0.0F, 0.5F, 1.0F}));
    }
};

OLVIK_GUI_TEST_MAIN(TestGradientBuilderWidget)
#include "tst_gradientbuilderwidget.moc"
