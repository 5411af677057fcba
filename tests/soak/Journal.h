#pragma once

#include <QElapsedTimer>
#include <QString>

#include <array>
#include <atomic>
#include <cstdint>

/// What the soak did: the last operations, how long the GUI thread was deaf, and whether anything
/// went wrong. Printed to stderr when the process crashes, or hangs, which ends it.
///
/// Written on the GUI thread; fail() may be called from any thread, dump() from a signal handler.
class Journal
{
public:
    /// \param hangSeconds how long the GUI thread may be deaf
    Journal(std::uint64_t seed, unsigned hangSeconds);
    ~Journal();
    Q_DISABLE_COPY_MOVE(Journal)

    /// An operation starts.
    void begin(const QString &operation);
    /// A detail of the current operation, for instance which dialog was answered.
    void note(const QString &detail);

    /// The GUI thread is alive. Gaps between two calls are its stalls.
    void beat();

    /// Tells of it at once, as the process may not live to the end.
    void fail(const QString &what);
    int failures() const { return failureCount; }

    /// Prints seed and last operations.
    void dump() const;

    int operations() const { return count; }
    qint64 slowestStallMs() const { return slowestMs; }
    QString slowestOperation() const { return slowest; }

private:
    static constexpr int keptLines = 50;
    static constexpr int lineLength = 200;

    const std::uint64_t seed;
    const unsigned hangSeconds;
    int count = 0;
    QString current;
    QString slowest;
    qint64 slowestMs = 0;
    QElapsedTimer sinceBeat;
    std::atomic<int> failureCount{0};
    // Plain characters, so that a signal handler may print them.
    std::array<std::array<char, lineLength>, keptLines> lines{};
    std::atomic<int> nextLine{0};
};
