#pragma once

#include "drawing/Document.h"

#include <memory>
#include <optional>
#include <string>

namespace zv::bench {

class Workshop;

/// A block that is shown where it would stand if the question were answered by the pointer.
struct DraggedBlock {
    dwg::Handle block = 0;
    dwg::Point3 scale{1, 1, 1};
    double rotation = 0; ///< Radians.
    /// Where it stands once that is settled; the pointer then turns it if `turns`.
    std::optional<dwg::Point3> at;
    bool turns = false;
};

/// What the command line asks for.
struct Prompt {
    std::string text;
    bool takesBlanks = false; ///< A blank belongs to the answer; only Enter ends it.
    bool takesPoint = false;  ///< A pick on the canvas answers it.
    /// Where a line to the pointer starts while a point is asked for.
    std::optional<dwg::Point3> rubberFrom;
    std::optional<DraggedBlock> dragged = {};
    /// A corner of a rectangle to the pointer.
    std::optional<dwg::Point3> boxFrom = {};
};

/// An answer to a prompt: a typed text, empty for Enter alone, or a point picked or computed.
struct Answer {
    std::string text;
    std::optional<dwg::Point3> point;
    bool scripted = false; ///< It came from a LISP expression.

    bool isEnter() const { return !point && text.empty(); }
};

enum class Step {
    More,    ///< Another prompt waits.
    Done,    ///< The command has ended.
    Invalid, ///< The answer does not fit; the same prompt waits again.
};

/// A running command: it asks, one prompt at a time, and is told the answers.
class Command {
public:
    virtual ~Command() = default;
    /// Runs up to the first prompt.
    virtual Step begin() { return Step::More; }
    virtual Prompt prompt() const = 0;
    virtual Step answer(const Answer& answer) = 0;
    /// The user has pressed Esc, or another command has taken over.
    virtual void cancelled() {}
};

/// The point of an answer: picked, or typed as "x,y" or "x,y,z", with "@" in front from `last` on.
std::optional<dwg::Point3> pointOf(const Answer& answer, const dwg::Point3& last = {});
/// The number of a typed answer.
std::optional<double> numberOf(const Answer& answer);
/// Whether the typed answer is `option` or an abbreviation that holds at least its capitals' beginning; "_"
/// in front is ignored: "e", "ext" and "_Extents" all mean "Extents".
bool isOption(const Answer& answer, const char* option);

/// What fits a prompt, in words.
std::string expectation(const Prompt& prompt);

/// A command that was asked for, or why it cannot run.
struct CommandStart {
    std::unique_ptr<Command> command;
    std::string reason;
};
/// The command of this name, in capitals without its prefixes.
CommandStart makeCommand(const std::string& name, Workshop& workshop);

} // namespace zv::bench
