// Memory runs out in the middle of what the event loop calls, which takes no exception.
#include "GuiTest.h"

#include "GradientFactory.h"
#include "Olvik3DViewerWidget.h"
#include "SceneProbe.h"

#include <vtkCallbackCommand.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <limits>
#include <new>

namespace {

constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();
std::atomic<std::size_t> largestBlock{unlimited};

} // namespace

extern "C" {

// The C library's own.
void *__libc_malloc(std::size_t size); // NOLINT(bugprone-reserved-identifier)

Q_DECL_EXPORT void *malloc(std::size_t size)
{
    return size <= largestBlock ? __libc_malloc(size) : nullptr;
}
}

namespace {

/// A cloud of 1.1 MB.
constexpr int side = 300;

void load(Olvik3DViewerWidget &view, const vtkSmartPointer<vtkPolyData> &cloud)
{
    view.loadPolyData(cloud, {0, side, 0, side, 0, side}, {0, side});
}

void refuseToDraw(vtkObject *, unsigned long, void *, void *)
{
    if (largestBlock < unlimited)
        throw std::bad_alloc();
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(Olvik3DViewerWidget &)>)

class TestOutOfMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theViewLivesOn_data()
    {
        using Step = std::function<void(Olvik3DViewerWidget &)>;
        QTest::addColumn<Step>("step");
        QTest::newRow("scale") << Step([](auto &view) { view.setAxesScale(2, 2, 2); });
        QTest::newRow("colours") << Step([](auto &view) { view.setColorMode(UserGradient); });
        QTest::newRow("drawing") << Step([](auto &view) {
            vtkNew<vtkCallbackCommand> upload;
            upload->SetCallback(refuseToDraw);
            rendererOf(view)->AddObserver(vtkCommand::StartEvent, upload);
        });
    }

    void theViewLivesOn()
    {
        QFETCH(std::function<void(Olvik3DViewerWidget &)>, step);
        Olvik3DViewerWidget view;
        view.resize(300, 300);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        load(view, rampCloud(side, side));
        QTRY_VERIFY(view.getAxisVisibility());
        view.showAxes(false);
        const int lit = SceneProbe(view).litPixels();
        QVERIFY(lit > 1000);

        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression("^3D viewer: a picture was dropped: "));
        const vtkSmartPointer<vtkPolyData> next = rampCloud(side, side);
        largestBlock = 200'000;
        QVERIFY_EXCEPTION_THROWN(load(view, next), std::bad_alloc);
        step(view);
        QTest::qWait(300);
        view.onRenderNoCamera();
        largestBlock = unlimited;

        view.setColorMode(Auto);
        view.setAxesScale(1, 1, 1);
        QTest::qWait(50);
        load(view, next);
        QTRY_COMPARE(SceneProbe(view).litPixels(), lit);
    }
};

OLVIK_GUI_TEST_MAIN(TestOutOfMemory)
#include "tst_outofmemory.moc"
