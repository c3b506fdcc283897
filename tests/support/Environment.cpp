#include "support/Environment.h"

#include <cstdlib>

namespace zv {

Environment::Environment(const char* name, const std::string& value) : m_name(name)
{
    if (const char* old = std::getenv(name))
        m_old = old;
    ::setenv(m_name, value.c_str(), 1);
}

Environment::~Environment()
{
    if (m_old)
        ::setenv(m_name, m_old->c_str(), 1);
    else
        ::unsetenv(m_name);
}

} // namespace zv
