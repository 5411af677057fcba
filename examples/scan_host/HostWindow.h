#pragma once

#include <QMainWindow>

class QLabel;

/// A window of the host's own, with room for a viewer and a line that counts the buffers.
class HostWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit HostWindow(const QString &title);

    /// Parent for the viewer.
    QWidget *viewerPlace() const { return centralWidget(); }

public Q_SLOTS:
    void showBufferCount(int count);

private:
    QLabel *status;
};
