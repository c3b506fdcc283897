#pragma once

#include "platform/FileSteps.h"

namespace zv {

/// Lets one step of a kind fail while it lives: the one of number `number`, from 0.
class OneStepFails final : public FileWatch {
public:
    OneStepFails(FileStep step, int number) : m_step(step), m_number(number) { watchFiles(this); }
    OneStepFails(const OneStepFails&) = delete;
    OneStepFails& operator=(const OneStepFails&) = delete;
    ~OneStepFails() override { watchFiles(nullptr); }

    StepOutcome before(FileStep step) override
    {
        return step == m_step && m_made++ == m_number ? StepOutcome::Failed : StepOutcome::Made;
    }
    bool wasReached() const { return m_made > m_number; }

private:
    FileStep m_step;
    int m_number;
    int m_made = 0;
};

} // namespace zv
