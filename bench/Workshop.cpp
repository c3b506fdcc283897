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

std::shared_ptr<BenchDrawing> Workshop::add()
{
    if (isSingle())
        m_drawings.clear();
    auto drawing = std::make_shared<BenchDrawing>("Drawing" + std::to_string(++m_lastNumber) + ".dwg");
    m_drawings.push_back(drawing);
    activate(drawing);
    return drawing;
}

Result<std::shared_ptr<BenchDrawing>> Workshop::open(const std::string& path)
{
    const auto already = std::find_if(m_drawings.begin(), m_drawings.end(),
                                      [&](const auto& drawing) { return drawing->path() == path; });
    if (already != m_drawings.end()) {
        activate(*already);
        return m_active;
    }
    if (isSingle() && m_active && m_active->isModified())
        return Error{ErrorCode::Busy, m_active->title() + " is not saved, and only one drawing can be open"};
    Result<std::shared_ptr<BenchDrawing>> loaded = BenchDrawing::load(path);
    if (!loaded)
        return loaded;
    if (isSingle())
        m_drawings.clear();
    m_drawings.push_back(*loaded);
    activate(*loaded);
    return loaded;
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

} // namespace zv::bench
