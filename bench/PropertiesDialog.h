#pragma once

#include "drawing/Document.h"

#include <QDialog>

class QLineEdit;
class QPlainTextEdit;

namespace zv::bench {

/// The properties of a drawing, to be changed. Custom properties are lines of the form name=value.
class PropertiesDialog final : public QDialog {
    Q_OBJECT

public:
    PropertiesDialog(const dwg::Properties& properties, QWidget* parent);
    dwg::Properties properties() const;

private:
    dwg::Properties typed() const;

    dwg::Properties m_properties;
    dwg::Properties m_shown; ///< What the fields tell of it while nobody has typed there.
    QLineEdit* Title;
    QLineEdit* Subject;
    QLineEdit* Author;
    QLineEdit* Keywords;
    QPlainTextEdit* Comments;
    QPlainTextEdit* Custom;
};

} // namespace zv::bench
