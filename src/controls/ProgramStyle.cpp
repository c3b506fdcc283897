#include "controls/ProgramStyle.h"

#include "controls/ImageList.h"

namespace zv {
namespace {

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

QIcon ProgramStyle::standardIcon(StandardPixmap which, const QStyleOption* option,
                                 const QWidget* widget) const
{
    const char* const picture = pictureFor(which);
    return picture ? namedPicture(QString::fromLatin1(picture))
                   : QProxyStyle::standardIcon(which, option, widget);
}

} // namespace zv
