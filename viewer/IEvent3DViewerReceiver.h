#pragma once

/// What a host implements to hear that a viewer has closed.
///
/// Borrowed by Olvik3DViewerControl, which never deletes it; it must outlive the control. Called on
/// the GUI thread.
class IEvent3DViewerReceiver
{
public:
    /// The user closed the viewer's window and its worker thread has ended. Deleting the control
    /// from here is allowed.
    /// \param windowName UTF-8 name that the control was constructed with, valid during the call
    ///        only
    virtual void viewerClosed(const char *windowName) = 0;

    // After viewerClosed, so that viewerClosed stays the first entry of the virtual table, on which
    // hosts that were built earlier rely.
    virtual ~IEvent3DViewerReceiver() = default;
};
