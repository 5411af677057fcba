#pragma once

#include "GradientCollection.h"

#include <QModelIndex>
#include <QVariant>

#include <memory>

/// What the table's and the combo boxes' views of a collection have in common.

constexpr int gradientNameColumn = 0;
constexpr int gradientSchemeColumn = 1;
constexpr int gradientColumnCount = 2;
constexpr int gradientTextAlignment = Qt::AlignRight | Qt::AlignVCenter;

QVariant gradientHeader(int section, Qt::Orientation orientation, int role);

/// Null when the index is invalid, past the end, or there is no collection.
std::shared_ptr<Gradient> gradientInRow(
    const GradientCollection *collection, const QModelIndex &index);
