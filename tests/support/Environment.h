#pragma once

#include <optional>
#include <string>

namespace zv {

/// A variable of the environment that has another value while this lives.
class Environment {
public:
    Environment(const char* name, const std::string& value);
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment();

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

} // namespace zv
