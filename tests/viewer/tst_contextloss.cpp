// OpenGL contexts go: a graphics driver that was reset leaves one that cannot be made current, and
// a view that is moved to another window gets a new one.
#include "GuiTest.h"
#include "SceneProbe.h"
#include "ViewerWindow.h"

#include "Olvik3DViewerControl.h"

#include <algorithm>
#include <atomic>
#include <optional>

#include <dlfcn.h>
#include <EGL/egl.h>
#include <GL/glx.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
using LeakTolerance = __lsan::ScopedDisabler;
#else
struct LeakTolerance
{ };
#endif

namespace {

std::atomic<bool> isContextLost{false};

template <typename Function> Function driverFunction(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// Qt's window system plugin finds these in place of the driver's.
extern "C" {

Q_DECL_EXPORT Bool glXMakeCurrent(Display *display, GLXDrawable drawable, GLXContext context)
{
    static const auto makeCurrent = driverFunction<decltype(&glXMakeCurrent)>("glXMakeCurrent");
    const bool isRefused = isContextLost && context;
    return makeCurrent(display, isRefused ? None : drawable, isRefused ? nullptr : context)
        && !isRefused;
}

Q_DECL_EXPORT Bool glXMakeContextCurrent(
    Display *display, GLXDrawable draw, GLXDrawable read, GLXContext context)
{
    static const auto makeCurrent =
        driverFunction<decltype(&glXMakeContextCurrent)>("glXMakeContextCurrent");
    const bool isRefused = isContextLost && context;
    return makeCurrent(display, isRefused ? None : draw, isRefused ? None : read,
               isRefused ? nullptr : context)
        && !isRefused;
}

Q_DECL_EXPORT EGLBoolean eglMakeCurrent(
    EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context)
{
    static const auto makeCurrent = reinterpret_cast<decltype(&eglMakeCurrent)>(
        dlsym(dlopen("libEGL.so.1", RTLD_LAZY), "eglMakeCurrent"));
    const bool isRefused = isContextLost && context;
    return isRefused ? makeCurrent(display, nullptr, nullptr, nullptr) && false
                     : makeCurrent(display, draw, read, context);
}
}

namespace {

/// A viewer in a window of its own or in a host's.
class Viewer
{
public:
    explicit Viewer(bool isEmbedded)
        : control("lost", isEmbedded ? &host : nullptr, nullptr)
        , window(isEmbedded ? &host : viewerWindow())
    {
        host.resize(300, 200);
    }

    void show()
    {
        window->show();
        control.show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
    }

    Olvik3DViewerWidget &view() const { return *viewIn(window); }

    void feed() { control.setBuffer(heights.data(), 100, 80); }

    bool draws()
    {
        return QTest::qWaitFor([this] {
            feed();
            QTest::qWait(50);
            return SceneProbe(view()).litPixels() > 1000;
        });
    }

    /// What host and operator do without knowing.
    void use()
    {
        QWidget *target = window->childAt(window->rect().center());
        for (int i = 0; i < 3; ++i) {
            feed();
            QTest::mousePress(target, Qt::LeftButton, {}, QPoint(60, 60));
            QTest::mouseMove(target, QPoint(90, 80 + i));
            QTest::mouseRelease(target, Qt::LeftButton, {}, QPoint(90, 80));
            QTest::mouseClick(target, Qt::LeftButton, {}, QPoint(100, 90));
            window->resize(window->width() + 10, window->height() + 5);
            view().toggleShowAxes();
            view().resetCamera();
            view().grabFramebuffer();
            QTest::qWait(250);
        }
    }

private:
    QWidget host;
    Olvik3DViewerControl control;
    QWidget *window;
    std::vector<float> heights = ramp(100, 80);
};

QtMessageHandler testHandler = nullptr;

/// Qt says itself what it misses; nothing may be added to that.
void withoutQtOpenGL(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const auto known = {"QOpenGL", "composeAndFlush: ", "Unrecognized OpenGL version",
        "QRhiGles2: ", "Failed to create QRhi", "QWaylandGLContext::makeCurrent: "};
    if (std::none_of(known.begin(), known.end(),
            [&message](const char *start) { return message.startsWith(QLatin1String(start)); }))
        testHandler(type, context, message);
}

} // namespace

class TestContextLoss : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { testHandler = qInstallMessageHandler(withoutQtOpenGL); }

    void aLostContextComesBack_data()
    {
        QTest::addColumn<bool>("isEmbedded");
        QTest::newRow("window") << false;
        QTest::newRow("embedded") << true;
    }

    void aLostContextComesBack()
    {
        QFETCH(bool, isEmbedded);
        Viewer viewer(isEmbedded);
        viewer.show();
        QVERIFY(viewer.draws());
        isContextLost = true;
        viewer.use();
        isContextLost = false;
        QVERIFY(viewer.draws());
        isContextLost = true;
    }

    void aViewerWithoutContextLivesOn_data() { aLostContextComesBack_data(); }

    void aViewerWithoutContextLivesOn()
    {
        QFETCH(bool, isEmbedded);
        Viewer viewer(isEmbedded);
        isContextLost = true;
        {
            // Qt drops the surface of a context that it cannot make current.
            [[maybe_unused]] const LeakTolerance ofQt;
            viewer.show();
            viewer.use();
        }
        isContextLost = false;
        Viewer next(isEmbedded);
        next.show();
        QVERIFY(next.draws());
    }

    void aViewMovesToAnotherWindow()
    {
        // Of each window that closes, Qt's Wayland plugin leaves the surface behind.
        std::optional<LeakTolerance> ofQt;
        if (isOnWayland())
            ofQt.emplace();
        int releases = 0;
        QMainWindow host;
        auto *dock = new QDockWidget(&host);
        auto *place = new QWidget;
        place->setMinimumSize(300, 200);
        dock->setWidget(place);
        host.addDockWidget(Qt::LeftDockWidgetArea, dock);
        Olvik3DViewerControl control("docked", place, nullptr);
        host.show();
        control.show();
        std::vector<float> heights = ramp(1500, 1200);
        for (int round = 0; round < 3; ++round) {
            dock->setFloating(round % 2 == 1);
            QVERIFY(QTest::qWaitForWindowExposed(place->window()));
            if (round != 1)
                control.setBuffer(heights.data(), 1500, 1200);
            QTRY_VERIFY(SceneProbe(*viewIn(place)).litPixels() > 1000);
            QTest::qWait(300);
            QVERIFY(SceneProbe(*viewIn(place)).litPixels() > 1000);
            // Only a current context frees what the graphics card holds.
            const QOpenGLContext *context = viewIn(place)->context();
            connect(context, &QOpenGLContext::aboutToBeDestroyed, this,
                [&releases, context] { releases += QOpenGLContext::currentContext() == context; });
        }
        QCOMPARE(releases, 2);
    }

    void cleanup() { isContextLost = false; }
};

OLVIK_GUI_TEST_MAIN(TestContextLoss)
#include "tst_contextloss.moc"
