#pragma once

#include "Results.h"

#include <QImage>

/// Cost of an update against its size for both viewers, with the time that the machine's memory
/// needs at least. Needs a QGuiApplication for the fonts.
QImage plotOf(const Results &results, int mainSide);
