#include "library/ShownNames.h"

#include "controls/PathList.h"

#include <QScrollBar>

#include <algorithm>

namespace zv {
namespace {

bool isSeparator(QChar letter)
{
    return letter == QLatin1Char('/') || letter == QLatin1Char('\\');
}

/// The folder that all rows begin with, with its separator; empty when they have none in common.
QString commonFolder(const PathList& list)
{
    QString common = list.count() > 0 ? list.item(0)->text() : QString();
    const auto cutToFolder = [&common] {
        const auto end = std::find_if(common.crbegin(), common.crend(), isSeparator);
        common.truncate(common.crend() - end);
    };
    cutToFolder();
    for (int row = 1; row < list.count() && !common.isEmpty(); ++row) {
        const QString path = list.item(row)->text();
        if (path.startsWith(common))
            continue;
        const auto differ = std::mismatch(common.cbegin(), common.cend(), path.cbegin(), path.cend());
        common.truncate(differ.first - common.cbegin());
        cutToFolder();
    }
    return common;
}

/// Holds a list where it was scrolled to, as far as its width allows it at the time, until the user scrolls
/// it elsewhere.
class Hold final : public QObject {
    Q_OBJECT

public:
    explicit Hold(PathList* list) : QObject(list), m_bar(list->horizontalScrollBar())
    {
        connect(m_bar, &QScrollBar::rangeChanged, this, [this] {
            if (m_bar->value() == m_reached)
                scroll();
        });
    }
    void scrollTo(int wanted)
    {
        m_wanted = wanted;
        scroll();
    }

private:
    void scroll()
    {
        m_bar->setValue(m_wanted);
        m_reached = m_bar->value();
    }

    QScrollBar* m_bar;
    int m_wanted = 0;
    int m_reached = 0;
};

} // namespace

void scrollToNames(PathList& list)
{
    auto* hold = list.findChild<Hold*>();
    if (!hold)
        hold = new Hold(&list);
    // How far the list can be scrolled is known once it is laid out.
    list.doItemsLayout();
    hold->scrollTo(list.fontMetrics().horizontalAdvance(commonFolder(list)));
}

} // namespace zv

#include "ShownNames.moc"
