#pragma once

#include <QString>

/// Names under which the viewer keeps its settings. Keys are case-sensitive, and the prefix exists
/// in two spellings on purpose: the colour mode has one key for the mode itself and one for the
/// menu's mark.
namespace ViewerSettingsKeys {

inline QString position()
{
    return QStringLiteral("3Dviewer/position");
}
inline QString size()
{
    return QStringLiteral("3Dviewer/size");
}
inline QString maximized()
{
    return QStringLiteral("3Dviewer/maximized");
}
inline QString flyMode()
{
    return QStringLiteral("3Dviewer/FlyMode");
}
inline QString checkedColorMode()
{
    return QStringLiteral("3DViewer/ColorMode");
}
inline QString colorMode()
{
    return QStringLiteral("3Dviewer/ColorMode");
}
inline QString showZero()
{
    return QStringLiteral("3DViewer/showzero");
}
inline QString gradientName()
{
    return QStringLiteral("3Dviewer/gradient_name");
}

} // namespace ViewerSettingsKeys
