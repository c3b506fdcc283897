#pragma once

#include <optional>
#include <string>

namespace zv {

/// The icons of message boxes under their system numbers.
enum class MessageIcon { None = 0, Critical = 16, Question = 32, Warning = 48, Information = 64 };

/// One message box. An empty title stands for "Zelvora". Texts are the program's own (see Text.h).
struct Message {
    std::string text;
    std::string title;
    MessageIcon icon = MessageIcon::None;
};

/// Questions to the user, handed in so that a test can answer them.
class Messages {
public:
    virtual ~Messages() = default;
    /// Shows the message with the one button OK and returns when it is answered.
    virtual void show(const Message& message) = 0;
    /// Asks with the buttons Yes and No; true for Yes. Closing the box is No.
    virtual bool ask(const Message& message) = 0;
    /// Asks with the buttons Yes and No; no answer when the box is closed without either.
    virtual std::optional<bool> askOrClose(const Message& message) = 0;
    /// Asks with the buttons OK and Cancel; true for OK. Closing the box is Cancel.
    virtual bool confirm(const Message& message) = 0;
};

} // namespace zv
