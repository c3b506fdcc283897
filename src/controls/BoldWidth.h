#pragma once

#include <QAbstractButton>
#include <QFontMetrics>

namespace zv {

/// Width of a control when its caption is bold, as that of a chosen option is.
inline int boldWidth(const QAbstractButton* control)
{
    QFont bold = control->font();
    bold.setBold(true);
    const auto width = [control](const QFont& font) {
        return QFontMetrics(font).size(Qt::TextShowMnemonic, control->text()).width();
    };
    return control->sizeHint().width() + width(bold) - width(control->font());
}

} // namespace zv
