#include "GradientBuilderDialog.h"

#include "ColorSelection.h"
#include "FittingFont.h"
#include "Gradient.h"
#include "GradientBuilderWidget.h"
#include "GradientDialogs.h"
#include "GradientHelp.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>
#include <exception>
#include <utility>

namespace {

constexpr int helpSpacing = 10;
constexpr int helpLinkHeight = 20;
constexpr int sideMargin = 5;
/// Keeps the handles whole when the help takes the room.
constexpr int smallestBar = 100;
const QColor defaultBoundColor(245, 66, 230, 255);

} // namespace

GradientBuilderDialog::GradientBuilderDialog(std::shared_ptr<Gradient> gradient, double min,
    double max, QColor minColor, QColor maxColor, QWidget *parent)
    : QDialog(nullptr)
    , targetGradient(std::move(gradient))
    , workingGradient(std::make_shared<Gradient>(targetGradient))
    , name(workingGradient->getName())
    , stopEditor(new GradientBuilderWidget(workingGradient, parent))
{
    initGradientDialog(min, max, minColor, maxColor);
}

GradientBuilderDialog::GradientBuilderDialog(QWidget *parent)
    : GradientBuilderDialog(255, parent)
{ }

GradientBuilderDialog::GradientBuilderDialog(unsigned long id, QWidget *parent)
    : GradientBuilderDialog(
        std::make_shared<Gradient>(id), 0.0, 1.0, defaultBoundColor, defaultBoundColor, parent)
{ }

GradientBuilderDialog::~GradientBuilderDialog() = default;

void GradientBuilderDialog::setGradientName(QString newName)
{
    name = newName;
    Q_EMIT gradientNameChanged(name);
}

double GradientBuilderDialog::getMin() const
{
    return minSelection->getBound();
}

double GradientBuilderDialog::getMax() const
{
    return maxSelection->getBound();
}

QColor GradientBuilderDialog::getMinColor() const
{
    return minSelection->getCurrentColor();
}

QColor GradientBuilderDialog::getMaxColor() const
{
    return maxSelection->getCurrentColor();
}

QSize GradientBuilderDialog::sizeHint() const
{
    return size();
}

void GradientBuilderDialog::setNameCheck(std::function<QString(const QString &)> check)
{
    nameCheck = std::move(check);
}

void GradientBuilderDialog::onGradientNameChanged(const QString &newName)
{
    name = newName;
}

void GradientBuilderDialog::initGradientDialog(
    double min, double max, QColor minColor, QColor maxColor)
{
    setWindowTitle(tr("Gradient"));
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    // What is created first is reached first by the Tab key.
    layout->addLayout(createNameRow());
    boundsPanel = new QWidget(this);
    minSelection = new ColorSelection(tr("Min bound"), min, minColor, boundsPanel);
    maxSelection = new ColorSelection(tr("Max bound"), max, maxColor, boundsPanel);
    layout->addLayout(createGradientArea(), 1);
    layout->addLayout(createButtonRow());
    layout->addLayout(createHelpBlock());
}

QBoxLayout *GradientBuilderDialog::createNameRow()
{
    auto *field = new QLineEdit(name, this);
    auto *label = new QLabel(tr("Name"), this);
    label->setBuddy(field);
    connect(this, &GradientBuilderDialog::gradientNameChanged, field, &QLineEdit::setText);
    connect(field, &QLineEdit::textChanged, this, &GradientBuilderDialog::onGradientNameChanged);
    field->setFocus();

    auto *row = new QHBoxLayout;
    row->setSpacing(5);
    row->setContentsMargins(sideMargin, 0, sideMargin, 0);
    row->addWidget(label);
    row->addWidget(field);
    return row;
}

QBoxLayout *GradientBuilderDialog::createGradientArea()
{
    boundsPanel->setContentsMargins(0, 0, 0, 0);
    boundsPanel->setMaximumHeight(30);
    auto *bounds = new QHBoxLayout(boundsPanel);
    bounds->setContentsMargins(0, 0, 0, 0);
    bounds->addWidget(minSelection, 0, Qt::AlignLeft);
    bounds->addWidget(maxSelection, 0, Qt::AlignRight);

    stopEditor->setMinimumHeight(smallestBar);
    auto *area = new QVBoxLayout;
    area->setSpacing(5);
    area->setContentsMargins(sideMargin, 5, sideMargin, 5);
    area->addWidget(boundsPanel);
    area->addWidget(stopEditor, 1);
    return area;
}

