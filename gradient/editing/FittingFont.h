#pragma once

#include <QFont>

class QSize;
class QString;

/// The font itself, or as much smaller as the text needs to fit into \a room in one line. Not below
/// 1 point.
/// \param text plain, without mnemonics
QFont fittingFont(QFont font, const QString &text, const QSize &room);
