#pragma once

#include <QProxyStyle>

namespace zv {

/// The look of the program: Fusion on every system, with the program's own pictures in message boxes and none
/// on their buttons, and with boxes and options that can be seen on a dark palette.
class ProgramStyle final : public QProxyStyle {
public:
    ProgramStyle();
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
};

} // namespace zv
