#include "CupsServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int patience_ms = 20000;
constexpr unsigned long pause_ms = 50;

int FreePort() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    EXPECT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
    ::close(socket);
    return ntohs(address.sin_port);
}

/// The print system's library looks for its server once in a process, so all servers of a process
/// listen at the same port, one after the other.
int ProcessPort() {
    static const int port = FreePort();
    return port;
}

void Write(const QString& name, const QString& text) {
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(text.toUtf8());
}

constexpr auto serverConfiguration = R"(LogLevel info
Listen 127.0.0.1:%1
Browsing Off
WebInterface No
IdleExitTimeout 0
DefaultAuthType None
<Location />
  Order allow,deny
  Allow from 127.0.0.1
</Location>
<Policy default>
  JobPrivateAccess all
  JobPrivateValues none
  SubscriptionPrivateAccess all
  SubscriptionPrivateValues none
  <Limit All>
    Order allow,deny
    Allow from 127.0.0.1
  </Limit>
</Policy>
)";

constexpr auto filesConfiguration = R"(ServerRoot %1/root
RequestRoot %1/spool
CacheDir %1/cache
StateDir %1/state
TempDir %1/tmp
AccessLog %1/access.log
ErrorLog %1/error.log
PageLog %1/page.log
FileDevice Yes
)";

} // namespace

CupsServer::CupsServer() : port_(ProcessPort()) {
    // The server's filters run as a user of their own.
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7055));
    WriteConfiguration();
    qputenv("CUPS_SERVER", "127.0.0.1:" + QByteArray::number(port_));
    server_.start("/usr/sbin/cupsd",
                  {"-f", "-c", Path("cupsd.conf"), "-s", Path("cups-files.conf")});
    EXPECT_TRUE(server_.waitForStarted()) << "the package cups is not installed";
    QElapsedTimer waited;
    waited.start();
    while (!Administer("lpstat", {"-r"}).contains("is running") && waited.elapsed() < patience_ms)
        QThread::msleep(pause_ms);
    Administer("lpadmin", {"-p", "Lab", "-E", "-v", "file:" + Path("out/job.pdf"), "-P",
                           VANTREL_TEST_DATA "/print/lab.ppd"});
    Administer("lpadmin", {"-d", "Lab"});
    EXPECT_TRUE(Administer("lpstat", {"-d"}).contains("Lab"));
}

CupsServer::~CupsServer() {
    Stop();
}

void CupsServer::WriteConfiguration() {
    for (const auto* name : {"root/ppd", "spool", "cache", "state", "tmp", "out"})
        QDir(folder_.path()).mkpath(name);
    Write(Path("cupsd.conf"), QString(serverConfiguration).arg(port_));
    Write(Path("cups-files.conf"), QString(filesConfiguration).arg(folder_.path()));
}

QString CupsServer::Administer(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(patience_ms)) << program.toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString CupsServer::LastJob() {
    QElapsedTimer waited;
    waited.start();
    while (!Administer("lpstat", {"-W", "not-completed", "-o"}).isEmpty() &&
           waited.elapsed() < patience_ms)
        QThread::msleep(pause_ms);
    return QFile::exists(Path("out/job.pdf")) ? Path("out/job.pdf") : QString();
}

int CupsServer::JobCount() {
    return static_cast<int>(Administer("lpstat", {"-W", "all", "-o"}).count('\n'));
}

void CupsServer::Stop() {
    if (server_.state() == QProcess::NotRunning)
        return;
    server_.terminate();
    EXPECT_TRUE(server_.waitForFinished(patience_ms));
}
