#pragma once

#include "Olvik3DViewerExport.h"

#include <QWidget>

class Olvik3DViewerControl;

/// An embedded viewer as a widget of a form, as Qt Designer and code made by uic create it.
///
/// \code
/// ui.setupUi(this);
/// ui.viewer->control()->setBuffer(heights, valuesPerProfile, profiles);
/// \endcode
///
/// GUI thread only.
class OLVIK3DVIEWER_EXPORT Olvik3DViewerFormWidget : public QWidget
{
    Q_OBJECT

public:
    /// A placeholder needs neither OpenGL nor a worker thread; it is what Qt Designer shows.
    enum Kind { Viewer, Placeholder };

    explicit Olvik3DViewerFormWidget(QWidget *parent = nullptr, Kind kind = Viewer);

    /// Owned by this widget, which it is to stay within; null for a placeholder.
    Olvik3DViewerControl *control() const { return viewer; }

    QSize sizeHint() const override { return {480, 360}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Olvik3DViewerControl *viewer = nullptr;
};
