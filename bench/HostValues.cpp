#include "HostValues.h"

#include "platform/Text.h"

namespace zv::bench {

Failure unknownName(const std::string& name)
{
    return {"unknown-name", "The object has no member " + name};
}

Json failureAnswer(const Failure& failure)
{
    return Json(Json::Object{
        {"error", Json(Json::Object{{"code", failure.code}, {"description", wireText(failure.text)}})}});
}

Json wireText(const std::string& bytes)
{
    return Json(isUtf8(bytes) ? bytes : toUtf8(wide(bytes)));
}

std::string textOf(const Json& json)
{
    return json.text() != nullptr ? narrow(fromUtf8(*json.text())) : std::string();
}

std::string textMember(const Json& json, const char* name)
{
    const Json* const member = json.member(name);
    return member != nullptr ? textOf(*member) : std::string();
}

const Json* argument(const Json::Array& arguments, std::size_t index)
{
    if (index >= arguments.size() || arguments[index].isNull() ||
        arguments[index].member("missing") != nullptr)
        return nullptr;
    return &arguments[index];
}

bool pointOf(const Json& json, dwg::Point3& point)
{
    const Json* const numbers = json.member("point");
    const Json::Array* const three = numbers != nullptr ? numbers->array() : nullptr;
    return three != nullptr && three->size() == 3 && (*three)[0].asDouble(point.x) &&
           (*three)[1].asDouble(point.y) && (*three)[2].asDouble(point.z);
}

Json pointValue(const dwg::Point3& point)
{
    return Json(Json::Object{{"point", Json(Json::Array{point.x, point.y, point.z})}});
}

AutomationValue variableValue(const Json& json)
{
    if (json.whole() != nullptr)
        return *json.whole();
    if (json.number() != nullptr)
        return *json.number();
    if (json.text() != nullptr)
        return textOf(json);
    return {};
}

Json variableJson(const AutomationValue& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return Json(*whole);
    if (const auto* real = std::get_if<double>(&value))
        return Json(*real);
    if (const auto* text = std::get_if<std::string>(&value))
        return wireText(*text);
    return {};
}

std::string folderOf(const std::string& path)
{
    const std::size_t length = path.size() - fileNamePart(path).size();
    return path.substr(0, length > 1 ? length - 1 : length);
}

} // namespace zv::bench
