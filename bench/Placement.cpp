#include "Placement.h"

#include <cmath>
#include <numbers>

namespace zv::bench {

namespace {

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

} // namespace

Prompt Placement::prompt(dwg::Handle block, double factor) const
{
    Prompt prompt = question();
    DraggedBlock dragged;
    dragged.block = block;
    dragged.scale = {scale().x * factor, scale().y * factor, scale().z * factor};
    dragged.rotation = rotation();
    if (m_stage != Stage::Point && m_stage != Stage::Preset)
        dragged.at = m_point;
    dragged.turns = m_stage == Stage::Rotation;
    prompt.dragged = dragged;
    return prompt;
}

Prompt Placement::question() const
{
    switch (m_stage) {
    case Stage::Point:
        if (m_uniform)
            return {"Specify insertion point:", false, true, {}};
        return {"Specify insertion point or [Scale/X/Y/Z/Rotate]:", false, true, {}};
    case Stage::Preset:
        return {m_presetQuestion, false, false, {}};
    case Stage::ScaleX:
        if (m_uniform)
            return {"Specify scale factor for XYZ axes <1>:", false, false, {}};
        return {"Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>:", false, true, m_point};
    case Stage::ScaleY:
        return {"Enter Y scale factor <use X scale factor>:", false, false, {}};
    case Stage::ScaleZ:
        return {"Enter Z scale factor <use X scale factor>:", false, false, {}};
    case Stage::Rotation:
        break;
    }
    return {"Specify rotation angle <0>:", false, true, m_point};
}

Step Placement::answer(const Answer& answer)
{
    switch (m_stage) {
    case Stage::Point:
        return pointAnswer(answer);
    case Stage::Preset:
        return presetAnswer(answer);
    case Stage::ScaleX:
        return scaleXAnswer(answer);
    case Stage::ScaleY:
    case Stage::ScaleZ:
        return otherScaleAnswer(answer);
    case Stage::Rotation:
        break;
    }
    return rotationAnswer(answer);
}

dwg::Point3 Placement::scale() const
{
    const double x = m_x.value_or(1);
    return {x, m_y.value_or(x), m_z.value_or(x)};
}

Step Placement::pointAnswer(const Answer& answer)
{
    if (const std::optional<dwg::Point3> point = pointOf(answer)) {
        m_point = *point;
        return next();
    }
    const char* question = nullptr;
    if (isOption(answer, "Scale")) {
        question = "Specify scale factor for XYZ axes <1>:";
        m_storePreset = [this](double value) { m_x = m_y = m_z = value; };
    } else if (isOption(answer, "X")) {
        question = "Specify X scale factor <1>:";
        m_storePreset = [this](double value) { m_x = value; };
    } else if (isOption(answer, "Y")) {
        question = "Specify Y scale factor <1>:";
        m_storePreset = [this](double value) { m_y = value; };
    } else if (isOption(answer, "Z")) {
        question = "Specify Z scale factor <1>:";
        m_storePreset = [this](double value) { m_z = value; };
    } else if (isOption(answer, "Rotate")) {
        question = "Specify rotation angle <0>:";
        m_storePreset = [this](double value) { m_rotation = radians(value); };
    } else {
        return Step::Invalid;
    }
    m_presetQuestion = question;
    m_stage = Stage::Preset;
    return Step::More;
}

Step Placement::presetAnswer(const Answer& answer)
{
    const bool isAngle = m_presetQuestion.find("rotation") != std::string::npos;
    const std::optional<double> number = answer.isEnter() ? (isAngle ? 0.0 : 1.0) : numberOf(answer);
    if (!number || (!isAngle && *number == 0))
        return Step::Invalid;
    m_storePreset(*number);
    m_stage = Stage::Point;
    return Step::More;
}

/// The next prompt after the point that is still open.
Step Placement::next()
{
    if (!m_x)
        m_stage = Stage::ScaleX;
    else if (!m_uniform && !m_y)
        m_stage = Stage::ScaleY;
    else if (m_askZ && !m_z)
        m_stage = Stage::ScaleZ;
    else if (!m_rotation)
        m_stage = Stage::Rotation;
    else
        return Step::Done;
    return Step::More;
}

Step Placement::scaleXAnswer(const Answer& answer)
{
    if (!m_uniform && isOption(answer, "XYZ")) {
        m_askZ = true;
        return Step::More;
    }
    // "X" only says which factor comes next.
    if (!m_uniform && (isOption(answer, "Corner") || answer.text == "X" || answer.text == "x"))
        return Step::More;
    if (const auto corner = m_uniform ? std::nullopt : pointOf(answer)) {
        if (corner->x == m_point.x || corner->y == m_point.y)
            return Step::Invalid;
        m_x = corner->x - m_point.x;
        m_y = corner->y - m_point.y;
        return next();
    }
    const std::optional<double> number = answer.isEnter() ? 1.0 : numberOf(answer);
    if (!number || *number == 0 || (m_uniform && *number < 0))
        return Step::Invalid;
    m_x = *number;
    return next();
}

Step Placement::otherScaleAnswer(const Answer& answer)
{
    const std::optional<double> number = answer.isEnter() ? m_x : numberOf(answer);
    if (!number || *number == 0)
        return Step::Invalid;
    (m_stage == Stage::ScaleY ? m_y : m_z) = *number;
    return next();
}

Step Placement::rotationAnswer(const Answer& answer)
{
    if (const auto towards = pointOf(answer)) {
        m_rotation = std::atan2(towards->y - m_point.y, towards->x - m_point.x);
        return Step::Done;
    }
    const std::optional<double> degrees = answer.isEnter() ? 0.0 : numberOf(answer);
    if (!degrees)
        return Step::Invalid;
    m_rotation = radians(*degrees);
    return Step::Done;
}

} // namespace zv::bench
