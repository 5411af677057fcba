#pragma once

class Olvik3DViewerPrivate;

/// The viewers of this process, which end with the application or the process at the latest. A
/// control in a global of the host, or one that exit() leaves alive, is deleted when Qt is gone.
///
/// GUI thread only.
namespace LiveViewers {

void add(Olvik3DViewerPrivate *viewer);
void remove(Olvik3DViewerPrivate *viewer);

/// The GUI thread ends, with exit() as a rule: the viewers are halted, and Qt cannot be relied on.
bool hasThreadEnded();

} // namespace LiveViewers
