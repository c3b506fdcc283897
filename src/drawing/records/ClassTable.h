#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace zv::dwg {

/// A kind of objects that the file itself names.
struct ObjectClass {
    int number = 0;      ///< The object type of its records, 500 and up.
    std::string name;    ///< DXF name, UTF-8.
    bool entity = false; ///< It is drawn; else an object without a shape.
};

/// The kinds that the file names.
class ClassTable {
public:
    /// `maintenance` is the file's maintenance version. Errors: Damaged.
    static Result<ClassTable> read(std::span<const std::byte> section, Version version, int maintenance,
                                   int codePage);

    /// Null when the file has no such class.
    const ObjectClass* find(int number) const;
    const std::vector<ObjectClass>& classes() const { return m_classes; }

private:
    std::vector<ObjectClass> m_classes;
};

} // namespace zv::dwg
