#pragma once

#include "platform/Messages.h"

namespace zv {

/// The program's own message boxes, above the window that is active.
class MessageBoxes final : public Messages {
public:
    void show(const Message& message) override;
    bool ask(const Message& message) override;
    std::optional<bool> askOrClose(const Message& message) override;
    bool confirm(const Message& message) override;
};

} // namespace zv
