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

/// A named colour pattern that maps heights to colours: stops between a lower and an upper bound,
/// and one colour each for heights below and above them.
///
/// Keeps the stops twice: as a QLinearGradient, which editors draw and change, and as a
/// ColorGradient, which colours heights. Copies are independent and own no parent. Shared objects
/// live on the GUI thread; a copy that nobody changes may be read from any thread.
class OLVIK3DVIEWER_EXPORT Gradient : public QObject
{
    Q_OBJECT

public:
    /// No name, no stops, both bounds 0.
    explicit Gradient(unsigned long id = 0);
    Gradient(const Gradient &other);
    /// A copy; an empty gradient for a null pointer.
    explicit Gradient(std::shared_ptr<Gradient> other);
    Gradient &operator=(const Gradient &other);
    /// Does nothing for a null pointer.
    Gradient &operator=(const std::shared_ptr<Gradient> &other);

    /// Takes over everything, the name included, and emits updated().
    void copyfromOther(const Gradient &other);
    /// Does nothing for a null pointer.
    void copyfromOther(std::shared_ptr<Gradient> other);

    /// Removes all stops; keeps name, bounds and bound colours. Emits nothing.
    void reset();

    QString getName() const { return name; }
    void setName(const QString &newName);

    /// Bounds are whole numbers in the unit of the heights, truncated toward zero. A value that
    /// fits into no 32-bit integer, NaN included, becomes the smallest one.
    void setMin(double value);
    void setMin(double value, QColor color);
    void setMax(double value);
    void setMax(double value, QColor color);
    double getMin() const { return table.getMin(); }
    double getMax() const { return table.getMax(); }
    /// Colour of heights below the lower bound; invalid when a loaded component is not in 0 to 255.
    QColor getMinColor() const;
    QColor getMaxColor() const;

    /// Adds a stop, or recolours the one at exactly this position. Ignored outside [0, 1]. The
    /// position is widened to double, so a stop added at 0.3f is not found at 0.3. Emits nothing.
    void addStop(float position, QColor color);

    /// Removes the first stop at exactly this position, if any. Emits nothing.
    void removeStop(double position);

    /// Moves all stops from exactly one position to another; outside [0, 1] they are lost. Emits
    /// nothing. \return false when no stop was moved, in particular when there is one at \a to
    /// already
    bool moveStop(double from, double to);

    /// Whether there is a stop at a position, up to a relative difference of 10^-12.
    bool isStop(double position) const;

    /// Takes the stops over from getQtgrad(), for callers that changed them there.
    void updategrad();
    /// The stops as Qt knows them; never null. QGradient::stops() answers black and white when
    /// there are none.
    QLinearGradient *getQtgrad() { return &qtgrad; }

    /// Whether there is any stop.
    bool isValid() const { return table.isValid(); }

    /// Looks a height up. Leaves the outputs untouched while both bounds are 0 or there is no stop:
    /// fill them first. \param r,g,b,a components, 0 to 255
    void getColorFromValue(double value, int &r, int &g, int &b, int &a) const;

    /// Fills a rectangle with the stops, position 0 at its left edge.
    void paint(QPainter *painter, const QRect &rect, const QPalette &palette) const;

    /// Writes the record of the gradients file. The stops' alpha is not kept.
    void write(QJsonObject &json) const;
    /// Reads such a record. Whatever is missing or of another type counts as 0, "" or no stop;
    /// stops outside [0, 1] are dropped. Emits nothing.
    void read(const QJsonObject &json);

Q_SIGNALS:
    void updated();

private:
    QString name;
    unsigned long id;
    ColorGradient table;
    QLinearGradient qtgrad;
};

Q_DECLARE_METATYPE(Gradient)
Q_DECLARE_METATYPE(std::shared_ptr<Gradient>)
