#include "host/FilediaBracket.h"

namespace zv {

namespace {

Result<AutomationValue> setVariable(AutomationObject& document, const char* name,
                                    const AutomationValue& value)
{
    return document.call("SetVariable", {AutomationValue(std::string(name)), value});
}

} // namespace

Result<void> FilediaBracket::enter(const AutomationObjectPtr& document)
{
    m_document = document;
    if (m_always) {
        if (const auto set = setVariable(*m_document, "filedia", std::int64_t{1}); !set)
            return set.error();
    }
    Result<AutomationValue> found =
        m_document->call("GetVariable", {AutomationValue(std::string("filedia"))});
    if (!found)
        return found.error();
    m_remembered = std::move(*found);
    if (const auto set = setVariable(*m_document, "Filedia", std::int64_t{0}); !set)
        return set.error();
    return {};
}

void FilediaBracket::restore()
{
    if (m_remembered)
        static_cast<void>(setVariable(*m_document, "Filedia", *m_remembered));
}

void FilediaBracket::leave()
{
    restore();
    if (m_remembered && m_always)
        static_cast<void>(setVariable(*m_document, "Filedia", std::int64_t{1}));
}

} // namespace zv
