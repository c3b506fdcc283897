#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <map>
#include <memory>
#include <string>

namespace zv::bench {

/// The files that a drawing's external references name, each read once until it is told to read them anew.
class XrefFiles {
public:
    /// The drawing in `path`, full. Errors: as reading gives them.
    Result<std::shared_ptr<const dwg::Document>> read(const std::string& path);
    void forget() { m_read.clear(); }

private:
    std::map<std::string, Result<std::shared_ptr<const dwg::Document>>> m_read;
};

/// The drawing as it is seen: each reference's block holds what its file does, attached references of that
/// file among it and its overlays not. The names of what came with a file begin with the reference's, as in
/// "site|wall". Where a file cannot be read, or refers back to one that it stands in, its path stands as a
/// text. `path` is the drawing's own, empty for one without a file; a relative reference is looked for from
/// there.
dwg::Document withXrefs(const dwg::Document& document, const std::string& path, XrefFiles& files);

bool hasXrefs(const dwg::Document& document);

} // namespace zv::bench
