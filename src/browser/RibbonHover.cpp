#include "browser/RibbonHover.h"

#include "browser/Zelvora.h"
#include "controls/CaptionFrame.h"
#include "controls/PictureButton.h"

#include <QEvent>
#include <QRadioButton>

#include <algorithm>
#include <utility>

namespace zv {
namespace {

const QColor kBorderAtRest(0x80, 0x80, 0x80);
const QColor kBorderLit(0xff, 0x80, 0x00);

} // namespace

RibbonHover::RibbonHover(Zelvora& window) : QObject(&window), m_window(window)
{
    Zelvora& w = window;
    for (QWidget* plain : std::initializer_list<QWidget*>{
             w.Command10, w.Command12, w.Command13, w.Command14, w.Command15, w.Command16, w.Command18,
             w.Command21, w.Command22, w.Command1, w.Command8, w.Command9, w.Command7, w.Command24,
             w.Picture12, w.Picture9, w.Picture5})
        m_controls.push_back({plain, false});
    for (QWidget* bold : {w.Command4, w.Command5, w.Command2, w.Command3, w.Command11})
        m_controls.push_back({bold, true});
    for (const Control& control : m_controls)
        control.widget->installEventFilter(this);
    for (QWidget* ground : std::initializer_list<QWidget*>{&w, w.Picture3, w.Picture14, w.Picture4, w.Frame1,
                                                           w.Frame2, w.Frame4, w.Frame8}) {
        ground->setMouseTracking(true);
        ground->installEventFilter(this);
    }
    rest();
}

void RibbonHover::rest()
{
    light(nullptr);
}

void RibbonHover::light(QWidget* lit)
{
    for (const Control& control : m_controls)
        show(control, control.widget == lit && control.widget->isEnabled());
}

void RibbonHover::show(const Control& control, bool lit)
{
    const Picture picture = pictureOf(control.widget, lit);
    if (auto* box = qobject_cast<PictureBox*>(control.widget))
        box->setPicture(picture.list, picture.index);
    else
        static_cast<PictureButton*>(control.widget)->setPicture(picture.list, picture.index);
    if (control.turnsBold) {
        QFont font = control.widget->font();
        font.setBold(lit);
        control.widget->setFont(font);
    }
    if (control.widget == m_window.Command4)
        m_window.Command4->setBorderColor(lit ? kBorderLit : kBorderAtRest);
}

RibbonHover::Picture RibbonHover::pictureOf(const QWidget* control, bool lit) const
{
    const Zelvora& w = m_window;
    const ImageList& a = ImageList::a();
    const ImageList& b = ImageList::b();
    const bool first = w.fields.RibbonTab == 0;
    if (control == w.Picture5)
        return {a, lit ? 5 : (first ? 3 : 4)};
    if (control == w.Picture9)
        return {a, lit ? 12 : (first ? 11 : 10)};
    if (control == w.Command11)
        return {b, actionPicture(lit)};
    if (control == w.Command12)
        return {b, w.fields.panels.isEnlarged() ? 2 : 1};

    struct Row {
        const QWidget* control;
        const ImageList& list;
        int over;
        int atRest;
    };
    const Row rows[] = {
        {w.Command10, b, 28, 27}, {w.Command13, b, 26, 25}, {w.Command14, b, 34, 33},
        {w.Command15, b, 36, 35}, {w.Command16, b, 22, 21}, {w.Command18, b, 30, 29},
        {w.Command21, b, 32, 31}, {w.Command22, b, 24, 23}, {w.Command5, a, 14, 13},
        {w.Picture12, b, 12, 11}, {w.Command2, b, 5, 3},    {w.Command3, b, 4, 4},
        {w.Command1, a, 2, 1},    {w.Command8, a, 7, 6},    {w.Command9, a, 9, 8},
        {w.Command4, b, 9, 10},   {w.Command7, b, 30, 29},  {w.Command24, b, 6, 6},
    };
    const auto row =
        std::find_if(std::begin(rows), std::end(rows), [&](const Row& r) { return r.control == control; });
    return {row->list, lit ? row->over : row->atRest};
}

int RibbonHover::actionPicture(bool lit) const
{
    const int atRest = m_window.Option2->isChecked()   ? 19
                       : m_window.Option3->isChecked() ? 17
                       : m_window.Option4->isChecked() ? 13
                                                       : 15;
    return lit ? atRest + 1 : atRest;
}

bool RibbonHover::eventFilter(QObject* watched, QEvent* event)
{
    // A quick mouse may jump off a button without touching the ground around it.
    if (event->type() == QEvent::MouseMove)
        light(static_cast<QWidget*>(watched));
    else if (event->type() == QEvent::Leave)
        rest();
    return QObject::eventFilter(watched, event);
}

} // namespace zv
