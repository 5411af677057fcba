#pragma once

#include <QString>

/// The help of the gradient dialog as one translated HTML document.
QString gradientHelpHtml();
