#pragma once

#include "Choice.h"

#include <QString>

#include <vector>

/// One buffer as a host may pass it.
struct Heights
{
    int width = 0;
    int height = 0;
    QString pattern;
    std::vector<float> values;
};

/// Mostly small ones, from 1 x 1; now and then up to 4096 x 4096. Sound and hostile patterns.
Heights randomHeights(Choice &choice);
