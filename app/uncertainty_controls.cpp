// Builds the controls.
#include "app/uncertainty_controls.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/choice_list.h"
#include "platform/heading.h"
#include "platform/length_units.h"
#include "report/uncertain_rows.h"

namespace {

using Uncertainty::kMagnification;

constexpr int kNumberWidth = 9 * kGrid;
constexpr int kLongestEntry = 32;  // letters

// Of the entries.
enum Column { kCaption, kValue, kU, kUnit, kDistribution, kFault };

template <class Widget>
Widget* Named(Widget* widget, const QString& name, const QString& accessibleName,
              const QString& description) {
  widget->setObjectName(name);
  widget->setAccessibleName(accessibleName);
  widget->setAccessibleDescription(description);
  widget->setToolTip(description);
  return widget;
}

QLineEdit* NumberBox() {
  auto* box = new QLineEdit;
  box->setAlignment(Qt::AlignRight);
  box->setFixedWidth(kNumberWidth);
  box->setMaxLength(kLongestEntry);
  return box;
}

// Its words are short; the room for them is there from the start, so that nothing moves.
QLabel* FaultLabel(const QString& name, const QLocale& locale) {
  auto* label = new QLabel;
  label->setObjectName(name);
  int width = 0;
  for (const EntryFault fault : {EntryFault::NotANumber, EntryFault::TooLarge, EntryFault::Negative,
                                 EntryFault::NotAboveZero, EntryFault::OutOfRange}) {
    label->setText(FaultWords(fault, locale));
    width = std::max(width, label->sizeHint().width());
  }
  label->clear();
  label->setMinimumWidth(width);
  return label;
}

QComboBox* DistributionList(std::size_t source) {
  const QString caption = CaptionOfSource(source);
  auto* list = new ChoiceList(QStringLiteral("Distribution of ") + caption);
  list->setObjectName(KeyOfSource(source) + QStringLiteral("_distribution"));
  list->setAccessibleDescription(QStringLiteral("How errors of ") + caption +
                                 QStringLiteral(" are spread"));
  for (const Uncertainty::Distribution each : kDistributions) list->addItem(DistributionText(each));
  return list;
}

QString InUnit(std::size_t source) {
  const QString unit = SpokenUnitOfSource(source);
  return unit.isEmpty() ? QString() : QStringLiteral(" in ") + unit;
}

QString DescriptionOfU(std::size_t source) {
  return QStringLiteral("Standard uncertainty of this reading: ") + MeaningOfSource(source);
}

class Builder {
 public:
  Builder(UncertaintyControls& controls, const QLocale& locale) : c_(controls), locale_(locale) {}

  QLayout* Entries();
  QLayout* Results();

 private:
  void AddHeadings(QGridLayout* grid);
  void AddSource(QGridLayout* grid, std::size_t source);
  void AddValue(QGridLayout* grid, std::size_t source);
  void AddCoverage(QGridLayout* grid, int row);
  QLabel* Note();
  QLayout* Buttons();

