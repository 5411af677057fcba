#include "CloudScaleDailog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

namespace {

float factorIn(const QLineEdit &edit)
{
    return edit.text().replace(',', '.').toFloat();
}

} // namespace

CloudScaleDailog::CloudScaleDailog(float x, float y, float z, QWidget *parent)
    : QDialog(parent)
{
    setModal(true);
    setWindowTitle(QStringLiteral("Set axes scale"));
    buttonBox = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    layout->addLayout(row);
    xEdit = addColumn(*row, QStringLiteral("X axis Scale:"), x);
    yEdit = addColumn(*row, QStringLiteral("Y axis Scale:"), y);
    zEdit = addColumn(*row, QStringLiteral("Z axis Scale:"), z);
    layout->addWidget(buttonBox);
    connect(buttonBox, &QDialogButtonBox::accepted, this, &CloudScaleDailog::onAccepted);
    // What is typed first replaces the factor that is shown.
    xEdit->selectAll();
}

QLineEdit *CloudScaleDailog::addColumn(QHBoxLayout &row, const QString &label, float factor)
{
    auto *column = new QWidget(this);
    auto *layout = new QVBoxLayout(column);
    auto *edit = new QLineEdit(QString::number(static_cast<double>(factor), 'g', 6));
    edit->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral(R"(^\d+((\.|\,)\d+)?$)")), edit));
    auto *caption = new QLabel(label);
    caption->setBuddy(edit);
    layout->addWidget(caption);
    layout->addWidget(edit);
    row.addWidget(column);
    return edit;
}

void CloudScaleDailog::onAccepted()
{
    Q_EMIT scaleAccepted(factorIn(*xEdit), factorIn(*yEdit), factorIn(*zEdit));
    accept();
}
