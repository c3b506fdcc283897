#pragma once

#include <QObject>

namespace zv {

/// Lets a key that is held down start no action again and again: what the keyboard repeats of Return, Escape,
/// an access key, or Space outside a text, is dropped. Keys that move or write are repeated as ever. To be
/// installed on the application.
class RepeatedKeys final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace zv
