#include "ColorSelection.h"

#include "FittingFont.h"
#include "GradientColor.h"
#include "GradientDialogs.h"

#include <QColorDialog>
#include <QDoubleValidator>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>

#include <limits>
#include <memory>

namespace {

constexpr int gap = 3;
constexpr QSize wholeLimit(180, 30);
constexpr QSize boxSize(48, 25);
constexpr int fieldWidth = 50;
constexpr int labelWidth = wholeLimit.width() - fieldWidth - boxSize.width() - 2 * gap;
constexpr int fieldFrame = 8;

/// Accepts what QString::toDouble() understands, whatever the user's locale.
QLocale plainNumbers()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::RejectGroupSeparator);
    return locale;
}

} // namespace

ColorSelection::ColorSelection(QString label, double initialBound, QColor color, QWidget *parent)
    : QWidget(parent)
    , currentColor(color)
    , colorBox(new GradientColor(this))
    , boundField(new QLineEdit(this))
    , bound(initialBound)
{
    setContentsMargins(0, 0, 0, 0);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    setMaximumSize(wholeLimit);
    createField();
    createColorBox();

    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(gap);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createLabel(label));
    layout->addWidget(boundField);
    layout->addWidget(colorBox);
    setFocusProxy(boundField);
}

void ColorSelection::onColorCliked()
{
    const QPointer<ColorSelection> self(this);
    auto dialog = std::make_unique<QColorDialog>(this);
    dialog->setWindowTitle(tr("Select Color for bound"));
    dialog->setOptions(QColorDialog::ShowAlphaChannel);
    dialog->setCurrentColor(currentColor);
    const QColor chosen = chosenColor(std::move(dialog), *this);
    if (!self || !chosen.isValid())
        return;

    currentColor = chosen;
    showColor();
}

QLabel *ColorSelection::createLabel(const QString &text)
{
    auto *label = new QLabel(text, this);
    label->setMargin(0);
    label->setBuddy(boundField);
    // The label gives way to a large font, as field and box have fixed places in the width. The
    // sample makes labels of equal length equally large.
    const QSize room(labelWidth, wholeLimit.height());
    const QString sample(text.size(), QLatin1Char('n'));
    label->setFont(fittingFont(fittingFont(label->font(), sample, room), text, room));
    label->setFixedSize(QFontMetrics(label->font()).size(Qt::TextSingleLine, text));
    return label;
}

void ColorSelection::createField()
{
    const QString text = QString::number(bound, 'g', 6);
    boundField->setText(text);
    boundField->setMaximumWidth(fieldWidth);
    boundField->setFont(fittingFont(boundField->font(), QStringLiteral("10000"),
        {fieldWidth - fieldFrame, wholeLimit.height() - fieldFrame}));

    auto *validator = new QDoubleValidator(0.0, std::numeric_limits<double>::max(), 2, boundField);
    validator->setLocale(plainNumbers());
    boundField->setValidator(validator);
    connect(boundField, &QLineEdit::textEdited, this,
        [this](const QString &edited) { bound = edited.toDouble(); });
}

void ColorSelection::createColorBox()
{
    colorBox->setFixedSize(boxSize);
    colorBox->setAutoFillBackground(true);
    colorBox->setFrameStyle(QFrame::StyledPanel);
    colorBox->setLineWidth(4);
    showColor();
    connect(colorBox, &GradientColor::doubleClick, this, &ColorSelection::onColorCliked);
}

void ColorSelection::showColor()
{
    QPalette palette = colorBox->palette();
    palette.setColor(QPalette::Window, currentColor);
    colorBox->setPalette(palette);
}
