#include "Commands.h"

#include "Selection.h"

#include <algorithm>

namespace zv::bench {

namespace {

/// Takes objects until Enter, then takes them away.
class EraseCommand final : public Command {
public:
    explicit EraseCommand(Workshop& workshop) : m_workshop(workshop), m_drawing(workshop.active()) {}

    Prompt prompt() const override
    {
        if (m_corner) {
            Prompt prompt{"Specify opposite corner:", false, true, {}};
            prompt.boxFrom = m_corner;
            return prompt;
        }
        if (m_mode != Mode::Pick)
            return {"Specify first corner:", false, true, {}};
        return {"Select objects [ALL/Last/Previous/Window/Crossing]:", false, true, {}};
    }

    Step answer(const Answer& answer) override
    {
        if (const auto point = pointOf(answer))
            return pointAnswer(*point);
        if (m_corner || m_mode != Mode::Pick)
            return Step::Invalid;
        if (answer.isEnter())
            return erase();
        if (isOption(answer, "ALL"))
            return take(all());
        if (isOption(answer, "Last"))
            return take(last());
        if (isOption(answer, "Previous"))
            return take(previous());
        if (isOption(answer, "Window"))
            m_mode = Mode::Window;
        else if (isOption(answer, "Crossing"))
            m_mode = Mode::Crossing;
        else
            return Step::Invalid;
        return Step::More;
    }

private:
    enum class Mode { Pick, Window, Crossing };
    using Places = std::vector<std::size_t>;

    const std::vector<dwg::Entity>& entities() const { return m_drawing->modelSpace().entities; }
    const Outlines& outlines()
    {
        if (!m_outlines)
            m_outlines.emplace(m_drawing->seen());
        return *m_outlines;
    }

    /// A pick beside everything begins a window: to the right it takes what is inside, to the left what it
    /// crosses as well.
    Step pointAnswer(const dwg::Point3& point)
    {
        if (m_corner) {
            const bool crosses = m_mode == Mode::Pick ? point.x < m_corner->x : m_mode == Mode::Crossing;
            dwg::Box window;
            window.add(dwg::flat(*m_corner));
            window.add(dwg::flat(point));
            m_corner.reset();
            m_mode = Mode::Pick;
            return take(crosses ? outlines().crossing(window) : outlines().inside(window));
        }
        if (m_mode == Mode::Pick) {
            const auto picked = outlines().nearest(dwg::flat(point), m_workshop.front().pickRadius());
            if (picked)
                return take({*picked});
        }
        m_corner = point;
        return Step::More;
    }

    Places all() const
    {
        Places places(entities().size());
        for (std::size_t place = 0; place < places.size(); ++place)
            places[place] = place;
        return places;
    }
    Places last() const { return entities().empty() ? Places() : Places{entities().size() - 1}; }
    Places previous() const
    {
        Places places;
        const std::vector<dwg::Handle>& handles = m_drawing->previousSelection;
        for (std::size_t place = 0; place < entities().size(); ++place) {
            if (std::find(handles.begin(), handles.end(), entities()[place].handle) != handles.end())
                places.push_back(place);
        }
        return places;
    }

    Step take(const Places& places)
    {
        for (const std::size_t place : places) {
            const dwg::Handle handle = entities()[place].handle;
            if (std::find(m_taken.begin(), m_taken.end(), handle) == m_taken.end())
                m_taken.push_back(handle);
        }
        m_workshop.front().write(std::to_string(places.size()) + " found, " + std::to_string(m_taken.size()) +
                                 " total");
        return Step::More;
    }

    Step erase()
    {
        if (m_taken.empty())
            return Step::Done;
        m_drawing->beginChange();
        std::erase_if(m_drawing->modelSpace().entities, [this](const dwg::Entity& entity) {
            return std::find(m_taken.begin(), m_taken.end(), entity.handle) != m_taken.end();
        });
        m_drawing->previousSelection = std::move(m_taken);
        return Step::Done;
    }

    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    Mode m_mode = Mode::Pick;
    std::optional<dwg::Point3> m_corner;
    std::optional<Outlines> m_outlines; ///< Made for the first pick.
    std::vector<dwg::Handle> m_taken;
};

} // namespace

std::unique_ptr<Command> makeErase(Workshop& workshop)
{
    return std::make_unique<EraseCommand>(workshop);
}

} // namespace zv::bench
