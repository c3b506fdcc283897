#include "controls/SortedCombo.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace zv {

SortedCombo::SortedCombo(QWidget* parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxCount(std::numeric_limits<int>::max());
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    // A text that is only left standing picks no row: nobody has chosen it.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
}

void SortedCombo::add(const QStringList& texts)
{
    QStringList rows;
    for (int row = 0; row < count(); ++row)
        rows << itemText(row);
    rows << texts;
    std::stable_sort(rows.begin(), rows.end(), [](const QString& a, const QString& b) {
        return a.compare(b, Qt::CaseInsensitive) < 0;
    });
    const QString shown = currentText();
    const QSignalBlocker noHandlers(this);
    clear();
    addItems(rows);
    setShownText(shown);
}

void SortedCombo::setShownText(const QString& text)
{
    const QSignalBlocker noHandlers(this);
    setCurrentIndex(findText(text, Qt::MatchFixedString));
    setEditText(text);
    // A name that is longer than the box begins where names are told apart.
    lineEdit()->setCursorPosition(0);
}

} // namespace zv
