#include "Language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace {

void install(const QLocale &locale, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(locale, name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(translator);
}

} // namespace

void installLanguage(const QLocale &locale)
{
#if QT_VERSION_MAJOR >= 6
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
#else
    const QString folder = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
#endif
    install(locale, QStringLiteral("qtbase"), folder);
    install(
        locale, QStringLiteral("olvik3dviewer"), QStringLiteral(":/olvik3dviewer/translations"));
}
