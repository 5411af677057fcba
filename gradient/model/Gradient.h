#pragma once

#include "ColorGradient.h"
#include "Olvik3DViewerExport.h"

#include <QColor>
#include <QLinearGradient>
#include <QMetaType>
#include <QObject>
#include <QString>

#include <memory>

class QJsonObject;
class QPainter;
class QPalette;
class QRect;

/// A named colour pattern that maps heights to colours: stops on an axis from 0 to 1, whole-number
/// bounds that lay the axis over heights, and one colour each for heights below and above the
/// bounds.
///
/// The stops live twice: in a QLinearGradient, which is drawn and edited, and in a colour table,
/// which is looked up; the table follows the gradient. Copies are independent. GUI thread only,
/// except that a copy may be looked up on any one thread.
class OLVIK3DVIEWER_EXPORT Gradient : public QObject
{
    Q_OBJECT

public:
    /// No name, no stops, both bounds 0.
    /// \param number kept and copied, without any meaning here
    explicit Gradient(unsigned long number = 0);
    Gradient(const Gradient &other);
    /// Like Gradient(0) when \a other is null.
    explicit Gradient(const std::shared_ptr<Gradient> &other);
    ~Gradient() override;

    Gradient &operator=(const Gradient &other);
    /// Does nothing when \a other is null.
    Gradient &operator=(const std::shared_ptr<Gradient> &other);

    /// Takes over everything, the id included, and emits updated().
    void copyfromOther(const Gradient &other);
    /// Does nothing when \a other is null.
    void copyfromOther(const std::shared_ptr<Gradient> &other);

    /// Drops the stops; name, bounds and bound colours stay. Emits nothing.
    void reset();

    QString getName() const { return name; }
    void setName(const QString &newName);

    /// Bounds are truncated toward zero to whole numbers and held to the range of int; NaN becomes
    /// 0. While both bounds are 0 the gradient colours nothing.
    void setMin(double bound);
    void setMax(double bound);
    /// \param color colour of the heights below the bound
    void setMin(double bound, const QColor &color);
    /// \param color colour of the heights above the bound
    void setMax(double bound, const QColor &color);
    double getMin() const;
    double getMax() const;
    /// Invalid when a record gave a component outside 0..255.
    QColor getMinColor() const;
    QColor getMaxColor() const;

    /// Sets the colour at a position, new or not. Emits nothing.
    /// \param position kept as the widened float; ignored, with Qt's own warning, when NaN or outside
    /// [0, 1]
    void addStop(float position, const QColor &color);

    /// Removes the stop at exactly this position, if any. Emits nothing.
    void removeStop(double position);

    /// A stop that is moved out of [0, 1] is dropped. Emits nothing.
    /// \return false, and nothing moves, when there is no stop at exactly \a from or already one at
    /// \a to
    bool moveStop(double from, double to);

    /// Tells whether a stop lies at the position, with qFuzzyCompare's relative tolerance of 1e-12.
    bool isStop(double position) const;

    /// The stops in ascending order, none for an empty gradient, where QGradient::stops() tells of
    /// two.
    QGradientStops stops() const;

    /// Brings the colour table up to date after a change through getQtgrad().
    void updategrad();

    /// Borrowed; never null, valid as long as the gradient.
    QLinearGradient *getQtgrad() { return &qtgrad; }

    /// True when at least one stop exists.
    bool isValid() const { return colors.isValid(); }

    /// Leaves the outputs untouched while both bounds are 0 or, inside the bounds, without stops:
    /// fill them first.
    /// \param value height in the unit of the bounds, rounded to single precision
    /// \param[out] r,g,b,a components, truncated toward zero
    void getColorFromValue(double value, int &r, int &g, int &b, int &a) const;

    /// The table that getColorFromValue() looks up.
    const ColorGradient &colorTable() const { return colors; }

    /// Fills \a rect with the stops from left to right; one without stops shows Qt's black to
    /// white.
    void paint(QPainter *painter, const QRect &rect, const QPalette &palette) const;

    /// The stops' alpha is not written.
    void write(QJsonObject &json) const;

    /// Replaces everything but the id. Reads leniently: what is missing or of another type is 0, ""
    /// or no stop, stops outside [0, 1] are dropped. Emits nothing.
    ///
    /// Of more than maxStopsRead stops it takes that many, evenly spread over the record, the first
    /// and the last among them: on the screen the gradient looks the same.
    void read(const QJsonObject &json);

    /// The time to read a record grows with the square of its stops.
    static constexpr int maxStopsRead = 10000;

Q_SIGNALS:
    /// Name, bounds or bound colours were set, or all was copied from another gradient.
    void updated();

private:
    void setStops(const QGradientStops &wanted);

    QString name;
    quint64 id;
    ColorGradient colors;
    QLinearGradient qtgrad;
};

Q_DECLARE_METATYPE(Gradient)
Q_DECLARE_METATYPE(std::shared_ptr<Gradient>)
