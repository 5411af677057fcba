// Any bytes as the settings' file; what was read is written and read again.
#include "FuzzSupport.h"

#include "IniText.h"

namespace {

QSettings::SettingsMap settingsIn(QByteArray text)
{
    QSettings::SettingsMap settings;
    QBuffer file(&text);
    file.open(QIODevice::ReadOnly);
    require(IniText::read(file, settings), "a damaged file is read as far as it goes");
    return settings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const QString folder = startFuzzing();
    const QSettings::SettingsMap settings =
        settingsIn(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    for (const QVariant &value : settings) {
        value.toPoint();
        value.toSize();
        value.toInt();
        value.toString();
    }
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    require(IniText::write(file, settings), "memory takes everything");
    require(settingsIn(file.data()) == settings, "what was read is what is written");
    return 0;
}
