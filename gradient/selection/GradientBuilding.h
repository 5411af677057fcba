#pragma once

#include "GradientCollection.h"

#include <QString>

#include <memory>

/// Lets the user edit an entry of a collection, or a gradient that is to become one. A name that
/// another entry has is refused in the dialog, and an empty one unless the collection is still to
/// give one; an entry may keep the name it has.
/// \param name shown at first
/// \return true when confirmed; false when the user cancels or the dialog is deleted
/// \throws GradientBuilderWidget::GradientMissingStartEndException unless the gradient has stops at
/// exactly 0 and exactly 1
bool buildGradient(const std::shared_ptr<GradientCollection> &collection,
    const std::shared_ptr<Gradient> &gradient, const QString &name);
