// Any bytes as the settings' file, which may change under a running host.
#include "FuzzSupport.h"

#include "OlvikSettings.h"
#include "ViewerSettingsKeys.h"

#include <QDir>
#include <QPoint>
#include <QSize>

namespace Keys = ViewerSettingsKeys;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing() + "/Olvik";
    static const bool isMade = QDir().mkpath(folder);
    require(isMade, "there is a folder");
    writeFile(folder + "/OlvikSettings.ini",
        QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));

    const auto settings = OlvikSettings::Instance();
    settings->remove("reads the file again");
    for (const QString &key : {Keys::position(), Keys::size(), Keys::flyMode(), Keys::colorMode(),
             Keys::checkedColorMode(), Keys::showZero(), Keys::gradientName()}) {
        const QVariant value = settings->value(key, 1);
        value.toPoint();
        value.toSize();
        value.toInt();
        value.toString();
    }
    settings->setValue(Keys::colorMode(), static_cast<int>(size));
    require(settings->value(Keys::colorMode()).toUInt() == size, "a value can be set again");
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    return 0;
}
