// A host whose viewer outlives main() or never sees its end. Chooses another colouring, then ends in
// the way that its argument names.

#include "ViewerWindow.h"

#include "Olvik3DViewerControl.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QTimer>

#include <cstdlib>
#include <memory>

namespace {

std::unique_ptr<Olvik3DViewerControl> global;

void use(Olvik3DViewerControl &viewer)
{
    viewer.show();
    std::vector<float> heights = ramp(200, 200);
    viewer.setBuffer(heights.data(), 200, 200);
    QTimer::singleShot(300, &viewer, [] {
        menuItem("Gradient")->trigger();
        viewerWindow()->findChild<QComboBox *>()->setCurrentIndex(1);
    });
}

/// \param way "quit", or how to leave main() in the middle of it
int run(Olvik3DViewerControl &viewer, const QString &way)
{
    use(viewer);
    QObject context;
    QTimer::singleShot(600, &context, [way] {
        if (way == "exit")
            std::exit(0);
        QCoreApplication::quit();
    });
    if (way == "exit in a slot of the viewer")
        QObject::connect(viewerWindow()->findChild<QComboBox *>(),
            QOverload<int>::of(&QComboBox::currentIndexChanged), [] { std::exit(0); });
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QString kept = argv[1];
    // Without one the viewer makes its own.
    std::unique_ptr<QApplication> application;
    if (!kept.endsWith("without an application"))
        application = std::make_unique<QApplication>(argc, argv);
    if (kept.startsWith("function static")) {
        static Olvik3DViewerControl viewer("static", nullptr, nullptr);
        return run(viewer, argv[2]);
    }
    global = std::make_unique<Olvik3DViewerControl>("global", nullptr, nullptr);
    return run(*global, argv[2]);
}
