#include "support/HostModel.h"

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>
#include <utility>

namespace zv::test {

namespace {

const char* kindName(HostModel::Kind kind)
{
    switch (kind) {
    case HostModel::Kind::Application:
        return "application";
    case HostModel::Kind::Document:
        return "document";
    case HostModel::Kind::Documents:
        return "documents";
    case HostModel::Kind::Blocks:
        return "blocks";
    case HostModel::Kind::Block:
        return "block";
    case HostModel::Kind::Utility:
        break;
    }
    return "utility";
}

HostModel::Outcome outcomeOf(const std::string& word)
{
    const std::map<std::string, HostModel::Outcome> words = {
        {"busy", HostModel::Outcome::Busy},           {"failed", HostModel::Outcome::Failed},
        {"cancelled", HostModel::Outcome::Cancelled}, {"die", HostModel::Outcome::Die},
        {"die-after", HostModel::Outcome::DieAfter},  {"garbage", HostModel::Outcome::Garbage},
        {"too-long", HostModel::Outcome::TooLong},    {"silent", HostModel::Outcome::Silent}};
    return words.at(word);
}

HostModel::Reply answered(wire::Value value)
{
    return {HostModel::Outcome::Answer, std::move(value), {}};
}

} // namespace

std::string lowered(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

HostModel::HostModel(const std::string& scriptPath)
{
    m_variables = {{"filedia", std::int64_t{1}}, {"dimscale", 1.0}, {"sdi", std::int64_t{0}}};
    std::ifstream script(scriptPath);
    for (std::string line; std::getline(script, line);)
        readDirective(line);
}

void HostModel::readDirective(const std::string& line)
{
    std::istringstream words(line);
    std::string directive;
    words >> directive >> std::ws;
    std::string rest;
    std::getline(words, rest);
    std::istringstream parts(rest);
    if (directive == "delay") {
        delayMs = std::atoi(rest.c_str());
    } else if (directive == "listen") {
        listening.push_back({0, rest});
    } else if (directive == "later") {
        Listening later;
        parts >> later.afterMs >> later.name;
        listening.push_back(later);
    } else if (directive == "version") {
        m_version = rest;
    } else if (directive == "caption") {
        m_caption = rest;
    } else if (directive == "block") {
        Block block;
        parts >> block.name;
        for (std::string mark; parts >> mark;)
            (mark == "xref" ? block.xref : block.layout) = true;
        m_blocks.push_back(block);
    } else if (directive == "variable") {
        std::string name, value;
        parts >> name >> value;
        const bool isWhole = value.find('.') == std::string::npos;
        m_variables[lowered(name)] =
            isWhole ? wire::Value(std::int64_t{std::atoll(value.c_str())}) : wire::Value(std::stod(value));
    } else if (directive == "point") {
        parts >> m_point.x >> m_point.y >> m_point.z;
    } else if (directive == "answer") {
        m_answers.push_back(rest);
    } else if (directive == "fault") {
        readFault(rest);
    } else if (directive == "slow") {
        std::string use;
        parts >> use;
        Fault slow = faultAt(use);
        parts >> slow.slowMs;
        m_faults.push_back(slow);
    } else if (directive == "transcript") {
        m_transcript = rest;
    } else if (!directive.empty()) {
        std::cerr << "no directive: " << line << "\n";
        std::exit(2);
    }
}

void HostModel::readFault(const std::string& words)
{
    std::istringstream parts(words);
    std::string use, kind;
    parts >> use >> kind >> std::ws;
    Fault fault = faultAt(use);
    std::getline(parts, fault.text);
    fault.outcome = outcomeOf(kind);
    m_faults.push_back(fault);
}

HostModel::Fault HostModel::faultAt(const std::string& use)
{
    const std::size_t mark = use.find('#');
    Fault fault;
    fault.member = lowered(use.substr(0, mark));
    fault.use = use.substr(mark + 1) == "*" ? 0 : std::atoi(use.c_str() + mark + 1);
    return fault;
}

HostModel::Reply HostModel::withFaults(const std::string& name, Reply reply)
{
    const std::string member = lowered(name);
    const int use = ++m_uses[member];
    for (const Fault& fault : m_faults) {
        if (fault.member != member || (fault.use != 0 && fault.use != use))
            continue;
        if (fault.slowMs > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(fault.slowMs));
            continue;
        }
        reply.outcome = fault.outcome;
        reply.text = fault.text;
    }
    return reply;
}

HostModel::Reply HostModel::get(const Object& object, const std::string& name)
{
    note(std::string("get ") + kindName(object.kind) + " " + name);
    return withFaults(name, member(object, lowered(name)));
}

HostModel::Reply HostModel::member(const Object& object, const std::string& name)
{
    if (object.kind == Kind::Application) {
        if (name == "version")
            return answered(m_version);
        if (name == "caption")
            return answered(m_caption);
        if (name == "activedocument")
            return {Outcome::Answer, Object{Kind::Document, m_opened ? 1U : 0U}, {}};
        if (name == "documents")
            return {Outcome::Answer, Object{Kind::Documents, 0}, {}};
    } else if (object.kind == Kind::Document) {
        if (name == "application")
            return {Outcome::Answer, Object{Kind::Application, 0}, {}};
        if (name == "blocks")
            return {Outcome::Answer, Object{Kind::Blocks, 0}, {}};
        if (name == "utility")
            return {Outcome::Answer, Object{Kind::Utility, 0}, {}};
        if (name == "objectsnapmode")
            return answered(true);
        if (name == "activespace")
            return answered(std::int64_t{1});
    } else if (object.kind == Kind::Block && object.index < m_blocks.size()) {
        const Block& block = m_blocks[object.index];
        if (name == "name")
            return answered(block.name);
        if (name == "isxref")
            return answered(block.xref);
        if (name == "islayout")
            return answered(block.layout);
    }
    return {Outcome::UnknownName, {}, "no member " + name};
}

HostModel::Reply HostModel::set(const Object& object, const std::string& name, const wire::Value& value)
{
    note(std::string("set ") + kindName(object.kind) + " " + name + " " + writeJson(toJson(value)));
    const bool known = (object.kind == Kind::Application && lowered(name) == "visible") ||
                       (object.kind == Kind::Document && lowered(name) == "objectsnapmode");
    return withFaults(name, known ? Reply{} : Reply{Outcome::UnknownName, {}, "no member " + name});
}

HostModel::Reply HostModel::call(const Object& object, const std::string& name, const wire::Values& arguments)
{
    note(std::string("call ") + kindName(object.kind) + " " + name + " " + writeJson(toJson(arguments)));
    const auto* const text = arguments.empty() ? nullptr : std::get_if<std::string>(&arguments.front());
    const std::string variable = text != nullptr ? *text : std::string();
    const std::string member = lowered(name);
    if (object.kind == Kind::Document && member == "sendcommand")
        return withFaults(name, {});
    if (object.kind == Kind::Document && member == "getvariable") {
        const auto found = m_variables.find(lowered(variable));
        if (found == m_variables.end())
            return {Outcome::Failed, {}, "unknown variable"};
        return withFaults(name, answered(found->second));
    }
    if (object.kind == Kind::Document && member == "setvariable") {
        const Reply reply = withFaults(name, {});
        if (reply.outcome == Outcome::Answer)
            m_variables[lowered(variable)] = arguments.size() > 1 ? arguments[1] : wire::Value();
        return reply;
    }
    if (object.kind == Kind::Documents && (member == "open" || member == "add")) {
        const Reply reply = withFaults(name, {Outcome::Answer, Object{Kind::Document, 1}, {}});
        m_opened = m_opened || reply.outcome == Outcome::Answer;
        return reply;
    }
    if (object.kind == Kind::Document && member == "close")
        return withFaults(name, {});
    if (object.kind == Kind::Utility && member == "getpoint")
        return withFaults(name, answered(m_point));
    if (object.kind == Kind::Utility && member == "translatecoordinates")
        return withFaults(name, answered(arguments.empty() ? wire::Value() : arguments.front()));
    if (object.kind == Kind::Utility && member == "getstring") {
        const std::string answer = m_answers.empty() ? "typed" : m_answers.front();
        if (!m_answers.empty())
            m_answers.pop_front();
        return withFaults(name, answered(answer));
    }
    return {Outcome::UnknownName, {}, "no member " + name};
}

HostModel::Reply HostModel::items(const Object& object)
{
    note(std::string("items ") + kindName(object.kind));
    if (object.kind != Kind::Blocks)
        return {Outcome::UnknownName, {}, "no collection"};
    std::vector<Object> blocks;
    for (std::size_t index = 0; index < m_blocks.size(); ++index)
        blocks.push_back({Kind::Block, index});
    return withFaults("items", {Outcome::Answer, blocks, {}});
}

void HostModel::note(const std::string& line)
{
    if (!m_transcript.empty())
        std::ofstream(m_transcript, std::ios::app | std::ios::binary) << line << "\n";
}

} // namespace zv::test
