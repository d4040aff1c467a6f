// From keystrokes to results. A propagation takes a few milliseconds, so it is done in place.
#include "app/uncertainty_window.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QShortcut>
#include <QStatusBar>
#include <utility>

#include "app/uncertainty_page.h"
#include "report/uncertain_rows.h"

namespace {

constexpr std::size_t kTrials = 8192;
const QLatin1String kSection("uncertainty");
constexpr int kIntervalColumn = 3;

// The magnification belongs to a picture, and a case without a name to its lengths.
bool IsOfSamePicture(const CaseData& one, const CaseData& other) {
  const Patient& a = one.patient;
  const Patient& b = other.patient;
  if (a.name != b.name || a.dateOfBirth != b.dateOfBirth || a.hip != b.hip) return false;
  return !a.name.isEmpty() || one.inputs == other.inputs;
}

}  // namespace

UncertaintyWindow::UncertaintyWindow(UncertaintyNeeds needs, QWidget* parent)
    : QMainWindow(parent), needs_(std::move(needs)), points_(kSourceCount, 1, kTrials) {
  setObjectName(QStringLiteral("UncertaintyWindow"));
  setWindowTitle(QStringLiteral("How sure is this case"));
  setAttribute(Qt::WA_QuitOnClose, false);  // it goes with the main window
  auto* content = new QWidget;
  controls_ = MakeUncertaintyControls(content, needs_.locale);
  setCentralWidget(content);
  statusBar()->setObjectName(QStringLiteral("statusBar"));
  ShowEntries(controls_, ErrorsFrom(needs_.settings.Section(kSection)));
  Connect();
  ConnectKeys();
}

// Boxes that lose the focus and a table that loses its rows still speak, and must be heard by a
// whole window or not at all.
UncertaintyWindow::~UncertaintyWindow() {
  KeepEntries();
  hide();
  controls_.results->disconnect(this);
}

void UncertaintyWindow::Connect() {
  const auto follow = [this](QLineEdit* box) {
    connect(box, &QLineEdit::textChanged, this, &UncertaintyWindow::Recompute);
    connect(box, &QLineEdit::editingFinished, this, &UncertaintyWindow::KeepEntries);
  };
  for (const SourceControls& own : controls_.sources) {
    follow(own.u);
    if (own.valueEntry != nullptr) follow(own.valueEntry);
    connect(own.distribution, &QComboBox::currentIndexChanged, this, [this] {
      Recompute();
      KeepEntries();
    });
  }
  follow(controls_.coverage);
  connect(controls_.results, &TextTable::RowChosen, this, &UncertaintyWindow::ShowBudget);
  connect(controls_.copy, &QPushButton::clicked, this, &UncertaintyWindow::CopyTable);
  connect(controls_.print, &QPushButton::clicked, this, &UncertaintyWindow::PrintPage);
}

void UncertaintyWindow::ConnectKeys() {
  const auto on = [this](const QKeySequence& keys, auto&& act) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
  };
  on(Qt::Key_F1, [this] { needs_.showHelp(); });
  on(Qt::CTRL | Qt::Key_P, [this] { PrintPage(); });
  on(Qt::CTRL | Qt::Key_W, [this] { close(); });
  on(Qt::Key_Escape, [this] { close(); });
}

void UncertaintyWindow::ShowCase(const CaseData& shown) {
  if (!IsOfSamePicture(shown, data_)) {
    ErrorEntries entries = EntriesIn(controls_);
    entries.magnification.clear();
    ShowEntries(controls_, entries);
  }
  data_ = shown;
  ShowValues(controls_, data_.inputs, needs_.locale);
  Recompute();
  if (controls_.results->ChosenRow() >= 0) return;
  const Sila::Result usual = WeightKnown() ? Sila::Result::Pmax : Sila::Result::PmaxWb;
  controls_.results->Choose(static_cast<int>(Sila::IndexOf(usual)));
}

void UncertaintyWindow::Recompute() {
  checked_ = CheckErrors(EntriesIn(controls_), data_.inputs);
  ShowErrorFaults(controls_, checked_, needs_.locale);
  hip_.reset();
  if (checked_.IsGood()) {
    const Uncertainty::Settings settings = {
        .coverage = checked_.coverage, .trials = kTrials, .budget = true};
    hip_ = Uncertainty::ComputeHipUncertainty(checked_.reading, points_, settings);
  }
  ShowResults();
  ShowBudget();
}

void UncertaintyWindow::ShowResults() {
  std::vector<QStringList> rows;
  for (const Print::UncertainRow& row : Print::UncertainRows(hip_, WeightKnown(), needs_.locale)) {
    rows.push_back(Print::CellsOf(row));
  }
  controls_.results->SetTitle(kIntervalColumn,
                              Print::IntervalTitle(checked_.coverage, needs_.locale));
  controls_.results->Show(rows);
  controls_.notice->setText(Print::UncertaintyNotice(hip_));
}

// Rows are results: the only one that can be missing is the last.
Sila::Result UncertaintyWindow::ChosenResult() const {
  const int row = controls_.results->ChosenRow();
  return row < 0 ? Sila::Result::PmaxWb : Sila::kResults[static_cast<std::size_t>(row)].id;
}

void UncertaintyWindow::ShowBudget() {
  const Sila::Result chosen = ChosenResult();
  const std::string_view caption = Sila::RowOf(chosen).caption;
  const QString title = QStringLiteral("Budget of ") + QString::fromUtf8(caption);
  controls_.budgetTitle->setText(title);
  controls_.budget->setAccessibleName(title);
  controls_.budget->Show(BudgetBars(hip_, chosen, WeightKnown()));
}

void UncertaintyWindow::KeepEntries() {
  const QString trouble = needs_.settings.Keep(kSection, SettingsOf(EntriesIn(controls_)));
  if (trouble.isEmpty()) return statusBar()->clearMessage();
  statusBar()->showMessage(QStringLiteral("These entries cannot be kept for the next start: ") +
                           trouble);
}

void UncertaintyWindow::closeEvent(QCloseEvent* event) {
  KeepEntries();
  QMainWindow::closeEvent(event);
}

void UncertaintyWindow::CopyTable() {
  const std::vector<Print::UncertainRow> rows =
      Print::UncertainRows(hip_, WeightKnown(), needs_.locale);
  QGuiApplication::clipboard()->setText(
      Print::TabbedTable(rows, Print::IntervalTitle(checked_.coverage, needs_.locale)));
}

void UncertaintyWindow::PrintPage() {
  const std::unique_ptr<PrintTarget> target =
      needs_.printers.AskPrinter(this, kUncertaintyTitle.toString(), needs_.locale);
  if (!target) return;
  const UncertaintyPage page = {data_, EntriesIn(controls_), checked_, hip_, needs_.locale};
  const QString trouble = PrintUncertainty(*target, page, needs_.today());
  if (!trouble.isEmpty()) needs_.messages.ShowError(this, trouble, QStringLiteral("Error"));
}
