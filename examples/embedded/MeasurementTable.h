#pragma once

#include <QTableWidget>

/// What the operator measured, the newest at the end.
class MeasurementTable : public QTableWidget
{
    Q_OBJECT

public:
    explicit MeasurementTable(QWidget *parent = nullptr);

    QSize sizeHint() const override;

public Q_SLOTS:
    void add(const QString &sensor, const QString &kind, const QString &value);
    void clearRows();
};
