#pragma once

#include <QString>

#include <memory>

class GradientCollection;

/// In the application's data folder, which is made where it is missing.
/// \param fileName ".json" is added when it is missing
QString gradientsPath(QString fileName);

/// Loads the gradients, or makes the built-in ones where there are none. Without a file that can be
/// read or made these stand in for it.
/// \param min,max bounds of the built-in gradients
std::shared_ptr<GradientCollection> openGradients(const QString &path, int min, int max);
