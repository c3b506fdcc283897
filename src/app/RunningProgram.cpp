#include "app/RunningProgram.h"

#include "platform/ProfileWrites.h"
#include "window/Window.h"

#include <QGuiApplication>

#include <chrono>
#include <exception>

namespace zv {

namespace {

constexpr int kProfileRetryMs = 50;
/// How long the last try of the settings goes on, with no window left that could be held up.
constexpr std::chrono::milliseconds kLastPatience{500};

} // namespace

RunningProgram::RunningProgram(Folders folders, Messages& messages)
    : m_folders(std::move(folders)), m_messages(messages)
{
    m_profileRetry.setInterval(kProfileRetryMs);
    connect(&m_profileRetry, &QTimer::timeout, this, &RunningProgram::retryProfiles);
    profileWrites().whenWaiting([this] {
        if (!m_endHold)
            m_endHold.emplace();
        m_profileRetry.start();
    });
}

RunningProgram::~RunningProgram()
{
    qDeleteAll(m_loaded);
    profileWrites().whenWaiting({});
    profileWrites().end(kLastPatience);
}

void RunningProgram::retryProfiles()
{
    if (endIsRequested())
        profileWrites().end(kLastPatience);
    else if (profileWrites().retry())
        return;
    m_profileRetry.stop();
    // A signal that came meanwhile is carried out here.
    m_endHold.reset();
}

void RunningProgram::add(const QString& name, Factory factory)
{
    m_factories.insert(name, std::move(factory));
}

Window* RunningProgram::load(const QString& name)
{
    if (Window* window = loaded(name))
        return window;
    // A run that has failed ends without the windows that others bring back.
    if (m_exitStatus != 0)
        return nullptr;
    const auto factory = m_factories.constFind(name);
    if (factory == m_factories.constEnd())
        return nullptr;
    Window* window = (*factory)();
    // Known before it loads, since a load may reach for its own window by name.
    m_loaded.insert(name, window);
    window->load();
    // One that finds nothing to work with leaves again.
    return loaded(name);
}

Window* RunningProgram::loadAnew(const QString& name)
{
    takeOut(name);
    return load(name);
}

bool RunningProgram::show(const QString& name)
{
    Window* window = load(name);
    if (!window || m_exitStatus != 0)
        return false;
    window->appear();
    return true;
}

void RunningProgram::hide(const QString& name)
{
    if (Window* window = loaded(name))
        window->hide();
}

void RunningProgram::unload(const QString& name)
{
    if (takeOut(name) && m_loaded.isEmpty() && m_exitStatus == 0)
        Q_EMIT ended(0);
}

bool RunningProgram::takeOut(const QString& name)
{
    Window* window = loaded(name);
    // A window whose unloading reaches back here is on its way out already.
    if (!window || m_unloading.contains(name))
        return false;
    m_unloading.insert(name);
    window->unloading();
    m_unloading.remove(name);
    m_loaded.remove(name);
    window->hide();
    // Its handlers are still running.
    window->deleteLater();
    return true;
}

bool RunningProgram::guarded(const std::function<void()>& handler)
{
    try {
        handler();
        return true;
    } catch (const std::exception& failure) {
        fail(failure.what());
        return false;
    }
}

void RunningProgram::fail(const std::string& text)
{
    if (m_exitStatus != 0)
        return;
    m_exitStatus = 1;
    while (QGuiApplication::overrideCursor())
        QGuiApplication::restoreOverrideCursor();
    m_messages.show({text, {}, MessageIcon::Critical});
    // What windows keep at any other end they keep at this one. Their handlers may still be running.
    const QStringList names = m_loaded.keys();
    for (const QString& name : names) {
        Window* window = loaded(name);
        if (!window || m_unloading.contains(name))
            continue;
        m_unloading.insert(name);
        guarded([window] { window->unloading(); });
        window->hide();
    }
    Q_EMIT ended(m_exitStatus);
}

} // namespace zv
