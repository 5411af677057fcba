#pragma once

#include "AxesFly.h"
#include "ColorMode.h"
#include "Gradient.h"
#include "Olvik3DViewerExport.h"

#include <QMetaType>
#include <QMutex>
#include <QVector>

#include <QVTKOpenGLNativeWidget.h>
#include <vtkNew.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

class CloudActor;
class CloudMapper;
class CloudPicker;
class ColorLookup;
class DistanceMarker;
class MouseInteractorStylePP;
class Refinement;
class ReleaseWatch;
class ScanPreparer;
class SceneWindow;
class vtkCubeAxesActor;
class vtkMapper;
class vtkOpenGLCamera;
class vtkOpenGLRenderer;
class vtkShaderCallback;
struct Scan;

/// The 3D view: owns the whole scene, shows the clouds that it is handed, and reports picked points
/// and measured distances.
///
/// Scene axes: x = pixel (column), y = profile (row), z = height. The user's scale factors are
/// named after the titles of the axes instead: X scales scene x, Y scales scene z, Z scales scene
/// y.
///
/// GUI thread only, but for loadPolyData() and loadScan(). Must not be deleted while another thread
/// may call these.
class OLVIK3DVIEWER_EXPORT Olvik3DViewerWidget : public QVTKOpenGLNativeWidget
{
    Q_OBJECT

public:
    /// One render request; copies share the cloud.
    struct RenderData
    {
        vtkSmartPointer<vtkPolyData>
            polyData; ///< cloud to draw, already scaled; null keeps the last one
        double bounds[6] = {0, 0, 0, 0, 0, 0}; ///< box of the axes in scaled scene units
        double xRange[2] = {0, 0}; ///< numbers printed along the axes, unscaled
        double yRange[2] = {0, 0};
        double zRange[2] = {0, 0};
        float scaleFactor = 0.0f; ///< 1 / height span, the shader's m_scaleFactor
        float min = 0.0f; ///< low end of the height range, the shader's m_min
        float max = 0.0f; ///< high end of the height range
        float scale = 1.0f; ///< getScale() when the request was made
        std::array<float, 3> factors{1.0f, 1.0f, 1.0f}; ///< for scene x, y and z of polyData
        std::shared_ptr<const Scan>
            scan; ///< what is drawn; null: polyData, of which nothing is known
        std::shared_ptr<const Scan> unscaled; ///< the same before the user's scale
        std::shared_ptr<const ColorLookup> coloredBy; ///< where the cloud's "Colors" come from
    };

    /// The widget starts hidden. Without OpenGL 3.2 it shows a message in place of the scene. Sets
    /// Qt's default surface format to the one that VTK needs.
    explicit Olvik3DViewerWidget(QWidget *parent = nullptr);
    ~Olvik3DViewerWidget() override;

    /// Colours the cloud by the height shader from now on. Harmless when it already does.
    void setmapper();

    /// Renders without moving the camera.
    void onRenderNoCamera();

    /// Titles the axes for clouds whose y and z are exchanged, or back. The cloud is turned by 90
    /// degrees, too, until the next one is loaded.
    void setInvertedaxis(bool inverted);

    int getScale() const;
    float getScale_x() const;
    float getScale_y() const;
    float getScale_z() const;
    AxesFly getAxesFly() const;
    /// Whether the axes are on screen: false until the first cloud was drawn.
    bool getAxisVisibility() const;

Q_SIGNALS:
    /// Internal: carries a request from the thread of loadPolyData() to onRender().
    void mRender(RenderData request);
    /// \param point three doubles in scene units, valid during the emission only
    void pointPicked(double *point);
    /// \param distance in scene units
    void distancePicked(double distance);
    void axesVisibilityChanged(bool visible);

public Q_SLOTS:
    /// Handles a click: reports the point, or with Ctrl held collects it for a measurement.
    /// \param coords three doubles in scene units
    void onPixelPicked(const double *coords);

    /// Shows a cloud, at first a subsample of one that takes long to draw. Dropped when an earlier
    /// one is still on its way to the screen. May be called from any thread; the scene is touched
    /// later, on the GUI thread. The cloud is scaled in place by the user's factors and in gradient
    /// mode given an array "Colors"; what is drawn is a copy.
    /// \param polyData points as 32-bit floats; other points are replaced by such
    /// \param boundsAll xmin, xmax, ymin, ymax, zmin, zmax of the unscaled points. Without a height
    ///        span (zmin == zmax) the screen is cleared and the axes stay.
    /// \param boundsNoZero low and high end of the height range for colouring
    /// \throws std::bad_alloc when there is no memory for the copy
    void loadPolyData(vtkSmartPointer<vtkPolyData> polyData, std::array<double, 6> boundsAll,
        std::array<double, 2> boundsNoZero);

    /// Internal: loadPolyData() for a cloud that more is known of. Any thread.
    void loadScan(const Scan &scan);

    void onRender(RenderData request);

    /// Stores the value unless the stored one is less than 1, which becomes 1 instead.
    void setScale(int value);

    /// Top of the height axis for the clouds to come; 0 lets it follow the data.
    void setSensorHeight(int sensorH);

