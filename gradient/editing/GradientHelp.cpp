#include "GradientHelp.h"

#include <QCoreApplication>

namespace {

constexpr const char *helpHtml = QT_TRANSLATE_NOOP("GradientHelp",
    "<html><head><style>"
    "h3, h4 { margin: 0px; padding: 0px; } "
    "ul { margin-top: 0px; padding: 0px; }"
    "</style></head><body>"
    "Hints to use gradients: <br>"

    "<h3>Purpose:</h3>"
    "A gradient is a color pattern used to transform the appearance over range maps and "
    "waterfalls."

    "<h3>Name:</h3>"
    "Define unique name for gradient specification."

    "<h3>Bounds:</h3>"
    "Define one valid range in which the gradient is applied. <br>"
    "The values in the (range map / waterfall) lower than minimum bound will apply minimum "
    "colour. <br>"
    "The values in the (range map / waterfall) greater than maximum bound will apply maximum "
    "colour. <br>"
    "You can specify(minimum, maximum) colors applied by clicking each colour box (the colour in "
    "the colour box change)."

    "<h3>Gradient area:</h3>"
    "<h4>Click Types:</h4>"
    // Without a block of their own, Qt puts the leading spaces behind the heading.
    "<div>"
    "&nbsp;&nbsp;&nbsp;&nbsp;<b>Double-click inside area:</b> "
    "Create new endpoint (opens color selector dialog)<br>"
    "&nbsp;&nbsp;&nbsp;&nbsp;<b>Double-click on endpoint:</b> Remove the endpoint<br>"
    "&nbsp;&nbsp;&nbsp;&nbsp;<b>Right-click on endpoint:</b> Modify the endpoint<br>"
    "&nbsp;&nbsp;&nbsp;&nbsp;<b>Click and drag endpoint:</b> "
    "Move endpoint between left and right corners"
    "</div>"
    "<h4>Notes:</h4>"
    "<ul>"
    "<li>Endpoints appear as small red rectangles in the gradient area</li>"
    "<li>Minimum of 2 endpoints required for each gradient</li>"
    "<li>Endpoints define different sections within the gradient intervals</li>"
    "</ul>"

    "<h3>Application:</h3>"
    "After declaring a gradient when you apply it over the (range map / waterfall) its visual "
    "representation <br>"
    "will be transformed according to the sections defined."
    "</body></html>");

} // namespace

QString gradientHelpHtml()
{
    return QCoreApplication::translate("GradientHelp", helpHtml);
}
