#include <DataConverter.h>
#include <GradientFactory.h>
#include <Olvik3DViewerWidget.h>
#include <OlvikSettings.h>

#include <QApplication>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    float heights[] = {1, 2, 3, 4, 5, 6};
    Olvik3DViewerWidget view;
    view.setGradient(GradientFactory::BlackAndWhite());
    view.loadPolyData(DataConverter::convertToPolyData(heights, 3, 2), {0, 3, 0, 2, 0, 6}, {0, 2});
    view.show();
    while (!view.getAxisVisibility())
        QApplication::processEvents();
    OlvikSettings::Instance()->setValue("Consumer/said", "shown");
    std::puts(qPrintable(OlvikSettings::Instance()->value("Consumer/said").toString()));
    return 0;
}
