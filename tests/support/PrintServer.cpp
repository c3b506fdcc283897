#include "support/PrintServer.h"

#include <QDir>
#include <QStandardPaths>
#include <QTest>

namespace zv {

namespace {

constexpr int kPatienceMs = 5000;

/// A plotter of A4 and A3 paper that takes PDF as it is.
const char kPrinter[] = R"ppd(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*FileVersion: "1.0"
*LanguageVersion: English
*LanguageEncoding: ISOLatin1
*PCFileName: "PLOTTER.PPD"
*Manufacturer: "Test"
*Product: "(Plotter)"
*ModelName: "Plotter"
*ShortNickName: "Plotter"
*NickName: "Plotter"
*PSVersion: "(3010) 0"
*LanguageLevel: "3"
*ColorDevice: True
*DefaultColorSpace: RGB
*cupsFilter: "application/pdf 0 -"
*OpenUI *PageSize/Page Size: PickOne
*OrderDependency: 10 AnySetup *PageSize
*DefaultPageSize: A4
*PageSize A4/A4: "<</PageSize[595 842]>>setpagedevice"
*PageSize A3/A3: "<</PageSize[842 1191]>>setpagedevice"
*CloseUI: *PageSize
*OpenUI *PageRegion: PickOne
*OrderDependency: 10 AnySetup *PageRegion
*DefaultPageRegion: A4
*PageRegion A4/A4: "<</PageRegion[595 842]>>setpagedevice"
*PageRegion A3/A3: "<</PageRegion[842 1191]>>setpagedevice"
*CloseUI: *PageRegion
*DefaultImageableArea: A4
*ImageableArea A4/A4: "12 12 583 830"
*ImageableArea A3/A3: "12 12 830 1179"
*DefaultPaperDimension: A4
*PaperDimension A4/A4: "595 842"
*PaperDimension A3/A3: "842 1191"
)ppd";

const char kServer[] = R"(LogLevel warn
Listen %1/cups.sock
Browsing Off
WebInterface No
MaxJobs 0
PreserveJobHistory Yes
PreserveJobFiles Yes
DefaultAuthType None
<Location />
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
Allow all
</Limit>
</Policy>
)";

const char kServerFiles[] = R"(FileDevice Yes
ServerRoot %1/etc
RequestRoot %1/spool
TempDir %1/spool/tmp
CacheDir %1/cache
StateDir %1/state
AccessLog %1/log/access
ErrorLog %1/log/error
PageLog %1/log/page
)";

/// The server's own programs lie outside the paths of plain users.
QString programFile(const QString& name)
{
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {QStringLiteral("/usr/sbin")}) : found;
}

} // namespace

PrintServer::PrintServer()
{
    if (programFile(QStringLiteral("cupsd")).isEmpty() || programFile(QStringLiteral("lpadmin")).isEmpty())
        m_whyNot = QStringLiteral("no print server here (package cups)");
    else
        start();
}

PrintServer::~PrintServer()
{
    stop();
}

bool PrintServer::write(const QString& name, const QByteArray& text)
{
    QFile out(file(name));
    return out.open(QIODevice::WriteOnly) && out.write(text) == text.size();
}

void PrintServer::writeSettings()
{
    for (const char* folder : {"etc/ppd", "spool/tmp", "cache", "state", "log", "out"})
        QDir(m_folder.path()).mkpath(QLatin1String(folder));
    // The server gives up root's rights for its jobs.
    QFile::setPermissions(m_folder.path(), QFile::permissions(m_folder.path()) | QFile::ReadOther |
                                               QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup);
    const auto filled = [this](const char* text) {
        return QString::fromLatin1(text).replace(QStringLiteral("%1"), m_folder.path()).toLocal8Bit();
    };
    write(QStringLiteral("cupsd.conf"), filled(kServer));
    write(QStringLiteral("cups-files.conf"), filled(kServerFiles));
    write(QStringLiteral("plotter.ppd"), kPrinter);
}

void PrintServer::start()
{
    writeSettings();
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    m_server.start(programFile(QStringLiteral("cupsd")),
                   {QStringLiteral("-f"), QStringLiteral("-c"), file(QStringLiteral("cupsd.conf")),
                    QStringLiteral("-s"), file(QStringLiteral("cups-files.conf"))});
    const QString socket = file(QStringLiteral("cups.sock"));
    const bool listens =
        QTest::qWaitFor([&] { return QFile::exists(socket) || m_server.state() == QProcess::NotRunning; },
                        kPatienceMs) &&
        QFile::exists(socket);
    if (!listens) {
        m_whyNot =
            QStringLiteral("the print server does not start: ") + QString::fromLocal8Bit(m_server.readAll());
        return;
    }
    m_environment = std::make_unique<Environment>("CUPS_SERVER", socket.toStdString());
    QProcess admin;
    admin.start(programFile(QStringLiteral("lpadmin")),
                {QStringLiteral("-p"), QStringLiteral("Plotter"), QStringLiteral("-E"), QStringLiteral("-v"),
                 QStringLiteral("file:") + file(QStringLiteral("out/last.pdf")), QStringLiteral("-P"),
                 file(QStringLiteral("plotter.ppd"))});
    if (!admin.waitForFinished() || admin.exitCode() != 0)
        m_whyNot = QStringLiteral("the print server takes no queue: ") +
                   QString::fromLocal8Bit(admin.readAllStandardError());
}

QStringList PrintServer::jobs() const
{
    QStringList files;
    const QDir spool(file(QStringLiteral("spool")));
    for (const QString& name : spool.entryList({QStringLiteral("d*")}, QDir::Files, QDir::Name))
        files << spool.filePath(name);
    return files;
}

void PrintServer::stop()
{
    m_server.terminate();
    if (!m_server.waitForFinished(kPatienceMs))
        m_server.kill();
    m_server.waitForFinished(kPatienceMs);
}

} // namespace zv
