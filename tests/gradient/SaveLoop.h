#pragma once

#include "GradientCollection.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

/// What the killed program saves again and again, and what the test that kills it expects.
namespace SaveLoop {

constexpr int count = 200;

/// All gradients carry the number of the round.
inline void fill(GradientCollection &collection, int round)
{
    QJsonArray records;
    for (int number = 0; number < count; ++number)
        records.append(QJsonObject({{"name", QString::number(number)}, {"max", round}}));
    collection.read({{"gradients", records}});
    collection.save();
}

inline bool isWhole(const GradientCollection &collection)
{
    if (collection.size() != count)
        return false;

    const QList<std::shared_ptr<Gradient>> gradients = collection.getGradients();
    const double round = gradients.first()->getMax();
    return std::all_of(gradients.cbegin(), gradients.cend(),
        [round](const auto &gradient) { return gradient->getMax() == round; });
}

} // namespace SaveLoop
