#include "Workshop.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv::bench {

Workshop::Workshop(BenchFront& front) : commandRuns([] { return false; }), m_front(front)
{
    m_variables.add("FILEDIA", std::int64_t{1}, between(0, 1));
    m_variables.add("CMDDIA", std::int64_t{1}, between(0, 1));
    m_variables.add("SDI", std::int64_t{0}, [this](const AutomationValue& value) {
        // One drawing cannot be all there is while several are open.
        return between(0, 3)(value) && (value == AutomationValue(std::int64_t{0}) || m_drawings.size() < 2);
    });
    m_variables.add("EXPERT", std::int64_t{0}, between(0, 5));
    m_variables.add("ATTREQ", std::int64_t{1}, between(0, 1));
    m_variables.add("ATTDIA", std::int64_t{0}, between(0, 1));
    m_variables.add("CMDECHO", std::int64_t{1}, between(0, 1));
    m_variables.addComputed("ACADVER", [] { return AutomationValue(std::string("20.0")); });
    m_variables.addComputed("PRODUCT", [] { return AutomationValue(std::string("Zelvora Bench")); });
    m_variables.addComputed("CMDACTIVE",
                            [this] { return AutomationValue(std::int64_t{commandRuns() ? 1 : 0}); });
}

void Workshop::activate(const std::shared_ptr<BenchDrawing>& drawing)
{
    m_active = drawing;
    m_front.refresh();
}

void Workshop::takeIn(const std::shared_ptr<BenchDrawing>& drawing)
{
    if (isSingle())
        m_drawings.clear();
    drawing->paintPreview = [this](const dwg::Document& document) { return m_front.paintPreview(document); };
    m_drawings.push_back(drawing);
    activate(drawing);
}

std::shared_ptr<BenchDrawing> Workshop::add()
{
    takeIn(std::make_shared<BenchDrawing>("Drawing" + std::to_string(++m_lastNumber) + ".dwg"));
    return m_active;
}

std::shared_ptr<BenchDrawing> Workshop::unsavedBeforeNext() const
{
    return isSingle() && m_active && m_active->isModified() ? m_active : nullptr;
}

std::shared_ptr<BenchDrawing> Workshop::drawingOf(const std::string& path) const
{
    const auto found = std::find_if(m_drawings.begin(), m_drawings.end(), [&](const auto& drawing) {
        return !drawing->path().empty() && isSameFile(drawing->path(), path);
    });
    return found == m_drawings.end() ? nullptr : *found;
}

Result<std::shared_ptr<BenchDrawing>> Workshop::open(const std::string& path)
{
    if (const auto already = drawingOf(path)) {
        activate(already);
        return m_active;
    }
    if (unsavedBeforeNext())
        return Error{ErrorCode::Busy, m_active->title() + " is not saved, and only one drawing can be open"};
    Result<std::shared_ptr<BenchDrawing>> loaded = BenchDrawing::load(path);
    if (!loaded)
        return loaded;
    takeIn(*loaded);
    tellOutlook(**loaded);
    return loaded;
}

/// What a drafter must know before he works on what he may not be able to save.
void Workshop::tellOutlook(const BenchDrawing& drawing)
{
    const SaveOutlook& outlook = drawing.outlook();
    if (outlook.way == SaveWay::NewFile) {
        m_front.write(drawing.path() + " itself cannot be written: " + outlook.reason + ".");
        m_front.write(outlook.missing.empty()
                          ? "SAVEAS to a new name saves all of it."
                          : "SAVEAS to a new name would leave out: " + joined(outlook.missing) + ".");
    } else if (drawing.isFileReadOnly()) {
        m_front.write(drawing.path() + " is read-only. SAVEAS saves to a new name.");
    }
}

void Workshop::close(const std::shared_ptr<BenchDrawing>& drawing)
{
    const auto found = std::find(m_drawings.begin(), m_drawings.end(), drawing);
    if (found == m_drawings.end())
        return;
    m_drawings.erase(found);
    if (m_active == drawing)
        m_active = m_drawings.empty() ? nullptr : m_drawings.back();
    m_front.refresh();
}

Variables& Workshop::variablesFor(std::string_view name, const std::shared_ptr<BenchDrawing>& drawing)
{
    return drawing && drawing->variables().has(name) ? drawing->variables() : m_variables;
}

Result<void> Workshop::setVariable(std::string_view name, const AutomationValue& value,
                                   const std::shared_ptr<BenchDrawing>& drawing)
{
    return drawing && drawing->variables().has(name) ? drawing->setVariable(name, value)
                                                     : m_variables.set(name, value);
}

} // namespace zv::bench
