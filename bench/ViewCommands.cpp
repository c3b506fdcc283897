#include "Commands.h"

#include "platform/Text.h"

namespace zv::bench {

namespace {

class ZoomCommand final : public Command {
public:
    explicit ZoomCommand(Workshop& workshop) : m_workshop(workshop) {}
    Prompt prompt() const override
    {
        if (m_corner)
            return {"Specify opposite corner:", false, true, m_corner};
        if (m_window)
            return {"Specify first corner:", false, true, {}};
        return {"Specify corner of window, enter a scale factor (nX), or [All/Extents/Previous/Window]:",
                false,
                true,
                {}};
    }
    Step answer(const Answer& answer) override
    {
        if (const auto point = pointOf(answer))
            return cornerAnswer(*point);
        if (m_window || m_corner)
            return Step::Invalid;
        if (isOption(answer, "Window")) {
            m_window = true;
            return Step::More;
        }
        if (answer.isEnter() || isOption(answer, "All") || isOption(answer, "Extents")) {
            m_workshop.front().zoom({});
            return Step::Done;
        }
        if (isOption(answer, "Previous")) {
            m_workshop.front().zoom({ZoomRequest::Kind::Previous, {}, {}, 1});
            return Step::Done;
        }
        return factorAnswer(answer.text);
    }

private:
    Step cornerAnswer(const dwg::Point3& point)
    {
        if (!m_corner) {
            m_corner = point;
            return Step::More;
        }
        if (point.x == m_corner->x || point.y == m_corner->y)
            return Step::Invalid;
        m_workshop.front().zoom({ZoomRequest::Kind::Window, *m_corner, point, 1});
        return Step::Done;
    }
    Step factorAnswer(std::string text)
    {
        while (!text.empty() && upper(text).back() == 'X')
            text.pop_back();
        double factor = 0;
        if (!textNumber(text, factor) || factor <= 0)
            return Step::Invalid;
        m_workshop.front().zoom({ZoomRequest::Kind::Factor, {}, {}, factor});
        return Step::Done;
    }

    Workshop& m_workshop;
    bool m_window = false;
    std::optional<dwg::Point3> m_corner;
};

} // namespace

std::unique_ptr<Command> makeViewCommand(const std::string& name, Workshop& workshop)
{
    if (name == "ZOOM")
        return std::make_unique<ZoomCommand>(workshop);
    if (name == "REGEN")
        return std::make_unique<PlainCommand>([] {});
    return nullptr;
}

} // namespace zv::bench
