#pragma once

#include "support/Environment.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace zv {

/// A print server of the test's own, with one queue, "Plotter", that keeps what it is sent. The process finds
/// it in place of the system's while this lives.
class PrintServer {
public:
    PrintServer();
    ~PrintServer();

    /// Why there is none; empty when it runs.
    QString whyNot() const { return m_whyNot; }
    /// The files of the jobs, in their order.
    QStringList jobs() const;
    /// As if its cable were pulled.
    void stop();

private:
    QString file(const QString& name) const { return m_folder.filePath(name); }
    void writeSettings();
    bool write(const QString& name, const QByteArray& text);
    void start();

    QTemporaryDir m_folder;
    QProcess m_server;
    QString m_whyNot;
    std::unique_ptr<Environment> m_environment;
};

} // namespace zv
