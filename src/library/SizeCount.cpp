#include "library/SizeCount.h"

#include "platform/Files.h"
#include "platform/Text.h"

#include <chrono>

namespace zv {
namespace {

constexpr double kUnit = 1024;
/// What a user does not feel as a pause.
constexpr std::chrono::milliseconds kTurn(40);

} // namespace

std::int32_t totalWith(std::int32_t total, const std::string& path)
{
    const double size = double(fileLength(path).valueOr(0));
    return std::int32_t(roundHalfEven(total + size / kUnit));
}

SizeCount::SizeCount(std::function<void(std::int32_t)> tell) : m_tell(std::move(tell))
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { addSome(); });
}

void SizeCount::start(std::vector<std::string> paths)
{
    m_paths = std::move(paths);
    m_next = 0;
    m_total = 0;
    m_timer.start(0);
    addSome();
}

void SizeCount::stop()
{
    m_timer.stop();
}

void SizeCount::addSome()
{
    const auto end = std::chrono::steady_clock::now() + kTurn;
    while (m_next < m_paths.size() && std::chrono::steady_clock::now() < end)
        m_total = totalWith(m_total, m_paths[m_next++]);
    if (m_next == m_paths.size())
        m_timer.stop();
    m_tell(m_total);
}

} // namespace zv
