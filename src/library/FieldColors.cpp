#include "library/FieldColors.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace zv {
namespace {

constexpr QColor kPaleYellow(255, 255, 192);

} // namespace

void setGround(QWidget* field, Ground ground)
{
    QPalette colors = QApplication::palette(field);
    if (ground == Ground::ButtonFace) {
        colors.setColor(QPalette::Base, colors.color(QPalette::Button));
    } else if (ground == Ground::PaleYellow) {
        // The ground is the same in a dark palette, so the text on it has to be dark there too.
        colors.setColor(QPalette::Base, kPaleYellow);
        colors.setColor(QPalette::Text, Qt::black);
    }
    field->setPalette(colors);
}

void setInPlay(QWidget* control, bool inPlay)
{
    control->setEnabled(inPlay);
    setGround(control, inPlay ? Ground::Window : Ground::ButtonFace);
}

void setRedText(QWidget* field, bool red)
{
    QPalette colors = QApplication::palette(field);
    if (red)
        colors.setColor(QPalette::Text, Qt::red);
    field->setPalette(colors);
}

} // namespace zv
