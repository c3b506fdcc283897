#include "support/Environment.h"

#include <cstdlib>

namespace zv {

Environment::Environment(const char* name, const std::string& value) : m_name(name)
{
    if (const char* old = std::getenv(name))
        m_old = old;
    ::_putenv_s(m_name, value.c_str());
}

Environment::~Environment()
{
    if (m_old)
        ::_putenv_s(m_name, m_old->c_str());
    else
        ::_putenv_s(m_name, "");
}

} // namespace zv
