#pragma once

#include "drawing/bits/BitReader.h"
#include "drawing/write/Record.h"
#include "platform/Result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv::dwg {

/// A record of an AC1015 file whose fields stay as bits, so that nothing of it is lost, and whose handles can
/// be exchanged.
class RawRecord {
public:
    /// The record that begins at `offset`. Errors: Damaged.
    static Result<RawRecord> read(std::string_view file, std::uint64_t offset);

    int type = 0;
    Handle handle = 0;
    BitWriter fields; ///< From the object's own handle on.
    std::vector<HandleReference> handles;

    /// The object that a reference means; 0 for none.
    Handle target(std::size_t index) const
    {
        return index < handles.size() ? handles[index].from(handle) : 0;
    }
    /// Makes a reference mean another object, with the tie that it had.
    void point(std::size_t index, Handle to);
    /// A reader of the fields.
    BitReader reader() const;
    /// Puts other bits in the place of the ones from `from` up to `to`.
    void splice(std::size_t from, std::size_t to, const BitWriter& with);
    std::string framed() const;
};

/// The bits from `from` up to `to`.
BitWriter part(const BitWriter& bits, std::size_t from, std::size_t to);
/// The bits with others in the place of those from `from` up to `to`.
BitWriter spliced(const BitWriter& bits, std::size_t from, std::size_t to, const BitWriter& with);

/// Where an entity's record says where it stands.
struct EntityLinks {
    unsigned mode = 0;       ///< 2 model space, 1 paper space, 0 the owner is the first handle.
    std::size_t linksAt = 0; ///< The bit that tells whether the neighbours are the next handles.
    bool neighbours = false; ///< They are, and no references tell them.
    std::size_t first = 0;   ///< The index of the two references otherwise.
    bool ok = false;

    Handle owner(const RawRecord& record) const { return mode == 0 ? record.target(0) : 0; }
    Handle next(const RawRecord& record) const
    {
        return neighbours ? record.handle + 1 : record.target(first + 1);
    }
};
EntityLinks readLinks(const RawRecord& record);
/// Gives an entity other neighbours.
void setLinks(RawRecord& record, Handle previous, Handle next);

/// Where the fields of a record that is no entity begin, and how many reactors its handles tell behind the
/// owner.
struct ObjectStart {
    std::size_t at = 0;
    std::size_t reactors = 0;
    /// The index of the first handle behind owner, reactors and extension dictionary.
    std::size_t firstOwn() const { return reactors + 2; }
};
ObjectStart readStart(const RawRecord& record);

} // namespace zv::dwg
