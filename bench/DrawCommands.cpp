#include "Commands.h"

#include "DocumentEdit.h"

#include <cmath>
#include <vector>

namespace zv::bench {

namespace {

void addEntity(BenchDrawing& drawing, std::string kind, dwg::Geometry geometry)
{
    drawing.modelSpace().entities.push_back(
        newEntity(drawing.document(), std::move(kind), std::move(geometry), drawing.currentLayer()));
}

/// All its lines are one change, but "U" takes back one after the other.
class LineCommand final : public Command {
public:
    explicit LineCommand(Workshop& workshop) : m_workshop(workshop), m_drawing(workshop.active()) {}
    Prompt prompt() const override
    {
        if (m_points.empty())
            return {"Specify first point:", false, true, {}};
        return {"Specify next point or [Undo]:", false, true, m_points.back()};
    }
    Step answer(const Answer& answer) override
    {
        if (answer.isEnter())
            return Step::Done;
        if (!m_points.empty() && isOption(answer, "Undo"))
            return takeBack();
        const auto point = pointOf(answer, m_points.empty() ? dwg::Point3{} : m_points.back());
        if (!point)
            return Step::Invalid;
        if (m_points.size() == 1)
            m_drawing->beginChange();
        if (!m_points.empty()) {
            addEntity(*m_drawing, "LINE", dwg::Line{m_points.back(), *point, 0, dwg::kZAxis});
            m_drawing->continueChange();
            m_workshop.front().refresh();
        }
        m_points.push_back(*point);
        return Step::More;
    }

private:
    Step takeBack()
    {
        if (m_points.size() > 1)
            m_drawing->modelSpace().entities.pop_back();
        m_points.pop_back();
        if (m_points.size() == 1)
            m_drawing->abandonChange();
        else
            m_drawing->continueChange();
        m_workshop.front().refresh();
        return Step::More;
    }

    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    std::vector<dwg::Point3> m_points;
};

class CircleCommand final : public Command {
public:
    explicit CircleCommand(Workshop& workshop) : m_drawing(workshop.active()) {}
    Prompt prompt() const override
    {
        if (!m_center)
            return {"Specify center point for circle:", false, true, {}};
        return {"Specify radius of circle:", false, true, m_center};
    }
    Step answer(const Answer& answer) override
    {
        if (!m_center) {
            m_center = pointOf(answer);
            return m_center ? Step::More : Step::Invalid;
        }
        std::optional<double> radius = numberOf(answer);
        if (const auto point = pointOf(answer))
            radius = std::hypot(point->x - m_center->x, point->y - m_center->y);
        if (!radius || *radius <= 0)
            return Step::Invalid;
        m_drawing->beginChange();
        addEntity(*m_drawing, "CIRCLE", dwg::Circle{*m_center, *radius, 0, dwg::kZAxis});
        return Step::Done;
    }

private:
    std::shared_ptr<BenchDrawing> m_drawing;
    std::optional<dwg::Point3> m_center;
};

void undoSteps(Workshop& workshop, int count)
{
    for (int step = 0; step < count; ++step) {
        if (!workshop.active() || !workshop.active()->undo()) {
            workshop.front().write("Everything has been undone");
            return;
        }
    }
}

Step undoAnswer(Workshop& workshop, const Answer& answer)
{
    const std::optional<double> count = answer.isEnter() ? 1.0 : numberOf(answer);
    if (!count || *count < 1 || *count > 1e6)
        return Step::Invalid;
    undoSteps(workshop, static_cast<int>(*count));
    return Step::Done;
}

} // namespace

std::unique_ptr<Command> makeDrawCommand(const std::string& name, Workshop& workshop)
{
    if (name == "LINE")
        return std::make_unique<LineCommand>(workshop);
    if (name == "CIRCLE")
        return std::make_unique<CircleCommand>(workshop);
    if (name == "ERASE")
        return makeErase(workshop);
    if (name == "U")
        return std::make_unique<PlainCommand>([&workshop] { undoSteps(workshop, 1); });
    if (name == "REDO") {
        return std::make_unique<PlainCommand>([&workshop] {
            if (!workshop.active()->redo())
                workshop.front().write("There is nothing to bring back");
        });
    }
    if (name == "UNDO") {
        return std::make_unique<QuestionCommand>(
            Prompt{"Enter the number of operations to undo <1>:", false, false, {}},
            [&workshop](const Answer& answer) { return undoAnswer(workshop, answer); });
    }
    return nullptr;
}

} // namespace zv::bench
