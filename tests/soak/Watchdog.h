#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

class Journal;

/// Ends the process by abort(), after printing the last operations, when the GUI thread is silent
/// for too long; prints them as well when the process crashes. A thread of its own.
class Watchdog
{
public:
    Watchdog(Journal &journal, std::int64_t limitMs);
    ~Watchdog();
    Watchdog(const Watchdog &) = delete;
    Watchdog &operator=(const Watchdog &) = delete;

private:
    void watch(std::int64_t limitMs) const;

    Journal &journal;
    std::atomic<bool> isDone{false};
    std::thread thread;
};
