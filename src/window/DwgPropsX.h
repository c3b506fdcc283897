#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <string>

namespace zv {

/// Reads the properties that are stored in a drawing file. Texts are the program's own.
class DwgPropsX {
public:
    /// Reads a drawing's properties in place of those held. A drawing that holds none is read as one with
    /// empty texts. Errors: the drawing cannot be read; then the properties held stay.
    Result<void> load(const std::string& path);

    std::string comments() const;
    std::string keywords() const;
    /// The custom property at `index`, from 0, as "name=value"; empty when there are not so many.
    std::string customProperty(std::size_t index) const;

private:
    dwg::Properties m_properties;
};

} // namespace zv
