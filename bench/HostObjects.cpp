#include "HostObjects.h"

#include "HostValues.h"

#include "platform/Text.h"

namespace zv::bench {
namespace {

const wire::Value kApplication = wire::ObjectNumber{0};

} // namespace

HostObjects::~HostObjects()
{
    if (*m_asking)
        m_program.commandLine.cancel();
}

void HostObjects::handle(const wire::Request& request, const Respond& respond)
{
    const Finish finish = [respond, id = request.id](wire::Content content) {
        respond({id, std::move(content)});
    };
    Reply reply = answer(request, finish);
    if (auto* value = std::get_if<wire::Value>(&reply))
        finish(std::move(*value));
    else if (auto* values = std::get_if<wire::Values>(&reply))
        finish(std::move(*values));
    else if (auto* failure = std::get_if<wire::Failure>(&reply))
        finish(std::move(*failure));
}

HostObjects::Reply HostObjects::answer(const wire::Request& request, const Finish& finish)
{
    if (!request.fault.empty())
        return wire::Failure{wire::FailureCode::BadArgument, request.fault};
    if (request.operation == wire::Operation::Release) {
        m_objects.erase(request.object);
        return wire::Value();
    }
    if (m_program.inCall || m_program.frame.isInDialog())
        return wire::Failure{wire::FailureCode::Busy, "The program waits for its user"};
    Object object;
    if (request.object != 0) {
        const auto found = m_objects.find(request.object);
        if (found == m_objects.end())
            return badArgument("There is no such object");
        object = found->second;
    }
    if (!isOpen(object))
        return failed("The drawing has been closed");
    const std::string name = upper(wire::receivedText(request.name));
    switch (request.operation) {
    case wire::Operation::Get:
        return get(object, name);
    case wire::Operation::Set:
        return set(object, name, request.value);
    case wire::Operation::Call:
        return call(object, name, request.arguments, finish);
    case wire::Operation::Items:
    case wire::Operation::Release:
        break;
    }
    return items(object);
}

bool HostObjects::isOpen(const Object& object) const
{
    if (!object.drawing)
        return true;
    for (const auto& drawing : m_program.workshop.drawings()) {
        if (drawing == object.drawing)
            return true;
    }
    return false;
}

wire::Value HostObjects::give(Object object)
{
    m_objects[++m_lastNumber] = std::move(object);
    return wire::ObjectNumber{m_lastNumber};
}

HostObjects::Reply HostObjects::get(const Object& object, const std::string& name)
{
    switch (object.kind) {
    case Kind::Application:
        return getApplication(name);
    case Kind::Document:
        return getDocument(object, name);
    case Kind::Block:
        return getBlock(object, name);
    case Kind::Documents:
        if (name == "COUNT")
            return wire::Value(static_cast<std::int64_t>(m_program.workshop.drawings().size()));
        break;
    case Kind::Blocks:
        if (name == "COUNT")
            return wire::Value(static_cast<std::int64_t>(object.drawing->document().blocks.size()));
        break;
    case Kind::Utility:
        break;
    }
    if (name == "APPLICATION")
        return kApplication;
    return unknownName(name);
}

HostObjects::Reply HostObjects::getApplication(const std::string& name)
{
    const HostFrame& frame = m_program.frame;
    if (name == "VERSION")
        return textValue(m_program.workshop.variables().text("ACADVER"));
    if (name == "CAPTION")
        return textValue(frame.caption());
    if (name == "NAME")
        return wire::Value("AutoCAD");
    if (name == "FULLNAME")
        return textValue(frame.programPath());
    if (name == "PATH")
        return textValue(folderOf(frame.programPath()));
    if (name == "VISIBLE")
        return wire::Value(frame.isShown());
    if (name == "HWND")
        return wire::Value(frame.windowHandle());
    if (name == "WINDOWSTATE")
        return wire::Value(std::int64_t{frame.windowState()});
    if (name == "DOCUMENTS")
        return give({Kind::Documents, nullptr, 0});
    if (name == "APPLICATION")
        return kApplication;
    if (name == "ACTIVEDOCUMENT") {
        if (!m_program.workshop.active())
            return failed("No Document object");
        return give({Kind::Document, m_program.workshop.active(), 0});
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::getDocument(const Object& object, const std::string& name)
{
    BenchDrawing& drawing = *object.drawing;
    if (name == "NAME" || name == "WINDOWTITLE")
        return textValue(drawing.title());
    if (name == "FULLNAME")
        return textValue(drawing.path());
    if (name == "PATH")
        return textValue(folderOf(drawing.path()));
    if (name == "SAVED")
        return wire::Value(!drawing.isModified());
    if (name == "READONLY")
        return wire::Value(!drawing.path().empty() && drawing.isFileReadOnly());
    if (name == "ACTIVE")
        return wire::Value(m_program.workshop.active() == object.drawing);
    if (name == "APPLICATION")
        return kApplication;
    if (name == "BLOCKS")
        return give({Kind::Blocks, object.drawing, 0});
    if (name == "UTILITY")
        return give({Kind::Utility, object.drawing, 0});
    if (name == "ACTIVESPACE")
        return wire::Value(std::int64_t{1});
    if (name == "OBJECTSNAPMODE")
        return wire::Value((drawing.variables().whole("OSMODE") & kSnapsSuppressed) == 0);
    return unknownName(name);
}

HostObjects::Reply HostObjects::getBlock(const Object& object, const std::string& name)
{
    const dwg::BlockRecord* const block = object.drawing->document().block(object.block);
    if (block == nullptr)
        return failed("The block has been deleted");
    if (name == "NAME")
        return textValue(narrow(block->name));
    if (name == "ISLAYOUT")
        return wire::Value(block->layout);
    if (name == "ISXREF")
        return wire::Value(block->xref);
    if (name == "COUNT")
        return wire::Value(static_cast<std::int64_t>(block->entities.size()));
    if (name == "PATH")
        return textValue(narrow(block->xrefPath));
    return unknownName(name);
}

HostObjects::Reply HostObjects::set(const Object& object, const std::string& name, const wire::Value& value)
{
    if (object.kind == Kind::Application && name == "VISIBLE") {
        const bool* const shown = std::get_if<bool>(&value);
        if (shown == nullptr)
            return badArgument("Visible takes true or false");
        m_program.frame.setShown(*shown);
        return wire::Value();
    }
    if (object.kind == Kind::Application && name == "WINDOWSTATE") {
        const auto* const state = std::get_if<std::int64_t>(&value);
        if (state == nullptr || *state < 1 || *state > 3)
            return badArgument("WindowState takes 1, 2 or 3");
        m_program.frame.setWindowState(static_cast<int>(*state));
        return wire::Value();
    }
    if (object.kind == Kind::Document && name == "OBJECTSNAPMODE") {
        const bool* const snaps = std::get_if<bool>(&value);
        if (snaps == nullptr)
            return badArgument("ObjectSnapMode takes true or false");
        const std::int64_t rest = object.drawing->variables().whole("OSMODE") & ~kSnapsSuppressed;
        static_cast<void>(object.drawing->variables().set("OSMODE", rest | (*snaps ? 0 : kSnapsSuppressed)));
        return wire::Value();
    }
    if (std::holds_alternative<wire::Failure>(get(object, name)))
        return unknownName(name);
    return failed(name + " is read-only");
}

HostObjects::Reply HostObjects::items(const Object& object)
{
    wire::Values members;
    if (object.kind == Kind::Documents) {
        for (const auto& drawing : m_program.workshop.drawings())
            members.push_back(give({Kind::Document, drawing, 0}));
        return members;
    }
    if (object.kind == Kind::Blocks) {
        for (const dwg::BlockRecord& block : object.drawing->document().blocks)
            members.push_back(give({Kind::Block, object.drawing, block.handle}));
        return members;
    }
    return failed("The object is no collection");
}

} // namespace zv::bench
