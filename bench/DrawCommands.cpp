#include "Commands.h"

#include "DocumentEdit.h"

#include <cmath>

namespace zv::bench {

namespace {

void addToModel(BenchDrawing& drawing, std::string kind, dwg::Geometry geometry)
{
    drawing.beginChange();
    drawing.modelSpace().entities.push_back(
        newEntity(drawing.document(), std::move(kind), std::move(geometry), drawing.currentLayer()));
}

class LineCommand final : public Command {
public:
    explicit LineCommand(Workshop& workshop) : m_workshop(workshop), m_drawing(workshop.active()) {}
    Prompt prompt() const override
    {
        if (!m_last)
            return {"Specify first point:", false, true, {}};
        return {"Specify next point:", false, true, m_last};
    }
    Step answer(const Answer& answer) override
    {
        if (answer.isEnter())
            return Step::Done;
        const auto point = pointOf(answer, m_last.value_or(dwg::Point3{}));
        if (!point)
            return Step::Invalid;
        if (m_last) {
            addToModel(*m_drawing, "LINE", dwg::Line{*m_last, *point, 0, dwg::kZAxis});
            m_workshop.front().refresh();
        }
        m_last = point;
        return Step::More;
    }

private:
    Workshop& m_workshop;
    std::shared_ptr<BenchDrawing> m_drawing;
    std::optional<dwg::Point3> m_last;
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
        addToModel(*m_drawing, "CIRCLE", dwg::Circle{*m_center, *radius, 0, dwg::kZAxis});
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
    if (!count || *count < 1 || *count > 1000)
        return Step::Invalid;
    undoSteps(workshop, static_cast<int>(*count));
    return Step::Done;
}

} // namespace

std::unique_ptr<Command> makeDrawCommand(const std::string& name, Workshop& workshop)
{
    if (!workshop.active())
        return nullptr;
    if (name == "LINE" || name == "L")
        return std::make_unique<LineCommand>(workshop);
    if (name == "CIRCLE" || name == "C")
        return std::make_unique<CircleCommand>(workshop);
    if (name == "ERASE" || name == "E")
        return makeErase(workshop);
    if (name == "U")
        return std::make_unique<PlainCommand>([&workshop] { undoSteps(workshop, 1); });
    if (name == "UNDO") {
        return std::make_unique<QuestionCommand>(
            Prompt{"Enter the number of operations to undo <1>:", false, false, {}},
            [&workshop](const Answer& answer) { return undoAnswer(workshop, answer); });
    }
    return nullptr;
}

} // namespace zv::bench
