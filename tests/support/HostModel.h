#pragma once

#include "platform/Wire.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace zv::test {

/// A CAD host that follows a script: it holds the few objects that the program knows, answers from them, and
/// misbehaves where the script says so. Carriers in front of it speak for it to the program.
///
/// The script has one directive a line:
///   delay MS                  waits before it listens anywhere
///   listen NAME               answers under this name
///   later MS NAME             answers under this name only after a while
///   version TEXT, caption TEXT
///   block NAME [xref] [layout]
///   variable NAME VALUE       whole, or with a "." a double
///   point X Y Z               what the user picks
///   answer TEXT               what the user types when he is asked, in order; "typed" once none is left
///   slow MEMBER#N MS          the Nth use of a member takes so long
///   fault MEMBER#N KIND [TEXT]   the Nth use of a member does not go well: busy, failed, cancelled, die,
///                             die-after, garbage, too-long, silent (never answers); "#*" is every use
///   transcript PATH           where each use of a member is written down
class HostModel {
public:
    enum class Kind { Application, Document, Documents, Blocks, Block, Utility };
    struct Object {
        Kind kind = Kind::Application;
        std::size_t index = 0; ///< Of a block; of a document, 1 for one that was opened here.
    };
    using Value = std::variant<wire::Value, Object, std::vector<Object>>;
    enum class Outcome {
        Answer,
        UnknownName,
        Busy,
        Failed,
        Cancelled,
        Die,
        DieAfter,
        Garbage,
        TooLong,
        Silent
    };
    struct Reply {
        Outcome outcome = Outcome::Answer;
        Value value;
        std::string text; ///< Of a failure.
    };
    struct Listening {
        int afterMs = 0;
        std::string name;
    };

    /// Reads the script; a directive that is not known ends the process.
    explicit HostModel(const std::string& scriptPath);

    Reply get(const Object& object, const std::string& name);
    Reply set(const Object& object, const std::string& name, const wire::Value& value);
    Reply call(const Object& object, const std::string& name, const wire::Values& arguments);
    Reply items(const Object& object);

    int delayMs = 0;
    std::vector<Listening> listening;

private:
    struct Block {
        std::string name;
        bool xref = false, layout = false;
    };
    struct Fault {
        std::string member; ///< In lower case.
        int use = 0;        ///< 0: every one.
        Outcome outcome = Outcome::Failed;
        std::string text;
        int slowMs = 0;
    };

    void readDirective(const std::string& line);
    static Fault faultAt(const std::string& use);
    void readFault(const std::string& words);
    Reply member(const Object& object, const std::string& name);
    Reply withFaults(const std::string& name, Reply reply);
    void note(const std::string& line);

    std::string m_version = "20.0", m_caption = "Scripted Host", m_transcript;
    std::vector<Block> m_blocks;
    std::map<std::string, wire::Value> m_variables;
    std::vector<Fault> m_faults;
    std::map<std::string, int> m_uses;
    AutomationPoint m_point{1.5, 2, 0};
    std::deque<std::string> m_answers;
    bool m_opened = false; ///< A document was opened or made here, and is the active one.
};

/// A name in lower case, for names meet without regard to case.
std::string lowered(std::string text);

} // namespace zv::test
