#pragma once

#include <QComboBox>

#include <memory>

class GradientCollection;

/// A combo box of gradients: at most as wide as its names need in the popup, however long they are,
/// so that no name stretches the bar or the window it stands in.
class GradientSelector : public QComboBox
{
public:
    GradientSelector(const std::shared_ptr<GradientCollection> &collection, QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    QSize bounded(QSize hint) const;
};
