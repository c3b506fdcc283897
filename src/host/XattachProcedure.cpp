#include "host/XattachProcedure.h"

#include "host/CommandText.h"
#include "host/SendableText.h"
#include "host/XrefText.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <optional>
#include <vector>

namespace zv {

namespace {

constexpr std::size_t kDriveRoot = 3; ///< Characters of "C:\".

/// The texts of the order that are typed as they stand, or take part in what is typed.
std::vector<std::pair<XrefField, std::string>> numbersOf(const XrefOrder& order)
{
    std::vector<std::pair<XrefField, std::string>> fields;
    if (!order.askPoint) {
        fields.emplace_back(XrefField::PointX, order.point[0]);
        fields.emplace_back(XrefField::PointY, order.point[1]);
        fields.emplace_back(XrefField::PointZ, order.point[2]);
    }
    if (order.autoScale) {
        fields.emplace_back(XrefField::HostScale, order.hostScale);
        fields.emplace_back(XrefField::XrefScale, order.xrefScale);
    } else if (!order.askScale) {
        fields.emplace_back(XrefField::ScaleX, order.scale[0]);
        fields.emplace_back(XrefField::ScaleY, order.scale[1]);
        fields.emplace_back(XrefField::ScaleZ, order.scale[2]);
    }
    return fields;
}

/// Whether something of the order is nothing to type at the host. The user knows then.
bool isRefused(const XrefOrder& order, XrefWindow& window)
{
    if (refusesDrawing(order.drawing, window.messages()))
        return true;
    if (order.copy && refusesText(order.folder, window.messages()))
        return true;
    const auto numbers = numbersOf(order);
    for (const auto& [field, text] : numbers) {
        if (refusesText(text, window.messages()))
            return true;
    }
    if (!order.askRotation && refusesText(order.rotation, window.messages()))
        return true;
    for (const auto& [field, text] : numbers) {
        double value = 0;
        // A drawing with a scale of 0 has none.
        if (!textNumber(text, value) || (field == XrefField::XrefScale && value == 0)) {
            window.end(DialogEnd::Again);
            window.markField(field);
            return true;
        }
    }
    return false;
}

double numberOf(const std::string& text)
{
    double value = 0;
    textNumber(text, value);
    return value;
}

/// One press of Command3.
class XrefRun {
public:
    XrefRun(const XrefOrder& order, XrefWindow& window, HostServices& services,
            const DialogSettings& settings)
        : m_order(order), m_window(window), m_services(services), m_action(window, services, settings)
    {
    }

    void run()
    {
        m_action.run([this] { return attach(); });
    }

private:
    DialogEnd attach();
    std::string copyToFolder();
    std::optional<std::array<std::string, 3>> scale();
    std::optional<std::array<std::string, 3>> askScale();

    const XrefOrder& m_order;
    XrefWindow& m_window;
    HostServices& m_services;
    DialogAction m_action;
};

DialogEnd XrefRun::attach()
{
    std::string path = m_order.drawing;
    if (m_order.copy) {
        if (m_order.folder.empty()) {
            m_window.messages().show(
                {"Xref Copy Path Not Specfied", "Specify Xref Copy Path", MessageIcon::Information});
            m_action.bracket().leave();
            return DialogEnd::AgainAsCalled;
        }
        path = copyToFolder();
    }
    m_action.showHost();
    const auto factors = scale();
    if (!factors)
        return DialogEnd::Again;
    const auto& [x, y, z] = m_order.point;
    const XrefCommand command{
        m_order.overlay,  withForwardSlashes(path), m_order.askPoint,
        m_order.askScale, m_order.askRotation,      {numberOf(x), numberOf(y), numberOf(z)},
        *factors,         m_order.rotation};
    const auto send = [&] {
        const UserIsAsked asked(m_services.splash);
        return m_action.document()->call("SendCommand", {xrefText(command)});
    };
    const auto sent = send();
    m_action.bracket().restore();
    return sent ? DialogEnd::Done : DialogEnd::Again;
}

/// A copy that fails stops nothing: the host tells the user when it finds no drawing there.
std::string XrefRun::copyToFolder()
{
    m_action.activate();
    std::string target = xrefCopyTarget(m_order.folder, m_order.drawing);
    if (!isDriveRoot(m_order.folder))
        m_window.rememberFolder(m_order.folder);
    static_cast<void>(copyIntoPlace(m_order.drawing, target));
    return target;
}

/// Nothing when the user does not answer.
std::optional<std::array<std::string, 3>> XrefRun::scale()
{
    if (m_order.autoScale) {
        const std::string factor = numberText(numberOf(m_order.hostScale) / numberOf(m_order.xrefScale));
        return std::array{factor, factor, factor};
    }
    return m_order.askScale && !m_order.askPoint ? askScale() : m_order.scale;
}

std::optional<std::array<std::string, 3>> XrefRun::askScale()
{
    const Result<AutomationObjectPtr> utility = asObject(m_action.document()->get("Utility"));
    if (!utility)
        return std::nullopt;
    const UserIsAsked asked(m_services.splash);
    std::array<std::string, 3> factors;
    std::string fallback = "1";
    constexpr std::array<const char*, 3> kPrompts = {
        "Enter X Scale Factor <1>:", "Enter Y Scale Factor <use X scale factor>:",
        "Enter Z Scale Factor <use Y scale factor>:"};
    for (std::size_t axis = 0; axis < factors.size(); ++axis) {
        const Result<std::string> answer =
            asText((*utility)->call("GetString", {false, std::string(kPrompts[axis])}));
        if (!answer)
            return std::nullopt;
        factors[axis] = answer->empty() ? fallback : *answer;
        fallback = factors[axis];
    }
    return factors;
}

} // namespace

void attachXref(const XrefOrder& order, XrefWindow& window, HostServices& services,
                const DialogSettings& settings)
{
    if (!isRefused(order, window))
        XrefRun(order, window, services, settings).run();
}

Result<double> runningHostScale(Automation& automation)
{
    const Result<AutomationObjectPtr> application = automation.attach("AutoCAD.Application");
    if (!application)
        return application.error();
    static_cast<void>((*application)->set("Visible", true));
    const Result<AutomationObjectPtr> document = asObject((*application)->get("ActiveDocument"));
    if (!document)
        return document.error();
    const Result<double> scale =
        asNumber((*document)->call("GetVariable", {AutomationValue(std::string("dimscale"))}));
    return scale && *scale == 0 ? Result<double>(1.0) : scale;
}

bool isDriveRoot(const std::string& folder)
{
    return wide(folder).size() == kDriveRoot;
}

std::string xrefCopyTarget(const std::string& folder, const std::string& drawing)
{
    const std::string name = upper(fileNamePart(drawing));
    return isDriveRoot(folder) ? folder + name : joinPath(folder, name);
}

} // namespace zv
