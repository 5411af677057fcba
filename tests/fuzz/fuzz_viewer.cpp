// Any value under each key that the viewer reads when it is made. Needs a screen.
#include "FuzzSupport.h"
#include "support/ViewerWindow.h"

#include "Olvik3DViewerControl.h"
#include "OlvikSettings.h"
#include "ViewerSettingsKeys.h"

#include <fuzzer/FuzzedDataProvider.h>

namespace Keys = ViewerSettingsKeys;

namespace {

QVariant anyValue(FuzzedDataProvider &input)
{
    const auto number = [&input] { return input.ConsumeIntegral<int>(); };
    switch (input.ConsumeIntegralInRange(0, 8)) {
    case 0:
        return QPoint(number(), number());
    case 1:
        return QSize(number(), number());
    case 2:
        return number();
    case 3:
        return input.ConsumeIntegralInRange(-1, 4);
    case 4:
        return QString::fromStdString(input.ConsumeRandomLengthString(64));
    case 5:
        return input.ConsumeFloatingPoint<double>();
    case 6:
        return QVariantList{number(), "text"};
    case 7:
        return input.ConsumeBool();
    default:
        return {};
    }
}

void store(FuzzedDataProvider &input)
{
    const auto settings = OlvikSettings::Instance();
    for (const QString &key : {Keys::position(), Keys::size(), Keys::flyMode(), Keys::colorMode(),
             Keys::checkedColorMode(), Keys::showZero(), Keys::gradientName()}) {
        if (input.ConsumeBool())
            settings->setValue(key, anyValue(input));
        else
            settings->remove(key);
    }
}

void checkWindow(const QWidget &window)
{
    const QRect desktop = window.screen()->virtualGeometry();
    require(desktop.intersects(window.geometry()), "the window is on the screen");
    require(desktop.width() >= window.width() && desktop.height() >= window.height(),
        "the window fits the screen");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing();
    static int argc = 0;
    static QApplication application(argc, nullptr);
    FuzzedDataProvider input(data, size);
    store(input);
    {
        Olvik3DViewerControl viewer("fuzz", nullptr, nullptr);
        viewer.show();
        QCoreApplication::processEvents();
        checkWindow(*viewerWindow());
        require(menuItem("Auto")->isChecked() != menuItem("Gradient")->isChecked(),
            "one colour mode is checked");
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    const int mode = OlvikSettings::Instance()->value(Keys::colorMode()).toInt();
    require(mode == 0 || mode == 1, "the colour mode is one of the two");
    return 0;
}
