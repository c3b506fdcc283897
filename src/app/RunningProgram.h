#pragma once

#include "config/PublicValues.h"
#include "platform/EndRequest.h"
#include "window/BrowserFields.h"
#include "window/Program.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

namespace zv {

struct ActionServices;

/// The program as it runs: it owns the loaded windows, sees to it that settings which wait for a busy profile
/// are written, and knows when the run has ended.
class RunningProgram final : public QObject, public Program {
    Q_OBJECT

public:
    /// `messages` and `services` outlive the program.
    RunningProgram(Folders folders, Messages& messages);
    ~RunningProgram() override;

    void setActionServices(ActionServices& services) { m_services = &services; }

    void add(const QString& name, Factory factory) override;
    Window* load(const QString& name) override;
    Window* loadAnew(const QString& name) override;
    Window* loaded(const QString& name) const override { return m_loaded.value(name); }
    bool show(const QString& name) override;
    void hide(const QString& name) override;
    void unload(const QString& name) override;

    const Folders& folders() const override { return m_folders; }
    PublicValues& values() override { return m_values; }
    BrowserFields& fields() override { return m_fields; }
    Messages& messages() override { return m_messages; }
    ActionServices& actionServices() override { return *m_services; }
    void fail(const std::string& text) override;

    /// Runs what may let a failure of the language through, and ends the program with it. False when it did.
    bool guarded(const std::function<void()>& handler);
    /// 0, or 1 once the program has failed.
    int exitStatus() const { return m_exitStatus; }

Q_SIGNALS:
    /// The last window has been unloaded, or the program has failed.
    void ended(int exitStatus);

private:
    bool takeOut(const QString& name);
    void retryProfiles();

    Folders m_folders;
    Messages& m_messages;
    ActionServices* m_services = nullptr;
    PublicValues m_values;
    BrowserFields m_fields;
    QHash<QString, Factory> m_factories;
    QHash<QString, Window*> m_loaded;
    QSet<QString> m_unloading;
    int m_exitStatus = 0;
    std::optional<EndRequestHold> m_endHold; ///< No signal ends the program while a setting waits.
    QTimer m_profileRetry; ///< Runs while a setting waits for a profile that another program holds.
};

} // namespace zv
