#include "Report.h"

#include <algorithm>
#include <cmath>

namespace {

/// What a figure should reach.
struct Target
{
    enum class Kind { PlainDividedBy, AtMost, AtLeast };
    Kind kind;
    double limit;
    const char *text;

    bool isMet(double plain, double ours) const
    {
        if (kind == Kind::PlainDividedBy)
            return ours * limit <= plain;
        return kind == Kind::AtMost ? ours <= limit : ours >= limit;
    }
};

struct Row
{
    QString figure;
    const char *unit;
    double plain;
    double ours;
    Target target;
};

Target timesFaster(double factor, const char *text)
{
    return {Target::Kind::PlainDividedBy, factor, text};
}

Target atMost(double limit, const char *text)
{
    return {Target::Kind::AtMost, limit, text};
}

/// Both viewers' numbers of one task.
class Pair
{
public:
    Pair(const Results &measured, const QString &figure, int side)
        : results(measured)
        , plain{figure, "plain", side}
        , ours{figure, "ours", side}
    { }

    Row row(const QString &title, const Target &target, const char *number = "ms",
        const char *unit = "ms") const
    {
        return {title, unit, results.value(plain, number), results.value(ours, number), target};
    }

private:
    const Results &results;
    Task plain;
    Task ours;
};

QString sizeText(int side)
{
    return QStringLiteral("%1 million points").arg(side * double(side) / (1 << 20));
}

std::vector<Row> frameRows(const Results &results, int side)
{
    return {Pair(results, "update", side).row("update apart from drawing", timesFaster(12, "1/12")),
        Pair(results, "shown", side).row("handed over to on screen", timesFaster(8, "1/8")),
        Pair(results, "first", side).row("first frame of a process", timesFaster(5, "1/5")),
        Pair(results, "gradient", side)
            .row("colours of a gradient, more for an update", timesFaster(6, "1/6")),
        Pair(results, "save", side).row("saving ASCII PLY", timesFaster(8, "1/8")),
        Pair(results, "stall", side)
            .row("longest stall of the GUI thread, 10 frames a second", atMost(60, "60 ms"))};
}

std::vector<Row> sizeRows(const Results &results)
{
    std::vector<Row> rows;
    for (const int side : results.sidesOf("rotation")) {
        rows.push_back(Pair(results, "rotation", side)
                           .row("one step of a rotation, " + sizeText(side), atMost(50, "50 ms")));
    }
    const std::vector<int> sides = results.sidesOf("memory");
    for (const int side : sides) {
        const bool isLargest = side == sides.back();
        const Target target = isLargest ? atMost(50, "50 bytes/point") : atMost(HUGE_VAL, "");
        rows.push_back(
            Pair(results, "memory", side)
                .row("peak memory, " + sizeText(side), target, "bytes_per_point", "bytes/point"));
    }
    return rows;
}

std::vector<Row> growthRows(const Results &results, const std::vector<int> &sides)
{
    std::vector<Row> rows;
    for (const int side : sides) {
        Row row = Pair(results, "shown", side)
                      .row("on screen, for each point of " + sizeText(side), atMost(HUGE_VAL, ""));
        const double nanoseconds = 1e6 / (side * double(side));
        row.unit = "ns/point";
        row.plain *= nanoseconds;
        row.ours *= nanoseconds;
        // A tenth is left for noise.
        if (!rows.empty())
            row.target = atMost(1.1 * rows.front().ours, "no more than the smallest size");
        rows.push_back(row);
    }
    return rows;
}

Row conversionRow(const Results &results, int side)
{
    const Task task{"bandwidth", {}, side};
    const double limit =
        std::max(results.value(task, "copy_1_thread"), results.value(task, "copy_2_threads"));
    return {"heights to points, share of the copy bandwidth", "%",
        100.0 * results.value(task, "plain") / limit, 100.0 * results.value(task, "ours") / limit,
        {Target::Kind::AtLeast, 70.0, "at least 70 %"}};
}

QString bandwidthText(const Results &results, int side)
{
    const Task task{"bandwidth", {}, side};
    return QStringLiteral("Copy bandwidth, read and written: %1 GB/s with one thread, %2 GB/s with "
                          "two; the larger is the limit.\n")
        .arg(results.value(task, "copy_1_thread"), 0, 'f', 1)
        .arg(results.value(task, "copy_2_threads"), 0, 'f', 1);
}

QString stallText(const Results &results, int side)
{
    const Task plain{"stall", "plain", side};
    const Task ours{"stall", "ours", side};
    return QStringLiteral(
        "While streaming, 99 % of the GUI thread's gaps are below %1 ms (plain) and "
        "%2 ms (ours), with %3 and %4 clouds shown a second.\n")
        .arg(results.value(plain, "p99_ms"), 0, 'f', 1)
        .arg(results.value(ours, "p99_ms"), 0, 'f', 1)
        .arg(results.value(plain, "clouds_per_second"), 0, 'f', 1)
        .arg(results.value(ours, "clouds_per_second"), 0, 'f', 1);
}

QString targetText(const Row &row, bool isJudged)
{
    const QString text(row.target.text);
    if (!isJudged || text.isEmpty())
        return text;
    return text + (row.target.isMet(row.plain, row.ours) ? ": met" : ": **missed**");
}

QString numberText(double value)
{
    return QString::number(value, 'f', 1);
}

/// As a share where ours is less, as a multiple where it is more.
QString ratioText(double plain, double ours)
{
    // What is left of two noisy times may be nothing.
    if (plain <= 0.0 || ours <= 0.0)
        return QStringLiteral("-");
    return ours < plain ? "1/" + numberText(plain / ours) : numberText(ours / plain);
}

QString lineOf(const Row &row, bool isJudged)
{
    return QStringLiteral("| %1, %2 | %3 | %4 | %5 | %6 |\n")
        .arg(row.figure, row.unit, numberText(row.plain), numberText(row.ours),
            ratioText(row.plain, row.ours), targetText(row, isJudged));
}

} // namespace

QString tableOf(const Results &results, int mainSide, bool isJudged)
{
    std::vector<Row> rows = frameRows(results, mainSide);
    for (const Row &row : sizeRows(results))
        rows.push_back(row);
    for (const Row &row : growthRows(results, results.sidesOf("memory")))
        rows.push_back(row);
    rows.push_back(conversionRow(results, mainSide));

    QString table = "Figures that name no size: " + sizeText(mainSide) + ".\n\n"
        + "| figure | plain | ours | ours/plain | target |\n|---|--:|--:|--:|---|\n";
    for (const Row &row : rows)
        table += lineOf(row, isJudged);
    return table + '\n' + bandwidthText(results, mainSide) + stallText(results, mainSide);
}
