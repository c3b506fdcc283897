#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace zv {

/// A variable of the environment that has another value while this lives.
class Environment {
public:
    Environment(const char* name, const std::string& value) : m_name(name)
    {
        if (const char* old = std::getenv(name))
            m_old = old;
        ::setenv(name, value.c_str(), 1);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment()
    {
        if (m_old)
            ::setenv(m_name, m_old->c_str(), 1);
        else
            ::unsetenv(m_name);
    }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

} // namespace zv
