#include "FittingFont.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QSize>

namespace {

bool fits(const QFont &font, const QString &text, const QSize &room)
{
    const QFontMetrics metrics(font);
    return metrics.horizontalAdvance(text) <= room.width() && metrics.height() <= room.height();
}

} // namespace

QFont fittingFont(QFont font, const QString &text, const QSize &room)
{
    // QFontInfo knows the point size of fonts that were given in pixels, too.
    double points = QFontInfo(font).pointSizeF();
    while (points > 1.5 && !fits(font, text, room)) {
        points -= 0.5;
        font.setPointSizeF(points);
    }
    return font;
}
