#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace zv {

enum class ErrorCode {
    NotFound,    ///< The thing asked for is not there.
    Denied,      ///< It is there, but may not be read or written.
    Damaged,     ///< Its bytes are not what its format demands.
    Unsupported, ///< Its format is known, and not handled.
    TooLarge,    ///< It goes beyond a stated limit.
    Busy,        ///< It can be had later.
    Cancelled,   ///< The user said no.
    Lost,        ///< The other side has ended.
    Failed,      ///< Any other failure of the system.
};

/// Why something could not be done: a code for the program, a text for a reader. The text is the
/// program's own, as paths are (see Text.h).
struct Error {
    ErrorCode code = ErrorCode::Failed;
    std::string text;
};

/// A value, or the reason why there is none.
template <class T> class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::move(value)) {}
    Result(Error error) : m_state(std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }
    bool ok() const { return m_state.index() == 0; }

    T& value() & { return std::get<0>(m_state); }
    const T& value() const& { return std::get<0>(m_state); }
    T&& value() && { return std::get<0>(std::move(m_state)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }
    T valueOr(T other) const { return ok() ? value() : std::move(other); }

    const Error& error() const { return std::get<1>(m_state); }

private:
    std::variant<T, Error> m_state;
};

/// Done, or the reason why not.
template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}
    explicit operator bool() const { return !m_error; }
    bool ok() const { return !m_error; }
    const Error& error() const { return *m_error; }

private:
    std::optional<Error> m_error;
};

} // namespace zv
