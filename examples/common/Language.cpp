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
    install(
        locale, QStringLiteral("qtbase"), QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    install(
        locale, QStringLiteral("olvik3dviewer"), QStringLiteral(":/olvik3dviewer/translations"));
}
