#pragma once

#include "platform/Result.h"

#include <chrono>
#include <string>

namespace zv::bench {

/// How long a running bench may take until it answers at all, and until it has opened a drawing.
struct HandOverPatience {
    std::chrono::milliseconds toAnswer{10'000}, toOpen{120'000};
};

/// Lets the bench that runs already under this name come to the front and open the drawing at this path, if
/// there is one. Errors: NotFound, none runs; any other, why the drawing was not opened.
Result<void> handOver(const std::string& progId, const std::string& drawing, HandOverPatience patience = {});

} // namespace zv::bench
