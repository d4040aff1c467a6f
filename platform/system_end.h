// The ends of the program that the system sends, not the user: a termination signal, the end of the
// desktop session.
#pragma once

#include <QObject>
#include <memory>

class QSocketNotifier;

// Watches from its construction on; there is one in a program, made after the QApplication.
class SystemEnd final : public QObject {
  Q_OBJECT
 public:
  SystemEnd();
  SystemEnd(const SystemEnd&) = delete;
  SystemEnd& operator=(const SystemEnd&) = delete;
  ~SystemEnd() override;

 signals:
  // The session may be about to end. It may also go on, so the program does.
  void SessionEnding();

  // The program is to end now, without a question, with this exit status: 0 at a session's end,
  // else 128 and the signal's number, as shells count.
  void Ended(int exitStatus);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void WatchSignals();
  void TellSignal();

  std::unique_ptr<QSocketNotifier> notifier_;
};
