// Signals reach the event loop through a socket: a handler itself may do next to nothing.
#include "platform/system_end.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};
constexpr int kSignalBase = 128;  // added to a signal's number in an exit status

// A handler has no other way to an object; signalfd would need the signals blocked in every thread,
// and programs that are started would inherit that. [0] is written by the handler, [1] read by the
// loop.
std::array<int, 2> signalSockets{-1, -1};

extern "C" void HandleSignal(int signal) {
  const int before = errno;
  const auto byte = static_cast<unsigned char>(signal);
  [[maybe_unused]] const auto written = write(signalSockets[0], &byte, 1);
  errno = before;
}

void Install(void (*handler)(int)) {
  struct sigaction action = {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (const int signal : kSignals) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);  // as nohup wants it
  }
}

}  // namespace

void SystemEnd::WatchSignals() {
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalSockets.data()) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(signalSockets[1], QSocketNotifier::Read);
  connect(notifier_.get(), &QSocketNotifier::activated, this, &SystemEnd::TellSignal);
  Install(HandleSignal);
}

void SystemEnd::TellSignal() {
  unsigned char signal = 0;
  if (read(signalSockets[1], &signal, 1) == 1) emit Ended(kSignalBase + signal);
}

SystemEnd::~SystemEnd() {
  if (!notifier_) return;
  Install(SIG_DFL);
  notifier_.reset();
  for (int& socket : signalSockets) close(std::exchange(socket, -1));
}
#else
void SystemEnd::WatchSignals() {}
void SystemEnd::TellSignal() {}
SystemEnd::~SystemEnd() = default;
#endif

SystemEnd::SystemEnd() {
  WatchSignals();
  connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &SystemEnd::SessionEnding);
  qGuiApp->installEventFilter(this);
}

// The session's manager, and nobody else while a window is open, asks the application to quit.
bool SystemEnd::eventFilter(QObject* watched, QEvent* event) {
  if (watched != qGuiApp || event->type() != QEvent::Quit)
    return QObject::eventFilter(watched, event);
  emit Ended(0);
  return true;
}
