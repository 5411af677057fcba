#include "Journal.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <execinfo.h>
#include <iterator>
#include <unistd.h>

// Only there in sanitized builds, which handle the signals of crashes themselves.
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

constexpr int mostFailuresTold = 40;

const Journal *journalOfProcess = nullptr;

void print(const char *text)
{
    const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
    static_cast<void>(written);
}

void printJournal()
{
    if (journalOfProcess)
        journalOfProcess->dump();
}

extern "C" void onSignal(int number)
{
    if (number == SIGALRM)
        print("soak: the GUI thread does not answer\n");
    printJournal();
    void *frames[60];
    backtrace_symbols_fd(frames, backtrace(frames, std::size(frames)), STDERR_FILENO);
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

Journal::Journal(std::uint64_t seedOfRun, unsigned longestSilence)
    : seed(seedOfRun)
    , hangSeconds(longestSilence)
{
    journalOfProcess = this;
    std::signal(SIGABRT, onSignal);
    std::signal(SIGALRM, onSignal);
    if (__sanitizer_set_death_callback) {
        __sanitizer_set_death_callback(printJournal);
    } else {
        for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL})
            std::signal(number, onSignal);
    }
    sinceBeat.start();
    beat();
}

Journal::~Journal()
{
    ::alarm(0);
    journalOfProcess = nullptr;
}

void Journal::begin(const QString &operation)
{
    beat();
    ++count;
    current = operation;
    note(QString::number(count) + ' ' + operation);
}

void Journal::note(const QString &detail)
{
    const int line = nextLine;
    auto &kept = lines[static_cast<std::size_t>(line % keptLines)];
    std::snprintf(
        kept.data(), kept.size(), "%s\n", detail.left(lineLength / 2).toUtf8().constData());
    nextLine = line + 1;
}

void Journal::beat()
{
    ::alarm(hangSeconds);
    const qint64 gap = sinceBeat.restart();
    if (gap <= slowestMs)
        return;
    slowestMs = gap;
    slowest = current;
}

void Journal::fail(const QString &what)
{
    if (++failureCount <= mostFailuresTold)
        print(("soak: " + what + '\n').toUtf8().constData());
}

void Journal::dump() const
{
    char head[80];
    std::snprintf(head, sizeof head, "soak: seed %llu, last operations:\n",
        static_cast<unsigned long long>(seed));
    print(head);
    const int end = nextLine;
    for (int line = std::max(0, end - keptLines); line < end; ++line)
        print(lines[static_cast<std::size_t>(line % keptLines)].data());
}