  UncertaintyControls& c_;
  const QLocale& locale_;
};

void Builder::AddHeadings(QGridLayout* grid) {
  grid->addWidget(Heading(QStringLiteral("Reading")), 0, kCaption);
  grid->addWidget(Heading(QStringLiteral("Value")), 0, kValue, Qt::AlignRight);
  grid->addWidget(Heading(QStringLiteral("u")), 0, kU, Qt::AlignRight);
  grid->addWidget(Heading(QStringLiteral("Distribution")), 0, kDistribution);
}

void Builder::AddValue(QGridLayout* grid, std::size_t source) {
  SourceControls& own = c_.sources[source];
  const int row = static_cast<int>(source) + 1;
  if (source == kMagnification) {
    own.valueEntry = Named(NumberBox(), KeyOfSource(source), CaptionOfSource(source),
                           QStringLiteral("Empty when the lengths of the case are true lengths; "
                                          "otherwise they are divided by it"));
    grid->addWidget(own.valueEntry, row, kValue, Qt::AlignRight);
    return;
  }
  own.value = new QLabel;
  own.value->setObjectName(KeyOfSource(source) + QStringLiteral("_value"));
  own.value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  own.value->setMinimumWidth(kNumberWidth);
  grid->addWidget(own.value, row, kValue);
}

void Builder::AddSource(QGridLayout* grid, std::size_t source) {
  SourceControls& own = c_.sources[source];
  const int row = static_cast<int>(source) + 1;
  AddValue(grid, source);
  const QString caption = CaptionOfSource(source);
  own.u = Named(NumberBox(), KeyOfSource(source) + QStringLiteral("_u"),
                QStringLiteral("u of ") + caption + InUnit(source), DescriptionOfU(source));
  own.caption = new QLabel(caption);
  own.caption->setBuddy(own.u);
  own.caption->setToolTip(MeaningOfSource(source));
  own.unit = new QLabel(UnitOfSource(source));
  own.distribution = DistributionList(source);
  own.fault = FaultLabel(KeyOfSource(source) + QStringLiteral("_fault"), locale_);
  grid->addWidget(own.caption, row, kCaption);
  grid->addWidget(own.u, row, kU);
  grid->addWidget(own.unit, row, kUnit);
  grid->addWidget(own.distribution, row, kDistribution);
  grid->addWidget(own.fault, row, kFault);
}

void Builder::AddCoverage(QGridLayout* grid, int row) {
  c_.coverage =
      Named(NumberBox(), QStringLiteral("coverage"), QStringLiteral("Coverage in per cent"),
            QStringLiteral("Probability with which the interval covers the value"));
  auto* caption = new QLabel(QStringLiteral("Coverage"));
  caption->setBuddy(c_.coverage);
  c_.coverageFault = FaultLabel(QStringLiteral("coverage_fault"), locale_);
  grid->addWidget(caption, row, kCaption);
  grid->addWidget(c_.coverage, row, kU);
  grid->addWidget(new QLabel(QStringLiteral("%")), row, kUnit);
  grid->addWidget(c_.coverageFault, row, kFault);
}

QLabel* Builder::Note() {
  auto* note = new QLabel(Print::kUncertaintyNote.toString() +
                          QStringLiteral(" An empty u counts as no error."));
  note->setObjectName(QStringLiteral("lblNote"));
  note->setWordWrap(true);
  return note;
}

QLayout* Builder::Entries() {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(kGrid / 2);
  AddHeadings(grid);
  for (std::size_t i = 0; i < kSourceCount; ++i) AddSource(grid, i);
  AddCoverage(grid, static_cast<int>(kSourceCount) + 1);
  auto* column = new QVBoxLayout;
  column->setSpacing(2 * kGrid);
  column->addLayout(grid);
  column->addWidget(Note());
  column->addStretch(1);
  return column;
}

QLayout* Builder::Buttons() {
  c_.copy = Named(new QPushButton(QStringLiteral("&Copy table")), QStringLiteral("cmdCopyTable"),
                  QStringLiteral("Copy table"),
                  QStringLiteral("Copy the results to the clipboard, for a spreadsheet"));
  c_.print = Named(new QPushButton(QStringLiteral("&Print")), QStringLiteral("cmdPrintPage"),
                   QStringLiteral("Print"), QStringLiteral("Print readings and results on a page"));
  auto* row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addStretch(1);
  row->addWidget(c_.copy);
  row->addWidget(c_.print);
  return row;
}

QLayout* Builder::Results() {
  const QString name = QStringLiteral("Results");
  c_.results =
      Named(new TextTable(
                name, {{QStringLiteral("Result"), QStringLiteral("Pmax/Wb, m^-2"), false},
                       {QStringLiteral("Value"), QStringLiteral("20668475.82")},
                       {QStringLiteral("u"), QStringLiteral("2400000")},
                       {QStringLiteral("95 % interval"), QStringLiteral("16500000 to 25800000")}}),
            QStringLiteral("tblResults"), name,
            QStringLiteral("The budget below is that of the chosen result"));
  c_.notice = new QLabel;
  c_.notice->setObjectName(QStringLiteral("lblNotice"));
  c_.notice->setWordWrap(true);
  c_.notice->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  c_.notice->setMinimumHeight(3 * c_.notice->fontMetrics().lineSpacing());
  c_.budgetTitle = Heading({});
  c_.budgetTitle->setObjectName(QStringLiteral("lblBudget"));
  c_.budget = new ShareBars;
  c_.budget->setObjectName(QStringLiteral("picBudget"));
  auto* column = new QVBoxLayout;
  column->setSpacing(kGrid);
  column->addWidget(Heading(name));
  column->addWidget(c_.results);
  column->addWidget(c_.notice);
  column->addWidget(c_.budgetTitle);
  column->addWidget(c_.budget);
  column->addStretch(1);
  column->addLayout(Buttons());
  return column;
}

}  // namespace

UncertaintyControls MakeUncertaintyControls(QWidget* content, const QLocale& locale) {
  UncertaintyControls controls;
  Builder builder(controls, locale);
  auto* columns = new QHBoxLayout(content);
  columns->setContentsMargins(2 * kGrid, 2 * kGrid, 2 * kGrid, 2 * kGrid);
  columns->setSpacing(4 * kGrid);
  columns->addLayout(builder.Entries());
  columns->addLayout(builder.Results(), 1);
  return controls;
}
