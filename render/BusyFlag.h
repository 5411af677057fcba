#pragma once

#include <atomic>

/// Clears the flag that lets no second cloud in, also when an exception ends the frame.
class BusyFlag
{
public:
    explicit BusyFlag(std::atomic<bool> &busy)
        : flag(&busy)
    { }
    ~BusyFlag()
    {
        if (flag)
            *flag = false;
    }
    BusyFlag(const BusyFlag &) = delete;
    BusyFlag &operator=(const BusyFlag &) = delete;

    /// From here on somebody else clears the flag.
    void handOver() { flag = nullptr; }

private:
    std::atomic<bool> *flag;
};
