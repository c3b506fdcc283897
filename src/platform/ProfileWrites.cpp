#include "platform/ProfileWrites.h"

#include "platform/Text.h"

#include <algorithm>
#include <thread>

namespace zv {

namespace {

constexpr std::chrono::milliseconds kEndPause{10};

bool isBusy(const Result<void>& done)
{
    return !done && done.error().code == ErrorCode::Busy;
}

/// What a key holds once the change is made to an empty file.
std::optional<std::string> valueAfter(const ProfileChange& change, const std::string& key)
{
    ProfileText text({});
    changeText(text, change);
    return text.value(change.section, key);
}

} // namespace

void changeText(ProfileText& text, const ProfileChange& change)
{
    if (change.key)
        text.setValue(change.section, *change.key, change.value);
    else
        text.setLines(change.section, {change.lines.begin(), change.lines.end()});
}

bool ProfileWrites::waitsFor(const std::string& file) const
{
    return std::any_of(m_waiting.begin(), m_waiting.end(),
                       [&](const Waiting& waiting) { return sameName(waiting.change.file, file); });
}

bool ProfileWrites::write(ProfileChange change)
{
    if (waitsFor(change.file))
        retry();
    if (!waitsFor(change.file)) {
        const Result<void> done = changeProfile(change);
        if (!isBusy(done))
            return done.ok();
    }
    const bool first = m_waiting.empty();
    m_waiting.push_back({std::move(change), m_now() + kProfilePatience});
    if (first && m_listener)
        m_listener();
    return true;
}

bool ProfileWrites::retry()
{
    std::deque<Waiting> tried;
    tried.swap(m_waiting);
    for (Waiting& next : tried) {
        const bool inOrder = !waitsFor(next.change.file);
        if ((!inOrder || isBusy(changeProfile(next.change))) && m_now() < next.until)
            m_waiting.push_back(std::move(next));
    }
    return !m_waiting.empty();
}

void ProfileWrites::end(std::chrono::milliseconds patience)
{
    const Time until = m_now() + patience;
    while (retry() && m_now() < until)
        std::this_thread::sleep_for(kEndPause);
    m_waiting.clear();
}

std::optional<std::optional<std::string>>
ProfileWrites::waitingValue(const std::string& file, const std::string& section, const std::string& key) const
{
    for (auto waiting = m_waiting.rbegin(); waiting != m_waiting.rend(); ++waiting) {
        const ProfileChange& change = waiting->change;
        if (!sameName(change.file, file) || !sameName(change.section, section))
            continue;
        if (!change.key || sameName(*change.key, key))
            return valueAfter(change, key);
    }
    return {};
}

ProfileWrites& profileWrites()
{
    static ProfileWrites writes;
    return writes;
}

} // namespace zv
