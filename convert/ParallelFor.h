#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <future>
#include <thread>
#include <vector>

/// Calls work(begin, end) for parts of 0 to \a count on all cores, the calling thread's included,
/// and returns when all is done.
///
/// Its threads live for the call only. Starting one costs 30 us, and ThreadSanitizer sees what they
/// share, which it does not with the pools of libraries that are not instrumented.
/// \param partSize as much as is worth a thread: a millisecond of work or so
/// \param work must not throw
template <typename Work>
void parallelFor(std::int64_t count, std::int64_t partSize, const Work &work)
{
    std::atomic<std::int64_t> next{0};
    const auto takeParts = [&next, &work, count, partSize] {
        for (std::int64_t begin = next.fetch_add(partSize); begin < count;
             begin = next.fetch_add(partSize))
            work(begin, std::min(begin + partSize, count));
    };
    const std::int64_t parts = (count + partSize - 1) / partSize;
    const auto threads =
        std::min<std::int64_t>(parts, std::max(1U, std::thread::hardware_concurrency()));
    // A system without threads to spare puts the helpers off until they are waited for.
    std::vector<std::future<void>> helpers;
    for (std::int64_t i = 1; i < threads; ++i)
        helpers.push_back(std::async(takeParts));
    takeParts();
    for (std::future<void> &helper : helpers)
        helper.get();
}
