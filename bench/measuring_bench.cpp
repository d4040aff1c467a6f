// How long each step in the measuring window takes over a radiograph of 3000 x 3000 pixels with all
// its marks and errors, from the event until everything that it changes is painted: worst and
// median, in time of the processor, on which other work has the least influence.
#include <QApplication>
#include <QCryptographicHash>
#include <QFile>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

#include "measuring/measuring_window.h"
#include "tests/support/marked_phantom.h"

using namespace Measuring;

namespace {

constexpr int kSteps = 100;

Phantom::Setup MakeSetup() {
  Phantom::Setup setup;
  setup.width = setup.height = 3000;
  setup.spacing = {0.144, 0.144};
  return setup;
}

// Writes the phantom, and gives it with its marks as the window keeps them.
QJsonObject WriteMarked(const QString& path) {
  const Phantom::Picture picture = Phantom::Render({}, MakeSetup());
  if (!WritePhantomDicom(path.toStdString(), FileOf(picture))) return {};
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  const QByteArray hash = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
  Draft draft = DraftOf(picture.truth, picture.spacing);
  draft[Entry::Magnification] = QString::number(picture.truth.magnification);
  draft[Entry::BodyWeight] = QStringLiteral("70");
  return {{"file", path}, {"sha256", QString::fromLatin1(hash.toHex())}, {"marks", ToJson(draft)}};
}

void Send(QWidget& view, QEvent::Type type, QPointF at, Qt::MouseButton button) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
  const Qt::MouseButton cause = type == QEvent::MouseMove ? Qt::NoButton : button;
  QMouseEvent event(type, at, view.mapToGlobal(at), cause, held, Qt::NoModifier);
  QApplication::sendEvent(&view, &event);
}

void Measure(const char* what, const std::function<void(int)>& step) {
  std::vector<double> times;  // ms
  for (int i = 0; i < kSteps; ++i) {
    const std::clock_t start = std::clock();
    step(i);
    QApplication::processEvents();
    times.push_back(1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  std::sort(times.begin(), times.end());
  std::printf("%-40s: median %6.2f ms, worst %6.2f ms\n", what, times[kSteps / 2], times.back());
}

void MeasureDrag(const char* what, QWidget& view, Qt::MouseButton button, QPointF from) {
  Send(view, QEvent::MouseButtonPress, from, button);
  Measure(what, [&](int i) {
    Send(view, QEvent::MouseMove, from + QPointF(2 * i % 150, i % 90), button);
  });
  Send(view, QEvent::MouseButtonRelease, from, button);
}

void Wheel(QWidget& view, int i) {
  const QPointF at(400, 300);
  const QPoint turn(0, i % 40 < 20 ? 120 : -120);
  QWheelEvent event(at, view.mapToGlobal(at), {}, turn, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&view, &event);
}

void MeasureAll(MeasuringWindow& window) {
  RadiographView& view = window.View();
  MeasureDrag("window, fitted", view, Qt::RightButton, {400, 300});
  Measure("zoom by wheel, fitted and in and out", [&](int i) { Wheel(view, i); });
  view.OneToOne();
  MeasureDrag("pan, 1:1", view, Qt::MiddleButton, {400, 300});
  MeasureDrag("window, 1:1", view, Qt::RightButton, {400, 300});
  view.Fit();
  MeasureDrag("pan, fitted", view, Qt::MiddleButton, {400, 300});
  view.Fit();
  const auto handle = [&] {
    return PositionOf(view.Transform(), window.Marked()[MarkKind::Head].front());
  };
  MeasureDrag("a mark under the magnifier, fitted", view, Qt::LeftButton, handle());
  view.OneToOne();
  MeasureDrag("a mark under the magnifier, 1:1", view, Qt::LeftButton, handle());
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const QTemporaryDir folder;
  const QJsonObject marked = WriteMarked(folder.filePath(QStringLiteral("phantom.dcm")));
  DialogMessageDoor messages;
  SystemFileDialog files;
  SystemPrintDialog printers;
  const SettingsFile settings(folder.filePath(QStringLiteral("settings.json")));
  MeasuringWindow window({messages,
                          files,
                          printers,
                          settings,
                          {TELMARION_DECODE, {}},
                          [] { return QDate(); },
                          [] {},
                          [](const CaseEntries&) {},
                          [] {},
                          QLocale::c()});
  window.resize(1600, 1000);
  window.show();
  window.GoOnWith(marked);
  while (window.IsReading()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
  for (const char* error : {"edgeOfCircle_u", "socketEdge_u", "otherPoint_u"}) {
    window.findChild<QLineEdit*>(QString::fromLatin1(error))->setText(QStringLiteral("1"));
  }
  if (!window.Found().sure) return 1;
  QApplication::processEvents();  // what has just come up is painted before the first step
  std::printf("view of %d x %d\n", window.View().width(), window.View().height());
  MeasureAll(window);
  return 0;
}
