#include "MeasurementTable.h"

#include <QHeaderView>

namespace {

constexpr int rowsShownFirst = 5;

} // namespace

MeasurementTable::MeasurementTable(QWidget *parent)
    : QTableWidget(0, 3, parent)
{
    setHorizontalHeaderLabels({tr("Sensor"), tr("Measurement"), tr("Value")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
}

QSize MeasurementTable::sizeHint() const
{
    const int row = verticalHeader()->defaultSectionSize();
    return {QTableWidget::sizeHint().width(), (rowsShownFirst + 1) * row};
}

void MeasurementTable::add(const QString &sensor, const QString &kind, const QString &value)
{
    const int row = rowCount();
    insertRow(row);
    int column = 0;
    for (const QString &text : {sensor, kind, value})
        setItem(row, column++, new QTableWidgetItem(text));
    scrollToBottom();
}

void MeasurementTable::clearRows()
{
    setRowCount(0);
}
