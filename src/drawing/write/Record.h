#pragma once

#include "drawing/records/ObjectType.h"
#include "drawing/write/BitWriter.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace zv::dwg {

/// Kinds of ties that a handle reference can state.
inline constexpr unsigned kSoftOwner = 2, kHardOwner = 3, kSoftPointer = 4, kHardPointer = 5;

/// One object of an AC1015 file: its fields, and its handles, which stand behind all fields.
class Record {
public:
    /// `type` is a fixed object type or, from 500, the number of a class.
    Record(int type, Handle handle) : m_type(type), m_handle(handle) {}

    int type() const { return m_type; }
    Handle handle() const { return m_handle; }
    /// Extended data of a registered application, as its raw bytes.
    void extendedData(Handle application, const std::string& bytes);
    /// Starts what every object that is no entity has: owner, reactors, extension dictionary.
    void beginObject(Handle owner, const std::vector<Handle>& reactors = {});
    /// The record as it stands in the file: its length, its bits, its check code.
    std::string framed() const;

    BitWriter fields, handles;

private:
    int m_type;
    Handle m_handle;
    BitWriter m_extended;
};

using namespace objectType;

/// The type numbers that our own class table gives, in its order.
enum ClassNumber : int {
    kDictionaryWithDefault = kFirstClass,
    kPlaceholder,
    kLayoutClass,
    kWipeout,
};

/// The objects of a file as they stand in it: by rising handle, as readers expect them.
struct ObjectStream {
    std::map<Handle, std::string> records;
    int highestType = 0;

    void add(const Record& record)
    {
        highestType = std::max(highestType, record.type());
        records[record.handle()] = record.framed();
    }
};

/// The user's coordinates that an object keeps, which are the world's: origin, axes, elevation, kind of view.
void writeWorldCoordinates(BitWriter& fields);

inline constexpr int kAnsi1252 = 30; ///< The number that files give this code page.

/// Text of a drawing in the bytes of ANSI 1252; what has no place there becomes \U+XXXX. For files of another
/// code page that is all but ASCII.
std::string encodeText(std::u16string_view text, int codePage = kAnsi1252);

} // namespace zv::dwg
