#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

/// The built-in gradients: two stops, no name, both bounds 0, so that they colour nothing before
/// they are given bounds.
class OLVIK3DVIEWER_EXPORT GradientFactory
{
public:
    GradientFactory() = delete;

    /// White at the lower bound, black at the upper one.
    static Gradient WhiteAndBlack();
    /// Black at the lower bound, white at the upper one; the start of every new gradient.
    static Gradient BlackAndWhite();
};
