#pragma once

#include "drawing/records/ClassTable.h"
#include "drawing/records/ObjectHeader.h"
#include "drawing/records/ObjectMap.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zv::dwg {

/// A drawing's records, found by their handles. Reading is bounded: records that are asked for again and
/// again, as a damaged drawing may, are given out for several times the drawing's size in all, and then no
/// more.
class RecordStore {
public:
    /// `objects` and `damage` must outlive the store; what is reported goes to the end of `damage`.
    RecordStore(std::span<const std::byte> objects, ObjectMap map, ClassTable classes, Version version,
                int codePage, std::vector<std::string>& damage);

    Version version() const { return m_version; }
    const ObjectMap& map() const { return m_map; }
    const ObjectClass* objectClass(int type) const { return m_classes.find(type); }

    /// The object's record; no value when the drawing has none, or the record does not lie in it whole.
    std::optional<OpenRecord> open(Handle handle);
    /// The same for an object of one type only.
    std::optional<OpenRecord> open(Handle handle, int type);
    /// The same for an object of a class; `type` is its number in files that need no class for it, or 0.
    std::optional<OpenRecord> openClassed(Handle handle, int type, std::string_view className);

    /// The first object of a type; 0 when there is none.
    Handle findType(int type);

    /// Takes an object for good, so that nothing else becomes its owner. False when it is taken already, or
    /// when the drawing has no such object.
    bool take(Handle handle);
    bool taken(std::size_t place) const { return m_taken[place]; }

    /// Notes that a record is damaged.
    void report(std::string_view what, Handle handle);

private:
    std::optional<OpenRecord> openAt(const ObjectPlace& place);

    std::span<const std::byte> m_objects;
    ObjectMap m_map;
    ClassTable m_classes;
    Version m_version;
    int m_codePage;
    std::vector<std::string>& m_damage;
    std::vector<bool> m_taken;
    std::uint64_t m_bytesToGive;
    std::size_t m_reports = 0;
};

} // namespace zv::dwg
