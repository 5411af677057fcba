#include "TerrainGradient.h"

Gradient terrainGradient(double top)
{
    Gradient gradient;
    gradient.addStop(0.0f, QColor(0, 0, 135));
    gradient.addStop(0.33f, QColor(0, 255, 255));
    gradient.addStop(0.66f, QColor(255, 255, 0));
    gradient.addStop(1.0f, QColor(255, 0, 0));
    gradient.setMax(top);
    return gradient;
}
