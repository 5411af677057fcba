#pragma once

#include "Olvik3DViewerExport.h"

#include <QDialog>

class QDialogButtonBox;
class QHBoxLayout;
class QLineEdit;

/// Asks for the factors of the three axes. Modal; reports them when the operator confirms.
class OLVIK3DVIEWER_EXPORT CloudScaleDailog : public QDialog
{
    Q_OBJECT

public:
    /// \param x,y,z the factors shown at first
    CloudScaleDailog(float x, float y, float z, QWidget *parent);

Q_SIGNALS:
    /// What was typed, with a point or a comma as decimal separator; 0 for an empty field.
    void scaleAccepted(float x, float y, float z);

private Q_SLOTS:
    void onAccepted();

private:
    QLineEdit *addColumn(QHBoxLayout &row, const QString &label, float factor);

    QDialogButtonBox *buttonBox = nullptr;
    QLineEdit *xEdit = nullptr;
    QLineEdit *yEdit = nullptr;
    QLineEdit *zEdit = nullptr;
};
