#pragma once

#include "Heights.h"

#include <QSize>

#include <functional>
#include <memory>

class QString;
class QVTKOpenGLNativeWidget;

/// Both viewers draw into windows of this size.
constexpr QSize measuredViewSize(800, 600);

/// A viewer under measurement, shown in a window of its own. GUI thread only.
class Pipeline
{
public:
    Pipeline() = default;
    Pipeline(const Pipeline &) = delete;
    Pipeline &operator=(const Pipeline &) = delete;
    virtual ~Pipeline() = default;

    virtual QVTKOpenGLNativeWidget &view() = 0;

    /// Calls back on the GUI thread each time that a new cloud was rendered, before it is on
    /// screen.
    virtual void whenRendered(std::function<void()> callback) = 0;

    /// Colours the clouds to come by the gradient instead of the height shader.
    virtual void colorBy(const Gradient &gradient) = 0;

    /// As a host does it: the buffer is copied, the rest happens later.
    virtual void setBuffer(Heights &heights, int side) = 0;

    /// The same in two parts: copies the buffer now; the function that it returns is the worker's
    /// part, to be called on any one thread.
    virtual std::function<void()> conversionOf(Heights &heights, int side) = 0;
};

/// \param name "ours" or "plain"
/// \return null for any other name
std::unique_ptr<Pipeline> pipelineOf(const QString &name);
