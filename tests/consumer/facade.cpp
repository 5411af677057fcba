#include <Olvik3DViewerControl.h>
#include <OlvikSettings.h>

#ifdef VTK_MAJOR_VERSION
#error "The facade's header must not bring VTK along"
#endif

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <vector>

namespace {

struct Receiver : IEvent3DViewerReceiver
{
    void viewerClosed(const char *windowName) override { std::printf("closed %s\n", windowName); }
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    Receiver receiver;
    Olvik3DViewerControl viewer("consumer", nullptr, &receiver);
    viewer.show();
    std::vector<float> heights(64 * 48, 5.0f);
    viewer.setBuffer(heights.data(), 64, 48);
    OlvikSettings::Instance()->setValue("Consumer/shown", true);
    QTimer::singleShot(0, &application, &QApplication::closeAllWindows);
    return QApplication::exec();
}
