#pragma once

#include "platform/Result.h"

#include <new>
#include <stdexcept>

namespace zv {

/// What `read` comes to, or the error TooLarge when there is not the memory for it: one drawing that asks for
/// too much is a drawing that cannot be shown, and not the end of the program.
template <class Read> auto withinMemory(Read read) -> decltype(read())
{
    const Error tooLarge{ErrorCode::TooLarge, "there is not enough memory for it"};
    try {
        return read();
    } catch (const std::bad_alloc&) {
        return tooLarge;
    } catch (const std::length_error&) {
        return tooLarge;
    }
}

} // namespace zv