    void show();
    void hide();

    /// Asks for a PLY file and whether to exchange y and z, then loads it.
    void load();

    /// Shows the points of a PLY file within the bounds of the last cloud; none, as for a flat
    /// cloud, before there was one. A file that cannot be read shows as an empty cloud.
    /// \param swap exchanges y and z of each point
    void load(QString path, bool swap = false);

    void showAxes(bool show);
    void toggleShowAxes();

    /// Factors of the X, Y and Z axis; zero, negative and infinite ones count as 1. Shows the last
    /// cloud again.
    void setAxesScale(float x, float y, float z);

    /// Other values than the named ones leave the axes as they are, but are kept.
    void setAxesFly(AxesFly flymode);

    /// Shows the whole cloud again.
    void resetCamera();

    ColorMode getColorMode() const;

    /// Shows the last cloud again in the new mode.
    void setColorMode(const ColorMode &colorMode);

    /// Copies the gradient and shows the last cloud again.
    void setGradient(const Gradient &currentGradient);

    /// Scales a cloud in place, x by the X factor, y by the Y factor and z by the Z factor, each
    /// times \a scale; unlike the view itself, which crosses Y and Z.
    void myscale(vtkSmartPointer<vtkPolyData> polyData, float scale);

protected:
    bool event(QEvent *event) override;
    void initializeGL() override;
    void paintGL() override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private Q_SLOTS:
    void userScale(vtkSmartPointer<vtkPolyData> polyData);
    std::array<double, 6> computeBounds(vtkSmartPointer<vtkPolyData> polyData);
    std::vector<float> computeIndividualBound(float *points, std::int64_t size, int init);

private:
    /// Of the last cloud that was accepted, a flat one included.
    struct Extents
    {
        std::array<double, 6> boundsAll = {};
        std::array<double, 2> boundsNoZero = {};
        std::array<double, 6> axisBounds = {}; ///< box of the axes, unscaled
    };

    /// What the worker and the GUI thread share. Guarded by stateMutex, which is held briefly.
    struct State
    {
        std::shared_ptr<const Scan> scan; ///< the last one, unscaled; its points never change
        Extents extents;
        int scale = 1;
        float scaleX = 1.0f;
        float scaleY = 1.0f;
        float scaleZ = 1.0f;
        int sensorHeight = 0;
        ColorMode colorMode = Auto;
        std::shared_ptr<const ColorLookup> colors; ///< of the gradient
        RenderData lastData; ///< last request, its cloud replaced by emptyCloud

        std::array<float, 3> sceneScale() const { return {scaleX, scaleZ, scaleY}; }
    };

    bool hasBuffer();
    void buildScene();
    void buildInteraction();
    void titleAxes();
    void onStartOfDrawing();
    void frameCloud();

    void submit(const Scan &scan);
    void submitFlat(const Extents &extents);
    void color(RenderData &request, const std::shared_ptr<const ColorLookup> &colors) const;
    static Extents nextExtents(const State &current, const Scan &scan);
    static vtkSmartPointer<vtkPolyData> finished(
        const vtkSmartPointer<vtkPolyData> &cloud, const RenderData &request);
    void store(const RenderData &request, const Extents &extents);
    RenderData renderRequest(const State &current) const;
    void showStoredCloud();
    void draw(RenderData &request);
    void colorByCurrentGradient(RenderData &request) const;
    void showCloud(const RenderData &request);
    void showAxesOf(const RenderData &request);
    void removeHeightShader();
    std::array<vtkMapper *, 2> cloudMappers() const;
    State sharedState() const;
    template <class T> T read(T State::*member) const;

    QMutex renderMutex;
    mutable QMutex stateMutex;
    State state;
    std::atomic<bool> busy{false}; ///< a cloud is on its way to the screen

    vtkNew<SceneWindow> sceneWindow;
    vtkNew<vtkOpenGLRenderer> renderer;
    vtkNew<vtkOpenGLCamera> camera;
    vtkNew<vtkCubeAxesActor> cubeAxes;
    vtkNew<CloudPicker> pointPicker;
    vtkNew<CloudMapper> mapper;
    vtkNew<CloudActor> actor;
    vtkNew<vtkPolyData> emptyCloud;
    vtkSmartPointer<MouseInteractorStylePP> interactorStyle;
    vtkSmartPointer<vtkShaderCallback> shaderCallback; ///< null while the height shader is off
    std::unique_ptr<ScanPreparer> preparer;
    std::unique_ptr<DistanceMarker> distanceMarker;
    std::unique_ptr<Refinement> refinement;
    std::unique_ptr<ReleaseWatch> releaseWatch;
    QVector<std::array<double, 3>> pickedPoints;
    RenderData shown; ///< last request that was drawn
    bool isBufferMissing = false; ///< that Qt draws into, when the last paint came
    bool hasOpenGL = true; ///< false on a machine without the version that VTK needs
    bool axesVisible = true;
    bool invertedAxis = false;
    bool resetCameraPending = true;
    AxesFly axesFly = AxesFly::Dynamic;
};

Q_DECLARE_METATYPE(Olvik3DViewerWidget::RenderData)
