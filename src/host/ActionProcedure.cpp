#include "host/ActionProcedure.h"

#include "host/CommandText.h"
#include "host/FilediaBracket.h"
#include "host/SendableText.h"
#include "platform/Text.h"
#include "queue/QueueFile.h"

namespace zv {

namespace {

/// What one caller does differently from the others.
struct CallerWords {
    const char* addedLine;
    const char* refusalTitle;
    bool queuesAnything; ///< An empty path is written too, and then refused.
    const char* blockWord;
    const char* xrefWord;
    const char* openWord;
};

constexpr CallerWords kMainWindow = {"to the Drawing Queue",
                                     "Please Select a File to add to Drawing Queue!",
                                     false,
                                     "Insert as Block",
                                     "Insert as Xref",
                                     "Open/Copy"};
constexpr CallerWords kOtherThumbnail = {"to the Drawing  Queue",
                                         "Please Select a File to add to the Drawing Queue!",
                                         false,
                                         "Insert as Block",
                                         "Insert as Xref",
                                         "Open/Copy"};
constexpr CallerWords kSearch = {"to the Drawing Queue",
                                 "Please Select a File to add to the Drawing Queue!",
                                 true,
                                 "Search and Insert as Block",
                                 "Search and Insert as Xref",
                                 "Search and Open/Copy"};

const CallerWords& wordsOf(ActionCaller caller)
{
    switch (caller) {
    case ActionCaller::OtherThumbnail:
        return kOtherThumbnail;
    case ActionCaller::Search:
        return kSearch;
    case ActionCaller::Command11:
    case ActionCaller::Thumbnail1:
        break;
    }
    return kMainWindow;
}

/// One run of the procedure, with its local state.
class ActionRun {
public:
    ActionRun(ActionCaller caller, const std::string& drawing, ActionWindow& window, ActionServices& services,
              const ActionSettings& settings)
        : m_words(wordsOf(caller)), m_drawing(drawing), m_window(window), m_services(services),
          m_settings(settings), m_session(HostCaller::Action, window, services, settings.allowActivation),
          m_bracket(settings.keepFileDialogs, services.automation)
    {
    }

    Result<void> queue(const std::string& selectedDrawing);
    void place();

private:
    bool isRefused();
    void openXattach();
    bool refusesXrefName();
    bool insertBlock();
    bool attachForBlock();
    enum class Taken { AsXref, AsBlock };
    bool nameIsTaken(const std::string& name, Taken how);
    Result<void> typeInsertion();
    Result<AutomationPoint> askPoint();
    Result<void> computeScale();
    Result<std::string> scaleToType() const;
    Result<void> sendCommand(const std::string& text);
    void finish();
    const char* logWord() const;

