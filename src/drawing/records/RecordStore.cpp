#include "drawing/records/RecordStore.h"

#include <charconv>

namespace zv::dwg {

namespace {

constexpr std::uint64_t kGivenTimes = 8;
constexpr std::size_t kMostReports = 100;

std::string hexadecimal(Handle handle)
{
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, handle, 16).ptr;
    return std::string(digits, end);
}

} // namespace

RecordStore::RecordStore(std::span<const std::byte> objects, ObjectMap map, ClassTable classes,
                         Version version, int codePage, std::vector<std::string>& damage)
    : m_objects(objects), m_map(std::move(map)), m_classes(std::move(classes)), m_version(version),
      m_codePage(codePage), m_damage(damage), m_taken(m_map.places().size()),
      m_bytesToGive(kGivenTimes * objects.size())
{
}

std::optional<OpenRecord> RecordStore::openAt(const ObjectPlace& place)
{
    auto record = openRecord(m_objects, place.offset, m_version, m_codePage);
    if (!record || record->size > m_bytesToGive)
        return {};
    m_bytesToGive -= record->size;
    return record;
}

std::optional<OpenRecord> RecordStore::open(Handle handle)
{
    const std::size_t place = m_map.find(handle);
    if (place == ObjectMap::kNone)
        return {};
    auto record = openAt(m_map.places()[place]);
    if (!record)
        report("object", handle);
    return record;
}

std::optional<OpenRecord> RecordStore::open(Handle handle, int type)
{
    auto record = open(handle);
    if (record && record->type != type)
        return {};
    return record;
}

std::optional<OpenRecord> RecordStore::openClassed(Handle handle, int type, std::string_view className)
{
    auto record = open(handle);
    if (!record || (type != 0 && record->type == type))
        return record;
    const ObjectClass* objectClass = m_classes.find(record->type);
    if (objectClass == nullptr || objectClass->name != className)
        return {};
    return record;
}

Handle RecordStore::findType(int type)
{
    for (const ObjectPlace& place : m_map.places()) {
        const auto record = openAt(place);
        if (record && record->type == type)
            return place.handle;
    }
    return 0;
}

bool RecordStore::take(Handle handle)
{
    const std::size_t place = m_map.find(handle);
    if (place == ObjectMap::kNone || m_taken[place])
        return false;
    m_taken[place] = true;
    return true;
}

void RecordStore::report(std::string_view what, Handle handle)
{
    ++m_reports;
    if (m_reports < kMostReports)
        m_damage.push_back(std::string(what) + " " + hexadecimal(handle) + " is damaged");
    else if (m_reports == kMostReports)
        m_damage.push_back("more records are damaged");
}

} // namespace zv::dwg
