#pragma once

#include <chrono>

namespace zv {

/// Puts a round trip before every operation on a file that another thread than the first one asks for, as on
/// a share: the drawings are read on such threads. 0 ends it.
void setRoundTrip(std::chrono::milliseconds each);
/// How many operations have waited for theirs.
int roundTrips();

} // namespace zv
