#include "GuiTest.h"
#include "SceneProbe.h"

#include "GradientFactory.h"
#include "Olvik3DViewerWidget.h"
#include "vtkShaderCallback.h"

#include <vtkActor.h>
#include <vtkActorCollection.h>
#include <vtkCellArray.h>
#include <vtkCubeAxesActor.h>
#include <vtkFloatArray.h>
#include <vtkMapper.h>
#include <vtkOpenGLPolyDataMapper.h>
#include <vtkPointData.h>

#include <vtkStringArray.h>

#include <limits>

using RenderData = Olvik3DViewerWidget::RenderData;
using Bounds = std::array<double, 6>;
Q_DECLARE_METATYPE(ColorMode)

namespace {

Bounds boundsOf(int columns, int rows, double top)
{
    return {0.0, static_cast<double>(columns), 0.0, static_cast<double>(rows), 0.0, top};
}

RenderData lastRequest(const QSignalSpy &requests)
{
    return requests.last()[0].value<RenderData>();
}

vtkActor *cloudActor(Olvik3DViewerWidget &view)
{
    vtkActorCollection *actors = rendererOf(view)->GetActors();
    actors->InitTraversal();
    return actors->GetNextActor();
}

Gradient blackToWhite(double max)
{
    Gradient gradient = GradientFactory::BlackAndWhite();
    gradient.setMax(max);
    return gradient;
}

vtkCubeAxesActor *axesIn(Olvik3DViewerWidget &view)
{
    vtkPropCollection *props = rendererOf(view)->GetViewProps();
    for (int i = 0; i < props->GetNumberOfItems(); ++i) {
        if (auto *axes = vtkCubeAxesActor::SafeDownCast(props->GetItemAsObject(i)))
            return axes;
    }
    return nullptr;
}

class ShownView : public Olvik3DViewerWidget
{
public:
    explicit ShownView(int size)
    {
        resize(size, size);
        show();
        QVERIFY(QTest::qWaitForWindowExposed(this));
    }

    /// From above, without the axes.
    void showRamp(int size, double top)
    {
        loadPolyData(rampCloud(size, size), boundsOf(size, size, top), {0, top});
        QTRY_VERIFY(getAxisVisibility());
        showAxes(false);
        SceneProbe(*this).lookFromAbove(size, size);
    }
};

} // namespace

