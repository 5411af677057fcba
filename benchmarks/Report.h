#pragma once

#include "Results.h"

/// The figures side by side as a table in Markdown.
/// \param mainSide size of the figures that name none
/// \param isJudged whether to say which targets are met: they hold for the sizes of a full run
QString tableOf(const Results &results, int mainSide, bool isJudged);
