// A print server of the test's own on a loopback port, with one queue whose jobs end as PDF files
// in a folder. The machine's printers are never touched.
#pragma once

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <optional>

class PrivatePrintServer {
 public:
  // The print system's library looks once in a process for its server: one server does for all
  // tests of a program.
  PrivatePrintServer() {
    port_ = FreePort();
    WriteFiles();
    qputenv("CUPS_SERVER", Address().toLatin1());
  }
  PrivatePrintServer(const PrivatePrintServer&) = delete;
  PrivatePrintServer& operator=(const PrivatePrintServer&) = delete;
  ~PrivatePrintServer() { Stop(); }

  // Gives why the server cannot be started; empty when it takes jobs.
  QString Start() {
    if (Tool("cupsd").isEmpty() || Tool("lpadmin").isEmpty()) {
      return QStringLiteral("cups-daemon and cups-client are not installed");
    }
    QFile::remove(Path("out/title"));
    if (server_.state() == QProcess::NotRunning) {
      server_.setProcessChannelMode(QProcess::MergedChannels);
      server_.start(Tool("cupsd"),
                    {"-f", "-c", Path("root/cupsd.conf"), "-s", Path("root/cups-files.conf")});
    }
    QElapsedTimer clock;
    clock.start();
    while (server_.state() != QProcess::NotRunning && clock.elapsed() < 10000) {
      if (Run("lpadmin", {"-p", Queue(), "-E", "-v", "keep:/out", "-m", "raw"})) return {};
      server_.waitForFinished(50);
    }
    return QStringLiteral("the print server does not start: ") +
           QString::fromUtf8(server_.readAll()) + Log();
  }
  QString Queue() const { return QStringLiteral("paper"); }

  void RefuseJobs() { Run("cupsreject", {Queue()}); }
  void TakeJobs() { Run("cupsaccept", {Queue()}); }

  void Stop() {
    if (server_.state() == QProcess::NotRunning) return;
    server_.terminate();
    if (!server_.waitForFinished(5000)) server_.kill();
    server_.waitForFinished(5000);
  }

  // The next job that has come out: its PDF; its title is beside it. Waits for it up to ten
  // seconds.
  std::optional<QString> Job() const {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) {
      if (QFile::exists(Path("out/title"))) return Path("out/job.pdf");
      QThread::msleep(20);
    }
    return std::nullopt;
  }
  QString JobTitle() const { return Read(Path("out/title")).trimmed(); }
  QString Log() const { return Read(Path("error_log")); }

 private:
  static QString Tool(const QString& name) {
    const QString found = QStandardPaths::findExecutable(name);
    return found.isEmpty() ? QStandardPaths::findExecutable(name, {"/usr/sbin", "/sbin"}) : found;
  }
  static QString Read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
  static int FreePort() {
    const int door = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    const bool found = bind(door, any, size) == 0 && getsockname(door, any, &size) == 0;
    close(door);
    return found ? ntohs(address.sin_port) : 0;
  }

  QString Path(const QString& name) const { return folder_.filePath(name); }
  QString Address() const { return QStringLiteral("127.0.0.1:%1").arg(port_); }

  void Write(const QString& name, QString text) const {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(text.replace("@folder@", folder_.path()).replace("@address@", Address()).toUtf8());
  }

  void WriteFiles() const {
    for (const char* name : {"root", "spool", "cache", "state", "out", "bin/backend"}) {
      QDir(folder_.path()).mkpath(name);
    }
    for (const char* name : {"daemon", "filter"}) {
      QFile::link(QStringLiteral("/usr/lib/cups/") + name, Path(QStringLiteral("bin/") + name));
    }
    Write("root/cupsd.conf",
          "Listen @address@\nWebInterface No\nBrowsing No\nDefaultAuthType None\n"
          "<Location />\nOrder allow,deny\nAllow from 127.0.0.1\n</Location>\n"
          "<Location /admin>\nOrder allow,deny\nAllow from 127.0.0.1\n</Location>\n"
          "<Policy default>\n<Limit All>\nOrder allow,deny\nAllow from 127.0.0.1\n</Limit>\n"
          "</Policy>\n");
    Write("root/cups-files.conf",
          "ServerRoot @folder@/root\nServerBin @folder@/bin\nRequestRoot @folder@/spool\n"
          "TempDir @folder@/spool\nCacheDir @folder@/cache\nStateDir @folder@/state\n"
          "ErrorLog @folder@/error_log\nAccessLog @folder@/access_log\n"
          "PageLog @folder@/page_log\n");
    // Called with job, user, title, copies, options and, for a job from a file, its name.
    Write("bin/backend/keep",
          "#!/bin/sh\n[ $# -eq 0 ] && exit 0\ncat \"${6:--}\" > '@folder@/out/job.pdf' &&\n"
          "printf '%s\\n' \"$3\" > '@folder@/out/part' &&\n"
          "mv '@folder@/out/part' '@folder@/out/title'\n");
    QFile::setPermissions(Path("bin/backend/keep"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }

  bool Run(const QString& tool, const QStringList& arguments) const {
    QProcess process;
    process.start(Tool(tool), arguments);
    return process.waitForFinished(10000) && process.exitCode() == 0;
  }

  QTemporaryDir folder_;
  int port_ = 0;
  QProcess server_;
};
