#pragma once

#include <QComboBox>

namespace zv {

/// A combo box whose rows stand sorted without regard to case. Its text may be one that is no row. A row is
/// picked in the list, by the arrows or by Enter; a text that is left standing picks none.
class SortedCombo : public QComboBox {
    Q_OBJECT

public:
    explicit SortedCombo(QWidget* parent = nullptr);

    /// Adds rows where they sort, behind equal ones. The text shown stays as it is.
    void add(const QStringList& texts);
    /// Shows a text, whether it is a row or not; no handler runs.
    void setShownText(const QString& text);
};

} // namespace zv
