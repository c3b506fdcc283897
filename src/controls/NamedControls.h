#pragma once

#include "controls/CaptionFrame.h"

#include <QLabel>
#include <QPushButton>

#include <utility>

namespace zv {

/// Makes a control under its object name.
template <class Control, class... Rest> Control* named(const char* name, QWidget* parent, Rest&&... rest)
{
    auto* control = new Control(std::forward<Rest>(rest)..., parent);
    control->setObjectName(QLatin1String(name));
    return control;
}

inline CaptionFrame* namedFrame(const char* name, const QString& caption, QWidget* parent)
{
    auto* frame = named<CaptionFrame>(name, parent);
    frame->setTitle(caption);
    return frame;
}

inline QPushButton* namedButton(const char* name, const QString& caption, QWidget* parent,
                                const QString& tip = {})
{
    auto* button = named<QPushButton>(name, parent);
    button->setText(caption);
    // Return presses the button that has the focus, as Space does.
    button->setAutoDefault(true);
    button->setToolTip(tip);
    return button;
}

/// A label that tells what `field` is for, also to those who cannot see it.
inline QLabel* labelFor(QWidget* field, const char* name, const QString& text, QWidget* parent)
{
    auto* label = named<QLabel>(name, parent);
    label->setText(text);
    label->setBuddy(field);
    QString spoken = text;
    field->setAccessibleName(spoken.remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    return label;
}

} // namespace zv
