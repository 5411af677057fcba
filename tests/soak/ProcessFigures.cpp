#include "ProcessFigures.h"

#include <QPixmapCache>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// GCC has the function but not its header.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

double allocatedMegabytes()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return static_cast<double>(__sanitizer_get_current_allocated_bytes()) / mebibyte;
#else
    const struct mallinfo2 all = mallinfo2();
    return static_cast<double>(all.uordblks + all.hblkhd) / mebibyte;
#endif
}

int entriesIn(const char *folder)
{
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

double residentMegabytes()
{
    std::ifstream file("/proc/self/statm");
    double total = 0;
    double resident = 0;
    file >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / mebibyte;
}

} // namespace

void ProcessFigures::giveFreedMemoryBack()
{
    // malloc_trim() leaves the free end of another thread's arena alone, and with the threshold
    // that adapts to what was freed that is up to 64 MB for each.
    mallopt(M_TRIM_THRESHOLD, 128 * 1024);
}

ProcessFigures ProcessFigures::now()
{
    // Qt keeps up to 10 MB of drawn widgets.
    QPixmapCache::clear();
    malloc_trim(0);
    // One descriptor is the listing's own.
    return {residentMegabytes(), allocatedMegabytes(), entriesIn("/proc/self/fd") - 1,
        entriesIn("/proc/self/task")};
}
