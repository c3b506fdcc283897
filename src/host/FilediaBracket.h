#pragma once

#include "platform/Automation.h"
#include "platform/EndRequest.h"

#include <optional>

namespace zv {

/// Keeps the host's file dialogs away while commands are typed at it, and gives the user's own setting back,
/// also when the wait for the host was given up: it would trouble the user for ever. From its entry until it
/// goes this program is not ended by a signal.
class FilediaBracket {
public:
    /// With `always`, file dialogs are turned on before the setting is remembered and after it is restored.
    FilediaBracket(bool always, Automation& automation) : m_always(always), m_automation(automation) {}

    Result<void> enter(const AutomationObjectPtr& document);
    /// Sets the remembered value back, as often as it is called; nothing if none was remembered.
    void restore();
    /// The last restore of an action. Nothing if the bracket was not entered.
    void leave();

private:
    void restoreAfresh();

    bool m_always;
    Automation& m_automation;
    std::optional<EndRequestHold> m_hold;
    AutomationObjectPtr m_document;
    std::optional<AutomationValue> m_remembered;
};

} // namespace zv
