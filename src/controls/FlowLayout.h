#pragma once

#include <QLayout>
#include <QVector>

namespace zv {

/// Controls in lines, like words: what one line does not hold goes on in further ones of about the same
/// length, in columns where it can. What is wider than a line alone is made narrower. Controls that are
/// hidden take no room.
class FlowLayout final : public QLayout {
public:
    enum class Place {
        Next,    ///< In the line, while there is room.
        NewLine, ///< At the start of a line of its own, with what follows.
        Beside,  ///< Never parted from the one before it.
        Right,   ///< At the right end of its line, with all that follow in it.
    };

    explicit FlowLayout(QWidget* parent, int spacing);
    ~FlowLayout() override;

    /// `gap` is what stands between the control and the one before it, in pixels; -1: the layout's spacing.
    void addControl(QWidget* control, Place place, int gap = -1);

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_entries.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override { return {0, 0}; }
    void setGeometry(const QRect& area) override;

private:
    struct Entry {
        QLayoutItem* item;
        Place place;
        int gap;
    };
    using Line = QVector<const Entry*>;

    QVector<QVector<Line>> groups(int width) const;
    static QVector<Line> broken(const Line& group, int width);
    static int heightOf(const Line& line);
    static int widthOf(const Line& line);
    static QVector<int> columnsOf(const QVector<Line>& group, int width);
    static void setLine(const Line& line, const QVector<int>& columns, const QRect& area);

    QVector<Entry> m_entries;
};

} // namespace zv
