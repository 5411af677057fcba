#include "Watchdog.h"

#include "Journal.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <execinfo.h>
#include <iterator>
#include <unistd.h>

// Only there in sanitized builds, which handle the signals themselves.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

const Journal *journalOfProcess = nullptr;

void printJournal()
{
    if (journalOfProcess)
        journalOfProcess->dump();
}

extern "C" void onSignal(int number)
{
    printJournal();
    void *frames[60];
    backtrace_symbols_fd(frames, backtrace(frames, std::size(frames)), STDERR_FILENO);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

void catchCrashes()
{
    if (__sanitizer_set_death_callback) {
        __sanitizer_set_death_callback(printJournal);
        std::signal(SIGABRT, onSignal);
        return;
    }
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        std::signal(number, onSignal);
}

} // namespace

Watchdog::Watchdog(Journal &watched, std::int64_t limitMs)
    : journal(watched)
    , thread([this, limitMs] { watch(limitMs); })
{
    journalOfProcess = &journal;
    catchCrashes();
}

Watchdog::~Watchdog()
{
    isDone = true;
    thread.join();
    journalOfProcess = nullptr;
}

void Watchdog::watch(std::int64_t limitMs) const
{
    while (!isDone) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        const std::int64_t silence = journal.silenceMs();
        if (silence <= limitMs)
            continue;
        std::fprintf(stderr, "soak: the GUI thread did not answer for %lld ms\n",
            static_cast<long long>(silence));
        std::abort();
    }
}
