#pragma once

#include "Gradient.h"
#include "Olvik3DViewerExport.h"

/// The built-in gradients: without a name, with both bounds 0.
class OLVIK3DVIEWER_EXPORT GradientFactory
{
public:
    GradientFactory() = delete;

    static Gradient WhiteAndBlack();
    /// Where every new gradient starts.
    static Gradient BlackAndWhite();
};
