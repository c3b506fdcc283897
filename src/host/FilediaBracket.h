#pragma once

#include "platform/Automation.h"

#include <optional>

namespace zv {

/// Keeps the host's file dialogs away while commands are typed at it, and gives the user's own setting back.
class FilediaBracket {
public:
    /// With `always`, file dialogs are turned on before the setting is remembered and after it is restored.
    explicit FilediaBracket(bool always) : m_always(always) {}

    Result<void> enter(const AutomationObjectPtr& document);
    /// Sets the remembered value back, as often as it is called; nothing if none was remembered.
    void restore();
    /// The last restore of an action. Nothing if the bracket was not entered.
    void leave();

private:
    bool m_always;
    AutomationObjectPtr m_document;
    std::optional<AutomationValue> m_remembered;
};

} // namespace zv
