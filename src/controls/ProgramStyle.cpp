#include "controls/ProgramStyle.h"

#include "controls/ImageList.h"

#include <QPainter>
#include <QStyleOption>

namespace zv {
namespace {

const QColor kWindowOfOutline(210, 210, 210); ///< Its outline stands out from any dark ground.

/// The picture that stands in the place of a system's one; null when the system's own stays.
const char* pictureFor(QStyle::StandardPixmap which)
{
    switch (which) {
    case QStyle::SP_MessageBoxInformation:
        return "message-information";
    case QStyle::SP_MessageBoxWarning:
        return "message-warning";
    case QStyle::SP_MessageBoxCritical:
        return "message-critical";
    case QStyle::SP_MessageBoxQuestion:
        return "help";
    default:
        return nullptr;
    }
}

} // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

int ProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* returnData) const
{
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}

// Fusion draws the outline darker than the window, which on a dark one is as good as none.
void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    const bool isMark = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (!isMark || !button || button->palette.window().color().lightness() >= 128) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    QStyleOptionButton outlined(*button);
    outlined.palette.setColor(QPalette::Window, kWindowOfOutline);
    QProxyStyle::drawPrimitive(element, &outlined, painter, widget);
}

QIcon ProgramStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                 const QWidget* widget) const
{
    const char* const picture = pictureFor(which);
    return picture ? namedPicture(QString::fromLatin1(picture))
                   : QProxyStyle::standardIcon(which, option, widget);
}

} // namespace zv
