#pragma once

/// What this process holds of the system's resources.
struct ProcessFigures
{
    double megabytes = 0; ///< resident memory
    double heapMegabytes = 0; ///< allocated and not freed
    int descriptors = 0; ///< open files
    int threads = 0;

    /// Lets resident memory be what is in use; call it before the first thread starts.
    static void giveFreedMemoryBack();

    /// Measured after free memory was given back to the system.
    static ProcessFigures now();
};
