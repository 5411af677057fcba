#include "LiveViewers.h"

#include "Olvik3DViewerPrivate.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>
#include <vector>

namespace {

thread_local bool hasEnded = false;

/// What exit() ends before anything else: statics are still whole, and those of the host have not
/// deleted their controls yet.
struct EndOfThread
{
    std::vector<Olvik3DViewerPrivate *> viewers;

    ~EndOfThread()
    {
        hasEnded = true;
        for (Olvik3DViewerPrivate *viewer : viewers)
            viewer->halt();
    }
};

thread_local EndOfThread here;
bool isEndOfApplicationWatched = false;

/// The application is still whole; each viewer takes itself out of the list.
void endWithApplication()
{
    isEndOfApplicationWatched = false;
    while (!hasEnded && !here.viewers.empty())
        delete here.viewers.back();
}

} // namespace

void LiveViewers::add(Olvik3DViewerPrivate *viewer)
{
    here.viewers.push_back(viewer);
    if (!std::exchange(isEndOfApplicationWatched, true))
        qAddPostRoutine(endWithApplication);
}

void LiveViewers::remove(Olvik3DViewerPrivate *viewer)
{
    if (!hasEnded)
        here.viewers.erase(
            std::remove(here.viewers.begin(), here.viewers.end(), viewer), here.viewers.end());
}

bool LiveViewers::hasThreadEnded()
{
    return hasEnded;
}