class TestOlvik3DViewerWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void axesTextsStandApartAndKeepTheirSize_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<QString>("labels");
        QTest::newRow("low") << 160 << "0,200,400,600";
        QTest::newRow("tall") << 500 << "0,100,200,300,400,500,600,700";
        QTest::newRow("tiny") << 60 << "0,500";
    }

    void axesTextsStandApartAndKeepTheirSize()
    {
        QFETCH(int, height);
        QFETCH(QString, labels);
        const auto show = [](Olvik3DViewerWidget &view, int viewHeight) {
            view.resize(viewHeight * 2, viewHeight);
            view.show();
            view.loadPolyData(rampCloud(3, 1), boundsOf(1024, 701, 5), {0, 5});
            QTRY_VERIFY(view.getAxisVisibility());
            SceneProbe(view).lookFromAbove(1024, 701);
        };
        Olvik3DViewerWidget view;
        show(view, height);
        vtkCubeAxesActor *axes = axesIn(view);
        QStringList texts;
        vtkStringArray *profiles = axes->GetAxisLabels(1);
        for (vtkIdType i = 0; i < profiles->GetNumberOfValues(); ++i)
            texts += QString::fromStdString(profiles->GetValue(i)).trimmed();
        texts.removeAll(QString());
        QCOMPARE(texts.join(','), labels);
        QCOMPARE(axes->GetScreenSize(), 10 * view.devicePixelRatioF());

        Olvik3DViewerWidget resized;
        show(resized, 300);
        resized.resize(view.size());
        QTRY_VERIFY(resized.grabFramebuffer() == view.grabFramebuffer());
    }

    void titlesStayInThePicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("the window at first") << QSize(640, 316);
        QTest::newRow("with its gradient bar") << QSize(640, 276);
        QTest::newRow("small, in a host's form") << QSize(300, 200);
    }

    void titlesStayInThePicture()
    {
        QFETCH(QSize, size);
        Olvik3DViewerWidget view;
        view.resize(size);
        view.show();
        view.loadPolyData(rampCloud(300, 300), boundsOf(300, 300, 100), {0, 100});
        QTRY_VERIFY(view.getAxisVisibility());
        const QImage picture = view.grabFramebuffer();
        const auto litIn = [&picture](int y) {
            int lit = 0;
            for (int x = 0; x < picture.width(); ++x)
                lit += picture.pixelColor(x, y) != QColor(Qt::black);
            return lit;
        };
        QCOMPARE(litIn(picture.height() - 1), 0);
    }

    void aSecondCloudIsDroppedUntilTheFirstIsDrawn()
    {
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.loadPolyData(rampCloud(3, 1), boundsOf(3, 1, 2), {0, 2});
        view.loadPolyData(rampCloud(4, 1), boundsOf(4, 1, 3), {0, 3});
        QCOMPARE(requests.size(), 1);
        QCoreApplication::processEvents();
        view.loadPolyData(rampCloud(5, 1), boundsOf(5, 1, 4), {0, 4});
        QCOMPARE(requests.size(), 2);
        QCOMPARE(lastRequest(requests).polyData->GetNumberOfPoints(), vtkIdType{5});

        view.loadPolyData(nullptr, boundsOf(1, 1, 1), {0, 1});
        QCOMPARE(requests.size(), 2);
        QCoreApplication::processEvents();
        {
            const QSignalBlocker nobodyHears(&view);
            view.loadPolyData(rampCloud(6, 1), boundsOf(6, 1, 5), {0, 5});
        }
        view.loadPolyData(vtkSmartPointer<vtkPolyData>::New(), boundsOf(1, 1, 1), {0, 1});
        QCOMPARE(requests.size(), 3);
        QCoreApplication::processEvents();
    }

    void axesFollowASequenceOfClouds_data()
    {
        constexpr double inf = std::numeric_limits<double>::infinity();
        QTest::addColumn<QVector<double>>("tops");
        QTest::addColumn<int>("sensorHeight");
        QTest::addColumn<double>("axisTop");
        QTest::addColumn<double>("axisColumns");
        // Each cloud of a sequence is one column wider than the one before, starting at 10.
        QTest::newRow("first, negative") << QVector<double>{-100} << 0 << -120.0 << 10.0;
        QTest::newRow("within the band") << QVector<double>{100, 80} << 0 << 100.0 << 10.0;
        QTest::newRow("below the band") << QVector<double>{100, 70} << 0 << 84.0 << 11.0;
        QTest::newRow("above the top") << QVector<double>{100, 101} << 0 << 121.2 << 11.0;
        QTest::newRow("down and within again") << QVector<double>{100, 70, 80} << 0 << 84.0 << 11.0;
        QTest::newRow("sensor height") << QVector<double>{100, 700} << 500 << 500.0 << 11.0;
        QTest::newRow("recovers from infinity") << QVector<double>{inf, 100} << 0 << 120.0 << 11.0;
    }

    void axesFollowASequenceOfClouds()
    {
        QFETCH(QVector<double>, tops);
        QFETCH(int, sensorHeight);
        QFETCH(double, axisTop);
        QFETCH(double, axisColumns);
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.setSensorHeight(sensorHeight);
        view.setAxesScale(2.0f, 3.0f, 5.0f);
        int columns = 10;
        for (const double top : tops) {
            view.loadPolyData(rampCloud(3, 1), boundsOf(columns++, 7, top), {0, 1});
            QCoreApplication::processEvents();
        }
        const RenderData request = lastRequest(requests);
        QCOMPARE(request.zRange[1], axisTop);
        QCOMPARE(request.xRange[1], axisColumns);
        QCOMPARE(request.yRange[1], 7.0);
        QCOMPARE(request.bounds[1], 2 * axisColumns);
        QCOMPARE(request.bounds[3], 5 * 7.0);
        QCOMPARE(request.bounds[5], 3 * axisTop);
    }

    void aFlatCloudClearsTheScreenAndKeepsTheAxes()
    {
        ShownView view(300);
        const SceneProbe probe(view);
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.showRamp(50, 49);
        QVERIFY(probe.litPixels() > 1000);

        view.loadPolyData(rampCloud(50, 50), {0, 50, 0, 50, 7, 7}, {0, 0});
        QTRY_COMPARE(probe.litPixels(), 0);
        QCOMPARE(lastRequest(requests).zRange[1], 49.0);
        view.showAxes(true);
        QVERIFY(probe.litPixels() > 50);
    }

    void onlyTheFirstCloudMovesTheCamera()
    {
        Olvik3DViewerWidget view;
        vtkCamera *camera = rendererOf(view)->GetActiveCamera();
        const double farAway = camera->GetDistance();
        for (int i = 0; i < 2; ++i) {
            view.loadPolyData(rampCloud(500, 500), boundsOf(500, 500, 0), {0, 0});
            QCoreApplication::processEvents();
        }
        view.loadPolyData(rampCloud(500, 500), boundsOf(500, 500, 499), {0, 499});
        QCoreApplication::processEvents();
        const double framed = camera->GetDistance();
        const double angle = camera->GetViewAngle();
        QVERIFY(framed > 100 * farAway);
        QCOMPARE(angle, 37.5);

        camera->Dolly(2.0);
        view.loadPolyData(rampCloud(500, 500), boundsOf(500, 500, 499), {0, 499});
        QCoreApplication::processEvents();
        QCOMPARE(camera->GetDistance(), framed / 2.0);

        for (int i = 0; i < 3; ++i)
            view.resetCamera();
        QCOMPARE(camera->GetViewAngle(), angle);
    }

    void colorsOfBothModes()
    {
        ShownView view(400);
        const SceneProbe probe(view);
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.setGradient(blackToWhite(200));
        QCOMPARE(requests.size(), 0);
        view.showRamp(401, 400);
        const QColor shaded(191, 0, 64);

        QVERIFY(isNear(probe.colorAt(100, 200, 100), shaded));

        for (int round = 0; round < 3; ++round) {
            view.setColorMode(UserGradient);
            view.setColorMode(UserGradient);
            QTRY_VERIFY(isNear(probe.colorAt(100, 200, 100), QColor(127, 127, 127)));
            QVERIFY(isNear(probe.colorAt(300, 200, 300), QColor(245, 66, 230)));
            view.setColorMode(Auto);
            QTRY_VERIFY(isNear(probe.colorAt(100, 200, 100), shaded));
        }
        QCOMPARE(requests.size(), 7);
    }

    void gradientWithoutBoundsDrawsBlack()
    {
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.setColorMode(UserGradient);
        view.setGradient(GradientFactory::BlackAndWhite());
        view.loadPolyData(rampCloud(100, 1), boundsOf(100, 1, 99), {0, 99});
        vtkDataArray *colors = lastRequest(requests).polyData->GetPointData()->GetArray("Colors");
        QVERIFY(colors);
        QCOMPARE(colors->GetNumberOfTuples(), vtkIdType{100});
        QCOMPARE(colors->GetNumberOfComponents(), 3);
        QCOMPARE(colors->GetMaxNorm(), 0.0);
    }

    void aCloudInFlightIsDrawnInTheModeOfTheMoment()
    {
        ShownView view(300);
        SceneProbe probe(view);
        view.setGradient(blackToWhite(200));
        view.loadPolyData(rampCloud(101, 101), boundsOf(101, 101, 100), {0, 100});
        view.setColorMode(UserGradient);
        QTRY_VERIFY(view.getAxisVisibility());
        view.showAxes(false);
        probe.lookFromAbove(101, 101);
        QVERIFY(isNear(probe.colorAt(50, 50, 50), QColor(63, 63, 63)));

        view.setGradient(blackToWhite(100));
        view.setGradient(blackToWhite(400));
        QTRY_VERIFY(isNear(probe.colorAt(50, 50, 50), QColor(31, 31, 31)));
    }

    void theHostsCloudStaysTheHosts()
    {
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        const vtkSmartPointer<vtkPolyData> cloud = rampCloud(3, 1);
        view.loadPolyData(cloud, boundsOf(3, 1, 2), {0, 2});
        QCoreApplication::processEvents();
        cloud->GetPoints()->SetPoint(2, 90, 90, 90);
        view.setAxesScale(2.0f, 1.0f, 1.0f);
        double point[3];
        lastRequest(requests).polyData->GetPoint(2, point);
        QCOMPARE(point[0], 4.0);

        // Handed over, but above memory that the host writes its next frame to.
        QCoreApplication::processEvents();
        float frame[] = {0, 0, 0, 3, 0, 3};
        vtkSmartPointer<vtkPolyData> wrapped = rampCloud(2, 1);
        vtkNew<vtkFloatArray> floats;
        floats->SetNumberOfComponents(3);
        floats->SetArray(frame, 6, 1);
        wrapped->GetPoints()->SetData(floats.Get());
        view.loadPolyData(std::move(wrapped), boundsOf(4, 1, 3), {0, 3});
        QCOMPARE(frame[3], 6.0f);
        frame[3] = 90;
        QCoreApplication::processEvents();
        view.setAxesScale(3.0f, 1.0f, 1.0f);
        QCoreApplication::processEvents();
        QCOMPARE(cloudActor(view)->GetMapper()->GetInput()->GetBounds()[1], 9.0);
    }

    void scalesStartFromTheUnscaledCloud()
    {
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.loadPolyData(rampCloud(4, 3), boundsOf(4, 3, 3), {0, 3});
        for (const float factor : {2.0f, 8.0f, 1.0f, 4.0f}) {
            QCoreApplication::processEvents();
            view.setAxesScale(factor, 10 * factor, 100 * factor);
        }
        view.setAxesScale(4.000001f, 40.0f, 400.0f);
        QCOMPARE(requests.size(), 5);
        double point[3];
        lastRequest(requests).polyData->GetPoint(11, point);
        QCOMPARE(point[0], 3 * 4.0);
        QCOMPARE(point[1], 2 * 400.0);
        QCOMPARE(point[2], 3 * 40.0);

        // This one is still on its way.
        view.setAxesScale(5.0f, 40.0f, 400.0f);
        QTRY_COMPARE(requests.size(), 6);
        lastRequest(requests).polyData->GetPoint(11, point);
        QCOMPARE(point[0], 3 * 5.0);
    }

    void theFullCloudLooksAsTheStockPipelineDrawsIt_data()
    {
        QTest::addColumn<ColorMode>("mode");
        QTest::addColumn<int>("size");
        QTest::newRow("by height") << Auto << 301;
        QTest::newRow("by height, in parts") << Auto << 1001;
        QTest::newRow("by gradient, in parts") << UserGradient << 1001;
    }

    void theFullCloudLooksAsTheStockPipelineDrawsIt()
    {
        QFETCH(ColorMode, mode);
        QFETCH(int, size);
        ShownView view(400);
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.setGradient(blackToWhite(250));
        view.setColorMode(mode);
        view.loadPolyData(rampCloud(size, size), boundsOf(size, size, 300), {0, 300});
        QTRY_VERIFY(view.getAxisVisibility());
        view.showAxes(false);

        vtkActor *cloud = cloudActor(view);
        auto *points = vtkPolyData::SafeDownCast(cloud->GetMapper()->GetInput());
        vtkNew<vtkCellArray> cells;
        for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i)
            cells->InsertNextCell(1, &i);
        vtkNew<vtkPolyData> withCells;
        withCells->ShallowCopy(points);
        withCells->SetVerts(cells);
        vtkNew<vtkOpenGLPolyDataMapper> mapper;
        mapper->SetInputData(withCells);
        mapper->SetVBOShiftScaleMethod(0);
        vtkNew<vtkActor> stock;
        stock->SetMapper(mapper);
        stock->SetProperty(cloud->GetProperty());
        if (!VtkCompatibility::shareShaders(*cloud, *stock) && mode == Auto)
            QSKIP("The mappers keep their shaders to themselves");
        const auto uniforms = vtkSmartPointer<vtkShaderCallback>::Take(vtkShaderCallback::New());
        uniforms->data = lastRequest(requests);
        if (mode == Auto)
            mapper->AddObserver(vtkCommand::UpdateShaderEvent, uniforms);
        rendererOf(view)->AddActor(stock);
        cloud->VisibilityOff();
        view.onRenderNoCamera();
        const QImage expected = view.grabFramebuffer();
        stock->VisibilityOff();
        view.onRenderNoCamera();
        QVERIFY(view.grabFramebuffer() != expected);
        cloud->VisibilityOn();
        view.onRenderNoCamera();
        QTRY_VERIFY(view.grabFramebuffer() == expected);
    }

    /// The colour and the extent of a subsample's picture are those of the full cloud.
    void noPictureShowsAPartOfTheCloud_data()
    {
        QTest::addColumn<ColorMode>("mode");
        QTest::addColumn<QColor>("expected");
        QTest::newRow("by height") << Auto << QColor(191, 0, 64);
        QTest::newRow("by gradient") << UserGradient << QColor(127, 127, 127);
    }

    void noPictureShowsAPartOfTheCloud()
    {
        QFETCH(ColorMode, mode);
        QFETCH(QColor, expected);
        constexpr int size = 2001;
        ShownView view(400);
        view.setGradient(blackToWhite(1000));
        view.setColorMode(mode);
        view.showRamp(size, size - 1);
        const SceneProbe probe(view);
        QVERIFY(isNear(probe.colorAt(500, 1000, 500), expected));
        const int whole = probe.litPixels();
        const QImage subsample = view.grabFramebuffer();
        for (int picture = 0; picture < 3; ++picture) {
            // Into the drawing of the full cloud, further each time.
            for (int i = 0; i < 20 + 5 * picture; ++i) {
                QTest::qWait(10);
                QVERIFY(probe.litPixels() > whole * 95 / 100);
            }
            view.onRenderNoCamera();
            QVERIFY(view.grabFramebuffer() == subsample);
        }
        QTRY_VERIFY(view.grabFramebuffer() != subsample);
        QVERIFY(isNear(probe.colorAt(500, 1000, 500), expected));
        QVERIFY(qAbs(probe.litPixels() - whole) < whole / 20);
        const QImage full = view.grabFramebuffer();
        QTest::mouseClick(&view, Qt::LeftButton, {}, QPoint(200, 200));
        QVERIFY(view.grabFramebuffer() == full);
    }

    void switchingModesInstallsTheShaderOnce()
    {
        Olvik3DViewerWidget view;
        vtkActor *cloud = cloudActor(view);
        for (int round = 0; round < 3; ++round) {
            QVERIFY(cloud->GetMapper()->HasObserver(vtkCommand::UpdateShaderEvent));
            view.setmapper();
            view.setColorMode(UserGradient);
            QVERIFY(!cloud->GetMapper()->HasObserver(vtkCommand::UpdateShaderEvent));
            view.setColorMode(Auto);
        }
    }

    void loadedFilesAreShownWithinTheLastBounds()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write("ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\n"
                   "property float z\nend_header\n1 2 3\n4 5 6\n");
        file.close();
        Olvik3DViewerWidget view;
        const QSignalSpy requests(&view, &Olvik3DViewerWidget::mRender);
        view.load(file.fileName());
        QCoreApplication::processEvents();
        QCOMPARE(lastRequest(requests).polyData->GetNumberOfPoints(), vtkIdType{0});

        view.loadPolyData(rampCloud(9, 7), boundsOf(9, 7, 8), {0, 8});
        for (const bool swap : {false, true, true}) {
            QCoreApplication::processEvents();
            view.load(file.fileName(), swap);
            const RenderData request = lastRequest(requests);
            QCOMPARE(request.xRange[1], 9.0);
            double point[3];
            request.polyData->GetPoint(1, point);
            QCOMPARE(point[0], 4.0);
            QCOMPARE(point[1], swap ? 6.0 : 5.0);
            QCOMPARE(point[2], swap ? 5.0 : 6.0);
        }
        QCoreApplication::processEvents();
        view.load("/proc/self/exe", true);
        QCOMPARE(lastRequest(requests).polyData->GetNumberOfPoints(), vtkIdType{0});
    }
};

OLVIK_GUI_TEST_MAIN(TestOlvik3DViewerWidget)
#include "tst_olvik3dviewerwidget.moc"
