#include "controls/SortedCombo.h"

#include <QCollator>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace zv {

namespace {

/// The order of the user's language, without regard to case. Where the system names no language, letters
/// stand in the order that most have in common.
QCollator rowOrder()
{
    const QLocale locale = QLocale::system();
    QCollator order(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    order.setCaseSensitivity(Qt::CaseInsensitive);
    return order;
}

} // namespace

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
    std::stable_sort(rows.begin(), rows.end(), rowOrder());
    const QString shown = currentText();
    const QSignalBlocker noHandlers(this);
    clear();
    addItems(rows);
    setShownText(shown);
}

void SortedCombo::setShownText(const QString& text)
{
    const QSignalBlocker noHandlers(this);
    // Names that differ in case alone are two.
    const int exact = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    setCurrentIndex(exact >= 0 ? exact : findText(text, Qt::MatchFixedString));
    setEditText(text);
    // A name that is longer than the box begins where names are told apart.
    lineEdit()->setCursorPosition(0);
}

} // namespace zv
