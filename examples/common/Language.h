#pragma once

#include <QLocale>

/// Has the application speak the viewer's and Qt's own texts in a language, as far as there are
/// translations; English otherwise. Before the first window, after the application object, which
/// owns what this installs.
void installLanguage(const QLocale &locale);
