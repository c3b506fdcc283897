#include "HostObjects.h"

#include "HostValues.h"

#include "platform/Text.h"

namespace zv::bench {

HostObjects::~HostObjects()
{
    if (*m_asking)
        m_program.commandLine.cancel();
}

void HostObjects::handle(const Json& request, const Respond& respond)
{
    const Json* const id = request.member("id");
    const Json idText = id != nullptr ? *id : Json();
    const Respond finish = [respond, idText](const Json& content) {
        Json::Object whole = {{"id", idText}};
        whole.insert(whole.end(), content.object()->begin(), content.object()->end());
        respond(Json(std::move(whole)));
    };
    const Reply reply = answer(request, finish);
    if (const Json* result = std::get_if<Json>(&reply))
        finish(Json(Json::Object{{"result", *result}}));
    else if (const Failure* failure = std::get_if<Failure>(&reply))
        finish(failureAnswer(*failure));
}

HostObjects::Reply HostObjects::answer(const Json& request, const Respond& finish)
{
    const std::string operation = textMember(request, "op");
    const std::string name = upper(textMember(request, "name"));
    const Json* const number = request.member("object");
    if (number == nullptr || number->whole() == nullptr)
        return Failure{"bad-argument", "The request names no object"};
    if (operation == "release") {
        m_objects.erase(*number->whole());
        return Json();
    }
    if (m_program.inCall || m_program.frame.isInDialog())
        return Failure{"busy", "The program waits for its user"};
    Object object;
    if (*number->whole() != 0) {
        const auto found = m_objects.find(*number->whole());
        if (found == m_objects.end())
            return Failure{"bad-argument", "There is no such object"};
        object = found->second;
    }
    if (!isOpen(object))
        return Failure{"failed", "The drawing has been closed"};
    const Json* const value = request.member("value");
    const Json* const arguments = request.member("args");
    if (operation == "get")
        return get(object, name);
    if (operation == "set" && value != nullptr)
        return set(object, name, *value);
    if (operation == "call")
        return call(object, name,
                    arguments != nullptr && arguments->array() != nullptr ? *arguments->array() : Arguments(),
                    finish);
    if (operation == "items")
        return items(object);
    return Failure{"bad-argument", "There is no operation \"" + operation + "\""};
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

Json HostObjects::give(Object object)
{
    m_objects[++m_lastNumber] = std::move(object);
    return Json(Json::Object{{"object", m_lastNumber}});
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
            return Json(static_cast<std::int64_t>(m_program.workshop.drawings().size()));
        break;
    case Kind::Blocks:
        if (name == "COUNT")
            return Json(static_cast<std::int64_t>(object.drawing->document().blocks.size()));
        break;
    case Kind::Utility:
        break;
    }
    if (name == "APPLICATION")
        return Json(Json::Object{{"object", std::int64_t{0}}});
    return unknownName(name);
}

HostObjects::Reply HostObjects::getApplication(const std::string& name)
{
    const HostFrame& frame = m_program.frame;
    if (name == "VERSION")
        return wireText(m_program.workshop.variables().text("ACADVER"));
    if (name == "CAPTION")
        return wireText(frame.caption());
    if (name == "NAME")
        return Json("AutoCAD");
    if (name == "FULLNAME")
        return wireText(frame.programPath());
    if (name == "PATH")
        return wireText(folderOf(frame.programPath()));
    if (name == "VISIBLE")
        return Json(frame.isShown());
    if (name == "HWND")
        return Json(frame.windowHandle());
    if (name == "WINDOWSTATE")
        return Json(std::int64_t{frame.windowState()});
    if (name == "DOCUMENTS")
        return give({Kind::Documents, nullptr, 0});
    if (name == "APPLICATION")
        return Json(Json::Object{{"object", std::int64_t{0}}});
    if (name == "ACTIVEDOCUMENT") {
        if (!m_program.workshop.active())
            return Failure{"failed", "No Document object"};
        return give({Kind::Document, m_program.workshop.active(), 0});
    }
    return unknownName(name);
}

HostObjects::Reply HostObjects::getDocument(const Object& object, const std::string& name)
{
    BenchDrawing& drawing = *object.drawing;
    if (name == "NAME" || name == "WINDOWTITLE")
        return wireText(drawing.title());
    if (name == "FULLNAME")
        return wireText(drawing.path());
    if (name == "PATH")
        return wireText(folderOf(drawing.path()));
    if (name == "SAVED")
        return Json(!drawing.isModified());
    if (name == "READONLY")
        return Json(false);
    if (name == "ACTIVE")
        return Json(m_program.workshop.active() == object.drawing);
    if (name == "APPLICATION")
        return Json(Json::Object{{"object", std::int64_t{0}}});
    if (name == "BLOCKS")
        return give({Kind::Blocks, object.drawing, 0});
    if (name == "UTILITY")
        return give({Kind::Utility, object.drawing, 0});
    if (name == "ACTIVESPACE")
        return Json(std::int64_t{1});
    if (name == "OBJECTSNAPMODE")
        return Json((drawing.variables().whole("OSMODE") & kSnapsSuppressed) == 0);
    return unknownName(name);
}

HostObjects::Reply HostObjects::getBlock(const Object& object, const std::string& name)
{
    const dwg::BlockRecord* const block = object.drawing->document().block(object.block);
    if (block == nullptr)
        return Failure{"failed", "The block has been deleted"};
    if (name == "NAME")
        return wireText(narrow(block->name));
    if (name == "ISLAYOUT")
        return Json(block->layout);
    if (name == "ISXREF")
        return Json(block->xref);
    if (name == "COUNT")
        return Json(static_cast<std::int64_t>(block->entities.size()));
    if (name == "PATH")
        return wireText(narrow(block->xrefPath));
    return unknownName(name);
}

HostObjects::Reply HostObjects::set(const Object& object, const std::string& name, const Json& value)
{
    if (object.kind == Kind::Application && name == "VISIBLE") {
        if (value.boolean() == nullptr)
            return Failure{"bad-argument", "Visible takes true or false"};
        m_program.frame.setShown(*value.boolean());
        return Json();
    }
    if (object.kind == Kind::Application && name == "WINDOWSTATE") {
        if (value.whole() == nullptr || *value.whole() < 1 || *value.whole() > 3)
            return Failure{"bad-argument", "WindowState takes 1, 2 or 3"};
        m_program.frame.setWindowState(static_cast<int>(*value.whole()));
        return Json();
    }
    if (object.kind == Kind::Document && name == "OBJECTSNAPMODE") {
        if (value.boolean() == nullptr)
            return Failure{"bad-argument", "ObjectSnapMode takes true or false"};
        const std::int64_t rest = object.drawing->variables().whole("OSMODE") & ~kSnapsSuppressed;
        static_cast<void>(
            object.drawing->variables().set("OSMODE", rest | (*value.boolean() ? 0 : kSnapsSuppressed)));
        return Json();
    }
    if (std::holds_alternative<Failure>(get(object, name)))
        return unknownName(name);
    return Failure{"failed", name + " is read-only"};
}

HostObjects::Reply HostObjects::items(const Object& object)
{
    Json::Array members;
    if (object.kind == Kind::Documents) {
        for (const auto& drawing : m_program.workshop.drawings())
            members.push_back(give({Kind::Document, drawing, 0}));
        return Json(std::move(members));
    }
    if (object.kind == Kind::Blocks) {
        for (const dwg::BlockRecord& block : object.drawing->document().blocks)
            members.push_back(give({Kind::Block, object.drawing, block.handle}));
        return Json(std::move(members));
    }
    return Failure{"failed", "The object is no collection"};
}

} // namespace zv::bench
