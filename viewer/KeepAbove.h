#pragma once

class QWidget;

/// Keeps a window above another one that does not own it, and has window managers minimise both as
/// one. Before the first show of \a window; \a base lives as long.
void keepAbove(QWidget &window, const QWidget &base);
