#pragma once

#include "Olvik3DViewerExport.h"

#include <QMainWindow>

/// The viewer's own top-level window.
class OLVIK3DVIEWER_EXPORT CloudPMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit CloudPMainWindow(QWidget *parent);

Q_SIGNALS:
    void windowClosed();

protected:
    void closeEvent(QCloseEvent *event) override;
};
