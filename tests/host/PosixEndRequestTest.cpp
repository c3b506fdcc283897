#include "host/ActionFixture.h"

#include <csignal>

namespace zv::test {

namespace {

volatile std::sig_atomic_t g_ended = 0;

/// Takes the place of the program's end by a signal.
class EndIsNoted {
public:
    EndIsNoted() : m_before(std::signal(SIGTERM, [](int) { g_ended = 1; })) { g_ended = 0; }
    EndIsNoted(const EndIsNoted&) = delete;
    EndIsNoted& operator=(const EndIsNoted&) = delete;
    ~EndIsNoted() { std::signal(SIGTERM, m_before); }

private:
    void (*m_before)(int);
};

using EndedAction = ActionFixture;

TEST_F(EndedAction, GivesTheSettingBackBeforeASignalEndsTheProgram)
{
    const EndIsNoted noted;
    place.run("variable filedia 1\nfault GetPoint#1 silent");
    window.check4 = true;
    bool endedInThePick = false;
    time.givesUp = [&] {
        if (events.empty() || !events.back().starts_with("Utility.GetPoint"))
            return false;
        std::raise(SIGTERM);
        endedInThePick = g_ended != 0;
        return true;
    };
    act();
    EXPECT_FALSE(endedInThePick);
    EXPECT_NE(g_ended, 0);
    const std::string transcript = place.transcript();
    EXPECT_GT(transcript.rfind("SetVariable [\"Filedia\",1]"), transcript.find("GetPoint")) << transcript;
}

} // namespace

} // namespace zv::test
