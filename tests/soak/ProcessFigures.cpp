#include "ProcessFigures.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <malloc.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
// GCC has the function but not its header.
extern "C" void __sanitizer_purge_allocator();
#endif

namespace {

/// What was freed goes back to the system, or it would count as used.
void returnFreedMemory()
{
#ifdef __SANITIZE_ADDRESS__
    __sanitizer_purge_allocator();
#else
    malloc_trim(0);
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
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

} // namespace

ProcessFigures ProcessFigures::now()
{
    returnFreedMemory();
    // One descriptor is the listing's own.
    return {residentMegabytes(), entriesIn("/proc/self/fd") - 1, entriesIn("/proc/self/task")};
}
