#pragma once

#include "platform/Result.h"

#include <functional>
#include <string>
#include <vector>

namespace zv {

/// What is asked and told while drawings are copied out.
struct CopyOutSteps {
    /// Whether the file of this name that is there already may be overwritten.
    std::function<bool(const std::string& name)> overwrite;
    /// So many drawings are done; false gives the others up.
    std::function<bool(std::size_t done)> goOn;
};

enum class CopyOutEnd { Done, GivenUp };

/// Copies the drawings, one after the other, into a folder under their own names. One that lies there itself
/// is passed over. Errors: a drawing cannot be copied, and none after it is; the text names the file.
Result<CopyOutEnd> copyOut(const std::vector<std::string>& drawings, const std::string& folder,
                           const CopyOutSteps& steps);

} // namespace zv
