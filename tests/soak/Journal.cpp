#include "Journal.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

constexpr int mostFailures = 40;

std::int64_t nowMs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

void print(const char *text)
{
    const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
    static_cast<void>(written);
}

} // namespace

Journal::Journal(std::uint64_t seedOfRun)
    : seed(seedOfRun)
    , lastBeat(nowMs())
{ }

void Journal::begin(const QString &kind, const QString &detail)
{
    beat();
    ++count;
    ++countOfKind[kind];
    current = kind + ' ' + detail;
    write(QString::number(count) + ' ' + current);
}

void Journal::note(const QString &detail)
{
    write("    " + detail);
}

void Journal::write(const QString &text)
{
    const int line = nextLine;
    auto &kept = lines[static_cast<std::size_t>(line % keptLines)];
    std::snprintf(kept.data(), kept.size(), "%s\n", text.left(lineLength / 2).toUtf8().constData());
    nextLine = line + 1;
    if (isTracing)
        print(kept.data());
}

void Journal::beat()
{
    const std::int64_t now = nowMs();
    const std::int64_t gap = now - lastBeat.exchange(now);
    if (gap <= slowestMs)
        return;
    slowestMs = gap;
    slowest = current;
}

std::int64_t Journal::silenceMs() const
{
    return nowMs() - lastBeat;
}

void Journal::fail(const QString &what)
{
    const std::lock_guard lock(failuresMutex);
    if (failureTexts.size() >= mostFailures)
        return;
    failureTexts.append(what);
    // At once, as the process may not live to write its report.
    print(("soak: " + what + '\n').toUtf8().constData());
}

bool Journal::hasFailed() const
{
    const std::lock_guard lock(failuresMutex);
    return !failureTexts.isEmpty();
}

QStringList Journal::failures() const
{
    const std::lock_guard lock(failuresMutex);
    return failureTexts;
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
