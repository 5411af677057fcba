#pragma once

#include "Olvik3DViewerExport.h"

#include <QColor>
#include <QWidget>

class GradientColor;
class QLabel;
class QLineEdit;

/// One bound of a gradient in a row: a label, the bound as text, and a box with the bound's colour,
/// which a double-click changes.
///
/// Numbers are typed with a decimal point in every locale. GUI thread only.
class OLVIK3DVIEWER_EXPORT ColorSelection : public QWidget
{
    Q_OBJECT

public:
    /// \param bound shown with six significant digits, kept whole until the user types
    ColorSelection(QString label, double bound, QColor color, QWidget *parent);

    QColor getCurrentColor() const { return currentColor; }
    /// 0 while the text is not a number.
    double getBound() const { return bound; }
    /// The text stays as it is.
    void setBound(double newBound) { bound = newBound; }

public Q_SLOTS:
    /// Asks for a colour; runs an event loop until the user answers. May be deleted meanwhile.
    void onColorCliked();

private:
    QLabel *createLabel(const QString &text);
    void createField();
    void createColorBox();
    void showColor();

    QColor currentColor;
    GradientColor *colorBox;
    QLineEdit *boundField;
    double bound;
};
