#include "Heights.h"
#include "Measurements.h"
#include "plain/PlainConverter.h"
#include "ScanConverter.h"
#include "Statistics.h"
#include "Stopwatch.h"

#include <cstring>
#include <thread>

namespace {

/// A height is read and a point is written.
constexpr double bytesPerPoint = sizeof(float) + 3 * sizeof(float);

/// As the worker does from its second frame on: into memory of the frame before.
class WarmConversion
{
public:
    void operator()(const Heights &heights, int side)
    {
        converter.convert(heights.data(), side, side, true);
    }

private:
    ScanConverter converter;
};

void convertPlain(Heights &heights, int side)
{
    PlainConverter::pointsOf(heights.data(), side, side);
}

/// Copies half of the buffer onto the other half.
class Copying
{
public:
    explicit Copying(double traffic)
        : source(static_cast<std::size_t>(traffic / 2), 1)
        , target(source.size(), 2)
    { }

    void inOneThread() { copy(0, source.size()); }
    void inTwoThreads()
    {
        const std::size_t half = source.size() / 2;
        std::thread other([this, half] { copy(0, half); });
        copy(half, source.size());
        other.join();
    }

private:
    void copy(std::size_t begin, std::size_t end)
    {
        std::memcpy(target.data() + begin, source.data() + begin, end - begin);
    }

    std::vector<char> source;
    std::vector<char> target;
};

/// Median rates of jobs that take turns, in GB read and written per second.
class Contest
{
public:
    explicit Contest(double bytesMoved)
        : traffic(bytesMoved)
    { }

    void add(const QString &name, std::function<void()> job)
    {
        entries.push_back({name, std::move(job), {}});
    }

    QJsonObject run(int rounds)
    {
        for (int round = 0; round < rounds; ++round) {
            for (Entry &entry : entries)
                entry.rates.push_back(rateOf(entry.job));
        }
        QJsonObject rates;
        for (const Entry &entry : entries)
            rates[entry.name] = median(entry.rates);
        return rates;
    }

private:
    struct Entry
    {
        QString name;
        std::function<void()> job;
        std::vector<double> rates;
    };

    double rateOf(const std::function<void()> &job) const
    {
        const Stopwatch watch;
        job();
        return traffic / (1e6 * watch.milliseconds());
    }

    double traffic;
    std::vector<Entry> entries;
};

} // namespace

QJsonObject measureBandwidth(const Task &task)
{
    const double traffic = bytesPerPoint * task.points();
    Heights heights = surface(task.side, 0.0f);
    Copying copying(traffic);
    Contest contest(traffic);
    WarmConversion convertOurs;
    contest.add("copy_1_thread", [&] { copying.inOneThread(); });
    contest.add("copy_2_threads", [&] { copying.inTwoThreads(); });
    contest.add("ours", [&] { convertOurs(heights, task.side); });
    contest.add("plain", [&] { convertPlain(heights, task.side); });
    return contest.run(task.repeats);
}
