#include "ActorCallback.h"

#include <vtkProp3D.h>

void ActorCallback(vtkObject *caller, unsigned long, void *clientData, void *)
{
    auto *leader = vtkProp3D::SafeDownCast(caller);
    auto *follower = static_cast<vtkProp3D *>(clientData);
    if (leader && follower)
        follower->SetPosition(leader->GetPosition());
}
