#pragma once

#include "Olvik3DViewerExport.h"

#include <QColor>
#include <QDialog>
#include <QString>

#include <functional>
#include <memory>

class ColorSelection;
class Gradient;
class GradientBuilderWidget;
class QBoxLayout;
class QLabel;

/// Creates or edits one gradient: name, bounds with their colours, stops.
///
/// Works on a copy and writes it into the caller's gradient when the user confirms with valid
/// bounds; until then, and when the user cancels, that gradient stays as it is. Meant for exec();
/// may be deleted at any time, with one of its messages open, too. GUI thread only.
class OLVIK3DVIEWER_EXPORT GradientBuilderDialog : public QDialog
{
    Q_OBJECT

public:
    /// The dialog is a window of its own; \a parent is only the first parent of the stop editor.
    /// \param gradient shared; receives the result
    /// \throws GradientBuilderWidget::GradientMissingStartEndException unless the gradient has
    /// stops at exactly 0 and exactly 1
    GradientBuilderDialog(std::shared_ptr<Gradient> gradient, double min, double max,
        QColor minColor, QColor maxColor, QWidget *parent);
    /// A new gradient, which has no stops.
    /// \throws GradientBuilderWidget::GradientMissingStartEndException always
    explicit GradientBuilderDialog(QWidget *parent);
    /// A new gradient, which has no stops.
    /// \throws GradientBuilderWidget::GradientMissingStartEndException always
    GradientBuilderDialog(unsigned long id, QWidget *parent);
    ~GradientBuilderDialog() override;

    void setGradientName(QString newName);
    QString getGradientName() const { return name; }

    /// Without a check any name is taken.
    /// \param check tells what the user is to read about a name that is refused, nothing when it is
    /// good. Asked when the user confirms; with a refused name the dialog stays open.
    void setNameCheck(std::function<QString(const QString &name)> check);

    /// The copy that is edited; its name and bounds follow when the user confirms.
    std::shared_ptr<Gradient> getCurrentGradient() { return workingGradient; }

    double getMin() const;
    double getMax() const;
    QColor getMinColor() const;
    QColor getMaxColor() const;

    /// The current size.
    QSize sizeHint() const override;

Q_SIGNALS:
    /// setGradientName() was called; the user's typing is not reported.
    void gradientNameChanged(const QString &name);

public Q_SLOTS:
    void onGradientNameChanged(const QString &newName);

private:
    void initGradientDialog(double min, double max, QColor minColor, QColor maxColor);
    QBoxLayout *createNameRow();
    QBoxLayout *createGradientArea();
    QBoxLayout *createButtonRow();
    QBoxLayout *createHelpBlock();

    void toggleHelp();
    void showHelpLink(const QString &text);
    void tell(const QString &title, const QString &text);
    bool isComplete();
    void confirm();
    void store();

    std::shared_ptr<Gradient> targetGradient;
    std::shared_ptr<Gradient> workingGradient;
    QString name;
    std::function<QString(const QString &)> nameCheck;
    QWidget *boundsPanel = nullptr;
    GradientBuilderWidget *stopEditor;
    ColorSelection *minSelection = nullptr;
    ColorSelection *maxSelection = nullptr;
    QLabel *helpText = nullptr;
    QLabel *helpLink = nullptr;
    int heightWithoutHelp = 0;
};
