#pragma once

#include <QHash>
#include <QObject>
#include <QRect>
#include <QVector>

class QWidget;

namespace zv {

/// One axis of a layout in proportion: how far each design edge stands from the start. Every distance keeps
/// its share of the whole, save that a control which must stay readable keeps its least length, and the
/// others make room for it.
class ProportionalAxis {
public:
    /// `from` and `to` are design edges (0 <= from < to <= whole); `least` is a length in pixels.
    void add(int from, int to, int least);
    /// Works the edges out for an actual length. `whole` is the design length, 1 or more.
    void solve(int whole, int actual);
    /// Where a design edge that was added stands after solve().
    int at(int edge) const { return m_positions.value(edge); }

private:
    struct Span {
        int from;
        int to;
        int least;
    };
    QVector<Span> m_spans;
    QHash<int, int> m_positions;
};

/// Lays the controls of a form out in proportion to their places in its design. Fonts stay as they are.
/// It follows the form's size by itself and tells when everything stands in its new place.
class Resizer : public QObject {
    Q_OBJECT

public:
    /// `designSize` is the inner size of the form, in logical pixels, that the places belong to.
    Resizer(QWidget* form, QSize designSize);

    /// Adds a control with its design place inside its parent. The parent is the form, or a control that was
    /// added before. `least` is the smallest size in pixels at which the control can be read; a zero lets
    /// that side shrink freely. A least size that depends on font or caption is given anew by setLeast().
    void place(QWidget* control, const QRect& design, QSize least = {0, 0});
    /// Keeps an area of a parent from shrinking below `least` though no control stands in it.
    void reserve(QWidget* parent, const QRect& design, QSize least);
    /// Changes a control's least size; it counts from the next layout on.
    void setLeast(QWidget* control, QSize least);
    /// The design place that the control was given; an empty one when it was not.
    QRect designPlace(const QWidget* control) const;
    /// The design size itself, to which everything is laid out anew.
    void setDesignSize(QSize designSize);
    /// Lays everything out now, for the form's present size.
    void layOut();

Q_SIGNALS:
    /// Everything is about to be laid out: the time for least sizes that depend on the form's.
    void aboutToLayOut();
    /// Every control stands in its new place.
    void resized();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        QWidget* parent;
        QWidget* control; ///< Null for a reserved area.
        QRect design;
        QSize least;
    };
    void layOutInside(const QWidget* parent, QSize designSize);

    QWidget* m_form;
    QSize m_designSize;
    QVector<Entry> m_entries;
};

} // namespace zv
