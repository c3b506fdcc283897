#pragma once

#include "platform/Messages.h"

#include <functional>
#include <vector>

namespace zv {

/// Message boxes as a test meets them: told and answered without a box.
class AnsweredMessages final : public Messages {
public:
    void show(const Message& message) override
    {
        shown.push_back(message);
        if (whileShown)
            whileShown();
    }
    bool ask(const Message& message) override
    {
        show(message);
        return yes;
    }
    std::optional<bool> askOrClose(const Message& message) override
    {
        show(message);
        return closes ? std::nullopt : std::optional(yes);
    }
    bool confirm(const Message& message) override { return ask(message); }

    std::vector<Message> shown;       ///< Every one, questions among them.
    bool yes = false;                 ///< The answer to questions.
    bool closes = false;              ///< Questions that can be left open are.
    std::function<void()> whileShown; ///< Runs while a message stands.
};

} // namespace zv
