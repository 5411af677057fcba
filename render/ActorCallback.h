#pragma once

#include "Olvik3DViewerExport.h"

class vtkObject;

/// Observer function that moves one prop along with another.
/// \param caller vtkProp3D whose position is followed
/// \param clientData vtkProp3D that gets this position; not modified when it already is there
OLVIK3DVIEWER_EXPORT void ActorCallback(
    vtkObject *caller, unsigned long eventId, void *clientData, void *callData);
