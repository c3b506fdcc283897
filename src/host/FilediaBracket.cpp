#include "host/FilediaBracket.h"

namespace zv {

namespace {

constexpr int kLastWordMs = 3000;

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
    m_hold.emplace();
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
    if (m_remembered && m_automation.isGivenUp())
        restoreAfresh();
}

/// The objects of a wait that was given up answer no more, so the host is asked for new ones, for a moment.
void FilediaBracket::restoreAfresh()
{
    m_automation.beginAction(kLastWordMs);
    const Result<AutomationObjectPtr> application = m_automation.attach("AutoCAD.Application");
    if (!application)
        return;
    const Result<AutomationObjectPtr> document = asObject((*application)->get("ActiveDocument"));
    if (document)
        static_cast<void>(
            setVariable(**document, "Filedia", m_always ? AutomationValue(std::int64_t{1}) : *m_remembered));
}

} // namespace zv
