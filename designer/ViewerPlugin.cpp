#include "ViewerPlugin.h"

#include <Olvik3DViewerFormWidget.h>

#include <QIcon>

void ViewerPlugin::initialize(QDesignerFormEditorInterface *core)
{
    isDesigner = core != nullptr;
    initialized = true;
}

QString ViewerPlugin::name() const
{
    return QStringLiteral("Olvik3DViewerFormWidget");
}

QString ViewerPlugin::group() const
{
    return QStringLiteral("Display Widgets");
}

QString ViewerPlugin::toolTip() const
{
    return tr("3D view of height profiles");
}

QString ViewerPlugin::includeFile() const
{
    return QStringLiteral("Olvik3DViewerFormWidget.h");
}

QString ViewerPlugin::domXml() const
{
    return QStringLiteral("<ui language=\"c++\"><widget class=\"%1\" name=\"viewer\"><property "
                          "name=\"geometry\"><rect><x>0</x><y>0</y><width>320</width><height>240"
                          "</height></rect></property></widget></ui>")
        .arg(name());
}

QIcon ViewerPlugin::icon() const
{
    return QIcon(QStringLiteral(":/gradient/images/icons8-color-wheel-96.png"));
}

QWidget *ViewerPlugin::createWidget(QWidget *parent)
{
    using Form = Olvik3DViewerFormWidget;
    return new Form(parent, isDesigner ? Form::Placeholder : Form::Viewer);
}
