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

} // namespace

void scrollToNames(PathList& list)
{
    // How far the list can be scrolled is known once it is laid out.
    list.doItemsLayout();
    list.horizontalScrollBar()->setValue(list.fontMetrics().horizontalAdvance(commonFolder(list)));
}

} // namespace zv
