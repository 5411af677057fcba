#pragma once

#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

/// Offers Olvik3DViewerFormWidget in Qt Designer's widget box.
class ViewerPlugin : public QObject, public QDesignerCustomWidgetInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    bool isInitialized() const override { return initialized; }
    void initialize(QDesignerFormEditorInterface *core) override;
    bool isContainer() const override { return false; }
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override { return toolTip(); }
    QString includeFile() const override;
    QString domXml() const override;
    QIcon icon() const override;
    QWidget *createWidget(QWidget *parent) override;

private:
    bool initialized = false;
    bool isDesigner = false; ///< and not a program that loads forms at run time
};
