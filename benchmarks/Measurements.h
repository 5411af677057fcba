#pragma once

#include "Task.h"

class Pipeline;

/// Time per update by part, and all of it apart from drawing: copy, conversion and the GUI thread's
/// part up to the screen, less the time of drawing the same picture again.
QJsonObject measureUpdate(Pipeline &pipeline, const Task &task);

/// What an update apart from drawing costs more when a gradient colours the cloud. Both in one
/// process: drawing varies from process to process.
QJsonObject measureGradient(Pipeline &pipeline, const Task &task);

/// From handing a buffer over to the frame on screen, after some frames of the same size.
QJsonObject measureShown(Pipeline &pipeline, const Task &task);

/// The same for the first buffer of the process.
QJsonObject measureFirst(Pipeline &pipeline, const Task &task);

/// One step of the mouse while it turns the cloud, to the frame on screen.
QJsonObject measureRotation(Pipeline &pipeline, const Task &task);

/// Memory at the peak of a stream above what the viewer and the host's buffers take before it.
QJsonObject measureMemory(Pipeline &pipeline, const Task &task);

/// Gaps between the ticks of a GUI thread that is fed ten buffers a second.
QJsonObject measureStall(Pipeline &pipeline, const Task &task);

/// Saves a cloud as ASCII PLY.
QJsonObject measureSave(const Task &task);

/// The machine's copy bandwidth, and what conversions of warm memory make of it.
QJsonObject measureBandwidth(const Task &task);