    const CallerWords& m_words;
    const std::string m_drawing;
    /// The drawing in the host's own spelling, which is also the one that the properties are read by.
    const std::string m_slashed = withForwardSlashes(m_drawing);
    ActionWindow& m_window;
    ActionServices& m_services;
    const ActionSettings& m_settings;
    HostSession m_session;
    FilediaBracket m_bracket;
    AutomationObjectPtr m_document;
    bool m_showCaller = false;
    bool m_declined = false;
};

Result<void> ActionRun::queue(const std::string& selectedDrawing)
{
    m_window.clearCartMark();
    if (m_words.queuesAnything || isQueuedPath(selectedDrawing)) {
        const Message added = {"Added: " + selectedDrawing + "\r\n" + m_words.addedLine,
                               "File Added to Queue", MessageIcon::Information};
        const auto tell = [this, &added] { m_window.messages().show(added); };
        if (Result<void> written = m_services.addToQueue(selectedDrawing, tell); !written)
            return written;
    }
    const bool refused = m_words.queuesAnything ? selectedDrawing.empty() : !isQueuedPath(selectedDrawing);
    if (refused) {
        m_window.messages().show(
            {"No Files Selected for the Drawing Queue", m_words.refusalTitle, MessageIcon::Information});
        m_window.enableMainWindow();
    }
    return {};
}

void ActionRun::place()
{
    if (isRefused())
        return;
    const HostOutcome found = m_session.find();
    if (found == HostOutcome::NotLaunched)
        return;
    m_declined = found == HostOutcome::Declined;
    m_showCaller = found == HostOutcome::Failed;
    if (found == HostOutcome::Found) {
        if (m_window.mode() == ActionMode::OpenCopy) {
            // Without a dialog that could bring it back, the window must not stay hidden.
            m_showCaller = !m_window.openCmode(m_drawing);
        } else if (m_window.mode() == ActionMode::Xref) {
            openXattach();
        } else if (!insertBlock()) {
            finish();
            return;
        }
    }
    if (m_showCaller || m_declined)
        m_window.showWindow();
    else
        m_window.hideWindow();
    finish();
}

/// Whether the drawing, or the scale as the user wrote it, is nothing to type at the host.
bool ActionRun::isRefused()
{
    if (refusesDrawing(m_drawing, m_window.messages()))
        return true;
    const bool typesScale = m_window.mode() == ActionMode::Block && !m_window.autoScale();
    return typesScale && refusesText(m_window.scaleText(), m_window.messages());
}

void ActionRun::openXattach()
{
    m_showCaller = m_settings.checkXrefNames && refusesXrefName();
    if (m_showCaller)
        return;
    m_window.hideWindow();
    const Result<std::string> property = m_window.firstCustomProperty(m_drawing);
    m_showCaller = !m_window.openXattach(m_drawing, storedScale(property.valueOr({})));
}

/// Whether a block of the drawing's name keeps it from being attached, or the host does not tell.
bool ActionRun::refusesXrefName()
{
    Result<AutomationObjectPtr> document = asObject(m_session.application()->get("ActiveDocument"));
    if (!document)
        return true;
    m_document = std::move(*document);
    const std::string name = drawingName(m_drawing);
    if (!nameIsTaken(name, Taken::AsBlock))
        return false;
    m_window.messages().show({name + " Already Exists as a Block in this Drawing!",
                              "Can't Xref if Block Exists!", MessageIcon::None});
    return true;
}

/// False when the window has been shown already.
bool ActionRun::insertBlock()
{
    if (!attachForBlock())
        return true;
    if (m_settings.checkXrefNames) {
        const std::string name = drawingName(m_drawing);
        if (nameIsTaken(name, Taken::AsXref)) {
            m_window.showWindow();
            m_window.messages().show({name + " Already Exists as an Xref in this Drawing!",
                                      "Can't Insert Block if Xref Exists!", MessageIcon::None});
            return false;
        }
    }
    static_cast<void>(m_document->get("ObjectSnapMode"));
    if (m_bracket.enter(m_document) && m_window.mode() == ActionMode::Block)
        static_cast<void>(typeInsertion());
    m_bracket.restore();
    m_bracket.restore();
    return true;
}

bool ActionRun::attachForBlock()
{
    m_window.hideWindow();
    m_showCaller = true;
    const HostOutcome attached = m_session.attachAgain();
    m_declined = attached == HostOutcome::Declined;
    if (attached != HostOutcome::Found)
        return false;
    Result<AutomationObjectPtr> document = asObject(m_session.application()->get("ActiveDocument"));
    if (!document || !m_session.application()->set("Visible", true))
        return false;
    m_document = std::move(*document);
    m_session.activate();
    return true;
}

bool ActionRun::nameIsTaken(const std::string& name, Taken how)
{
    const Result<AutomationObjectPtr> blocks = asObject(m_document->get("Blocks"));
    if (!blocks)
        return false;
    Result<std::vector<AutomationValue>> members = (*blocks)->items();
    if (!members)
        return false;
    bool taken = false;
    for (AutomationValue& member : *members) {
        const Result<AutomationObjectPtr> block = asObject(std::move(member));
        if (!block)
            continue;
        const Result<std::string> blockName = asText((*block)->get("Name"));
        const bool isLayout = how == Taken::AsBlock && asBool((*block)->get("IsLayout")).valueOr(true);
        const bool isXref = asBool((*block)->get("IsXRef")).valueOr(how == Taken::AsBlock);
        const bool counts = how == Taken::AsXref ? isXref : !isLayout && !isXref;
        if (blockName && counts && upper(*blockName) == name)
            taken = true;
    }
    return taken;
}

Result<void> ActionRun::typeInsertion()
{
    AutomationPoint point;
    if (m_window.explode()) {
        const Result<AutomationPoint> picked = askPoint();
        if (!picked)
            return picked.error();
        point = *picked;
    }
    if (m_window.autoScale()) {
        if (Result<void> computed = computeScale(); !computed)
            return computed;
    }
    const Result<std::string> scale = scaleToType();
    if (!scale)
        return scale.error();
    const std::string path = withExplodeMark(m_slashed, m_window.explode());
    return sendCommand(m_window.explode() ? insertExplodedText(path, point, *scale)
                                          : insertBlockText(path, *scale));
}

Result<AutomationPoint> ActionRun::askPoint()
{
    const Result<AutomationObjectPtr> utility = asObject(m_document->get("Utility"));
    if (!utility)
        return utility.error();
    const auto pick = [&] {
        const UserIsAsked asked(m_services.splash);
        return asPoint(
            (*utility)->call("GetPoint", {MissingArgument{}, std::string("Specify insertion point: ")}));
    };
    Result<AutomationPoint> picked = pick();
    if (!picked)
        return picked;
    return asPoint(
        (*utility)->call("TranslateCoordinates", {*picked, std::monostate{}, std::monostate{}, false}));
}

/// Puts the host's scale divided by the drawing's into the window.
Result<void> ActionRun::computeScale()
{
    const Result<double> dimscale =
        asNumber(m_document->call("GetVariable", {AutomationValue(std::string("dimscale"))}));
    if (!dimscale)
        return dimscale.error();
    const double hostScale = *dimscale == 0 ? 1 : *dimscale;
    const Result<std::string> property = m_window.firstCustomProperty(m_slashed);
    if (!property)
        return property.error();
    std::string drawingScale = storedScale(*property);
    if (drawingScale.empty()) {
        drawingScale = "1";
        m_window.setScaleText("1");
    }
    double divisor = 0;
    if (!textNumber(drawingScale, divisor) || divisor == 0)
        return Error{ErrorCode::Failed, "the drawing's stored scale is no number"};
    m_window.setScaleText(numberText(hostScale / divisor));
    return {};
}

Result<std::string> ActionRun::scaleToType() const
{
    const std::string text = m_window.scaleText();
    double value = 0;
    if (!textNumber(text, value))
        return Error{ErrorCode::Failed, "the scale is no number"};
    return value == 0 ? std::string("1") : text;
}

Result<void> ActionRun::sendCommand(const std::string& text)
{
    const UserIsAsked asked(m_services.splash);
    const Result<AutomationValue> sent = m_document->call("SendCommand", {text});
    if (!sent)
        return sent.error();
    return {};
}

void ActionRun::finish()
{
    m_bracket.leave();
    m_services.writeLog(m_drawing, logWord());
}

const char* ActionRun::logWord() const
{
    switch (m_window.mode()) {
    case ActionMode::Block:
        return m_words.blockWord;
    case ActionMode::Xref:
        return m_words.xrefWord;
    case ActionMode::OpenCopy:
        return m_words.openWord;
    case ActionMode::Queue:
    case ActionMode::None:
        break;
    }
    return "";
}

} // namespace

Result<void> runAction(ActionCaller caller, const std::string& drawing, const std::string& selectedDrawing,
                       ActionWindow& window, ActionServices& services, const ActionSettings& settings)
{
    ActionRun run(caller, drawing, window, services, settings);
    if (window.mode() == ActionMode::Queue)
        return run.queue(selectedDrawing);
    run.place();
    return {};
}

} // namespace zv