QBoxLayout *GradientBuilderDialog::createButtonRow()
{
    auto *ok = new QPushButton(tr("&Ok"), this);
    auto *cancel = new QPushButton(tr("&Cancel"), this);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &GradientBuilderDialog::confirm);
    connect(cancel, &QPushButton::clicked, this, &GradientBuilderDialog::reject);

    auto *row = new QHBoxLayout;
    row->setSpacing(50);
    row->setContentsMargins(sideMargin, 5, sideMargin, 5);
    row->addWidget(ok);
    row->addWidget(cancel);
    return row;
}

QBoxLayout *GradientBuilderDialog::createHelpBlock()
{
    helpLink = new QLabel(this);
    helpLink->setTextInteractionFlags(
        Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    helpLink->setStyleSheet(QStringLiteral("border: 0px;"));
    helpLink->setMaximumHeight(helpLinkHeight);
    helpLink->setFont(fittingFont(font(), tr("Show Help &gt;&gt;&gt;"), {width(), helpLinkHeight}));
    showHelpLink(tr("Show Help &gt;&gt;&gt;"));
    connect(helpLink, &QLabel::linkActivated, this, &GradientBuilderDialog::toggleHelp);

    helpText = new QLabel(this);
    helpText->setFont(QFont(QStringLiteral("Verdana"), 8));
    helpText->setText(gradientHelpHtml());
    helpText->hide();

    auto *block = new QVBoxLayout;
    block->setAlignment(Qt::AlignLeft);
    block->setSpacing(helpSpacing);
    block->setContentsMargins(sideMargin, 0, sideMargin, 0);
    block->addWidget(helpLink);
    block->addWidget(helpText);
    return block;
}

/// The dialog grows and shrinks by the help, so that the bar keeps its height as long as the screen
/// has room.
void GradientBuilderDialog::toggleHelp()
{
    const bool shown = helpText->isHidden();
    if (shown)
        heightWithoutHelp = height();
    helpText->setVisible(shown);
    showHelpLink(shown ? tr("Hide Help &lt;&lt;&lt;") : tr("Show Help &gt;&gt;&gt;"));

    layout()->activate();
    const int wanted = heightWithoutHelp + helpText->sizeHint().height() + helpSpacing;
    const int room = screen()->availableGeometry().height();
    resize(width(), shown ? std::min(wanted, room) : heightWithoutHelp);
}

void GradientBuilderDialog::showHelpLink(const QString &text)
{
    helpLink->setText(QStringLiteral("<a href=\"help\">%1</a>").arg(text));
}

void GradientBuilderDialog::tell(const QString &title, const QString &text)
{
    showGradientMessage(this, QMessageBox::Critical, title, text);
}

/// Tells the user what is wrong; the dialog may be gone afterwards.
bool GradientBuilderDialog::isComplete()
{
    const QString refusal = nameCheck ? nameCheck(name) : QString();
    if (getMin() == 0.0 && getMax() == 0.0)
        tell(tr("Enter Bounds"), tr("Please enter min and/or max values (bounds)"));
    else if (getMin() >= getMax())
        tell(tr("Bound Error"), tr("Please check Bound values"));
    else if (!refusal.isEmpty())
        tell(tr("Error"), refusal);
    else
        return true;
    return false;
}

void GradientBuilderDialog::confirm()
{
    if (!isComplete())
        return;

    workingGradient->setName(name);
    workingGradient->setMin(getMin(), getMinColor());
    workingGradient->setMax(getMax(), getMaxColor());
    // Whoever listens to the target may save it and fail; Qt's event loop takes no exception.
    try {
        store();
    } catch (const std::exception &) {
        tell(tr("Gradient not saved"),
            tr("The gradient could not be saved. Make room on the disk or check that you may "
               "write there, then try again."));
        return;
    }
    accept();
}

/// All or nothing: when a listener throws, the target is again what it was, so that the user may
/// still cancel.
void GradientBuilderDialog::store()
{
    const Gradient before(targetGradient);
    try {
        targetGradient->copyfromOther(workingGradient);
    } catch (const std::exception &) {
        try {
            targetGradient->copyfromOther(before);
        } catch (const std::exception &) {
            // The same listener once more; the user hears of the first failure.
        }
        throw;
    }
}
