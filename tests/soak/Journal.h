#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

/// What the soak did and what went wrong: the last operations, how often each kind was done, how
/// long the GUI thread was deaf, and the failures.
///
/// Written on the GUI thread; fail(), silenceMs() and dump() may be called from any thread, dump()
/// from a signal handler as well.
class Journal
{
public:
    explicit Journal(std::uint64_t seed);

    /// An operation starts. \param kind what it is counted as
    void begin(const QString &kind, const QString &detail);
    /// A detail of the current operation, for instance which dialog was answered.
    void note(const QString &detail);

    /// The GUI thread is alive. Gaps between two calls are its stalls.
    void beat();
    /// \return time since the last beat
    std::int64_t silenceMs() const;

    void fail(const QString &what);
    bool hasFailed() const;
    QStringList failures() const;

    /// Prints seed and last operations to stderr.
    void dump() const;

    int operations() const { return count; }
    const QMap<QString, int> &kinds() const { return countOfKind; }
    std::int64_t slowestStallMs() const { return slowestMs; }
    QString slowestOperation() const { return slowest; }

private:
    static constexpr int keptLines = 50;
    static constexpr int lineLength = 200;

    void write(const QString &text);

    const std::uint64_t seed;
    const bool isTracing =
        qEnvironmentVariableIsSet("SOAK_TRACE"); ///< each line at once, to stderr
    int count = 0;
    QMap<QString, int> countOfKind;
    QString current;
    QString slowest;
    std::int64_t slowestMs = 0;
    std::atomic<std::int64_t> lastBeat;
    mutable std::mutex failuresMutex;
    QStringList failureTexts;
    // Plain characters, so that a signal handler may print them.
    std::array<std::array<char, lineLength>, keptLines> lines{};
    std::atomic<int> nextLine{0};
};
