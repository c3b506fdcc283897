#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace zv {

/// A JSON value. Texts are UTF-8. A number without "." or exponent is whole, any other is a double, and both
/// are written so that they are read back as what they were.
struct Json {
    using Array = std::vector<Json>;
    using Object = std::vector<std::pair<std::string, Json>>; ///< In written order.

    std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object> value = nullptr;

    Json() = default;
    Json(std::nullptr_t) {}
    Json(bool truth) : value(truth) {}
    Json(std::int64_t whole) : value(whole) {}
    Json(double number) : value(number) {}
    Json(std::string text) : value(std::move(text)) {}
    Json(const char* text) : value(std::string(text)) {}
    Json(Array items) : value(std::move(items)) {}
    Json(Object members) : value(std::move(members)) {}

    bool isNull() const { return std::holds_alternative<std::nullptr_t>(value); }
    const bool* boolean() const { return std::get_if<bool>(&value); }
    const std::int64_t* whole() const { return std::get_if<std::int64_t>(&value); }
    const double* number() const { return std::get_if<double>(&value); }
    const std::string* text() const { return std::get_if<std::string>(&value); }
    const Array* array() const { return std::get_if<Array>(&value); }
    const Object* object() const { return std::get_if<Object>(&value); }
    /// The first member of this name, which must match in case; null when this is no object or has none.
    const Json* member(std::string_view name) const;
    /// Whole or double.
    bool asDouble(double& result) const;
};

/// Reads one JSON value that fills the text. Errors: Damaged, it is none, or its texts are not valid UTF-8;
/// TooLarge, it is nested over 32 deep or has over a million values.
/// Format: RFC 8259.
Result<Json> readJson(std::string_view text);

/// The value on one line. A number that is not finite is written as null.
std::string writeJson(const Json& json);

} // namespace zv
