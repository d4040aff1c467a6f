#include "measuring/measuring_controls.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/choice_list.h"
#include "platform/heading.h"
#include "platform/length_units.h"
#include "report/uncertain_rows.h"

namespace Measuring {

namespace {

constexpr int kNumberWidth = 10 * kGrid;

QLabel* Words(const char* name) {
  auto* label = new QLabel;
  label->setObjectName(QString::fromLatin1(name));
  label->setTextFormat(Qt::PlainText);  // a file's words may look like markup
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  return label;
}

// A row of a grid: caption, box, unit.
EntryControls AddEntry(QGridLayout* grid, const QString& name, QStringView caption,
                       QStringView unit, const QString& spoken) {
  EntryControls own;
  own.box = new QLineEdit;
  own.box->setObjectName(name);
  own.box->setAccessibleName(spoken);
  own.box->setAlignment(Qt::AlignRight);
  own.box->setFixedWidth(kNumberWidth);
  own.caption = new QLabel(caption.toString());
  own.caption->setBuddy(own.box);
  own.unit = new QLabel(unit.toString());
  const int row = grid->rowCount();
  grid->addWidget(own.caption, row, 0);
  grid->addWidget(own.box, row, 1);
  grid->addWidget(own.unit, row, 2);
  return own;
}

QGridLayout* EntryGrid() {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(kGrid);
  grid->setVerticalSpacing(kGrid / 2);
  grid->setColumnStretch(0, 1);
  grid->setColumnMinimumWidth(2, 5 * kGrid);
  return grid;
}

QString Spoken(QStringView caption, QStringView unit) {
  if (unit.isEmpty()) return caption.toString();
  const QString said = unit == u"°" ? QStringLiteral("degrees") : unit.toString();
  return caption.toString() + QStringLiteral(" in ") + said;
}

void AddEntries(QGridLayout* grid, Entry first, Entry last, MeasuringControls& c) {
  for (std::size_t i = IndexOf(first); i <= IndexOf(last); ++i) {
    const EntryRow& row = kEntries[i];
    c.entries[i] =
        AddEntry(grid, row.key.toString(), row.caption, row.unit, Spoken(row.caption, row.unit));
  }
}

QLayout* ScaleBlock(MeasuringControls& c) {
  c.scaleName = Words("lblScale");
  c.scaleValue = Words("lblScaleValue");
  c.scaleTodo = Words("lblScaleTodo");
  auto* column = new QVBoxLayout;
  column->setSpacing(kGrid / 2);
  column->addWidget(Heading(QStringLiteral("Scale")));
  column->addWidget(c.scaleName);
  column->addWidget(c.scaleValue);
  QGridLayout* grid = EntryGrid();
  AddEntries(grid, Entry::Magnification, Entry::LineLength, c);
  column->addLayout(grid);
  column->addWidget(c.scaleTodo);
  return column;
}

QLayout* MarksBlock(MeasuringControls& c) {
  const QString name = QStringLiteral("Marks");
  c.marks = new TextTable(name, {{name, QStringLiteral("9  Line of known length"), false},
                                 {QStringLiteral("Set"), QStringLiteral("2 of 3")}});
  c.marks->setObjectName(QStringLiteral("tblMarks"));
  c.marks->setAccessibleDescription(
      QStringLiteral("A click on the radiograph sets a point of the chosen mark"));
  auto* column = new QVBoxLayout;
  column->addWidget(c.marks);
  return column;
}

// What the picture does not show: the side, where its file is silent, the rotation and the weight.
QLayout* PatientBlock(MeasuringControls& c) {
  QGridLayout* grid = EntryGrid();
  c.side = new ChoiceList(QStringLiteral("Side"));
  c.side->setObjectName(QStringLiteral("side"));
  c.side->addItems(
      {QStringLiteral("as in the file"), QStringLiteral("left"), QStringLiteral("right")});
  auto* caption = new QLabel(QStringLiteral("Side"));
  caption->setBuddy(c.side);
  c.sideFound = Words("lblSide");
  grid->addWidget(caption, 0, 0);
  grid->addWidget(c.side, 0, 1, 1, 2);
  grid->addWidget(c.sideFound, 1, 0, 1, 3);
  AddEntries(grid, Entry::Rotation, Entry::BodyWeight, c);
  return grid;
}

QLayout* ResultsBlock(MeasuringControls& c) {
  c.measurements =
      new TextTable(QStringLiteral("Measurements"),
                    {{QStringLiteral("Measurement"), QStringLiteral("Radius of head, cm"), false},
                     {QStringLiteral("Value"), QStringLiteral("needs mark 1, 2 (or 3), 5")}});
  c.measurements->setObjectName(QStringLiteral("tblMeasurements"));
  c.results =
      new TextTable(QStringLiteral("Results"),
                    {{QStringLiteral("Result"), QStringLiteral("Pmax/Wb, m^-2"), false},
                     {QStringLiteral("Value"), QStringLiteral("2066847.82")},
                     {QStringLiteral("95 % interval"), QStringLiteral("1650000 to 2580000")}});
  c.results->setObjectName(QStringLiteral("tblResults"));
  c.results->setAccessibleDescription(
      QStringLiteral("The budget shown is that of the chosen result"));
  c.notice = Words("lblNotice");
  QLabel* purpose = Words("lblPurpose");
  purpose->setText(QStringLiteral("For research and teaching, not for decisions about a patient."));
  auto* column = new QVBoxLayout;
  column->setSpacing(kGrid);
  column->addWidget(c.measurements);
  column->addWidget(c.results);
  column->addWidget(c.notice);
  column->addWidget(purpose);
  return column;
}

QWidget* SurePage(MeasuringControls& c) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setSpacing(kGrid);
  column->addWidget(Heading(QStringLiteral("Standard uncertainty")));
  QGridLayout* grid = EntryGrid();
  for (const ErrorRow& row : kErrors) {
    c.errors[IndexOf(row.id)] =
        AddEntry(grid, row.key.toString() + QStringLiteral("_u"), row.caption, row.unit,
                 QStringLiteral("u of ") + Spoken(row.caption, row.unit));
  }
  grid->setColumnMinimumWidth(2, page->fontMetrics().horizontalAdvance(kWrongError.toString()));
  column->addLayout(grid);
  c.budgetTitle = Heading({});
  c.budgetTitle->setObjectName(QStringLiteral("lblBudget"));
  c.budget = new ShareBars;
  c.budget->setObjectName(QStringLiteral("picBudget"));
  QLabel* note = Words("lblNote");
  note->setText(Print::kUncertaintyNote.toString());
  column->addWidget(c.budgetTitle);
  column->addWidget(c.budget);
  column->addWidget(note);
  column->addStretch(1);
  return page;
}

QTabWidget* Tabs(MeasuringControls& c) {
  c.diagram = new Vizual::DiagramView;
  c.diagram->setObjectName(QStringLiteral("picDiagram"));
  c.diagram->setAccessibleName(QStringLiteral("Hip stress diagram"));
  c.diagram->setMinimumSize(300, 200);
  auto* tabs = new QTabWidget;
  tabs->setObjectName(QStringLiteral("tabs"));
  tabs->setAccessibleName(QStringLiteral("Diagram and uncertainty"));
  tabs->addTab(c.diagram, QStringLiteral("&Diagram"));
  tabs->addTab(SurePage(c), QStringLiteral("H&ow sure"));
  return tabs;
}

QPushButton* Button(const char* name, const QString& caption, const QString& words) {
  auto* button = new QPushButton(caption);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(QString(caption).remove(u'&'));
  button->setAccessibleDescription(words);
  button->setToolTip(words);
  return button;
}

QLayout* Buttons(MeasuringControls& c) {
  c.use = Button("cmdUse", QStringLiteral("&Use these"),
                 QStringLiteral("Open the case form with these measurements"));
  c.savePicture = Button("cmdSavePicture", QStringLiteral("&Save picture"),
                         QStringLiteral("Save the radiograph with its marks and numbers"));
  auto* row = new QHBoxLayout;
  row->setSpacing(kGrid);
  row->addStretch(1);
  row->addWidget(c.use);
  row->addWidget(c.savePicture);
  return row;
}

QScrollArea* Scrolled(QWidget* content) {
  auto* area = new QScrollArea;
  area->setWidget(content);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area->setFocusPolicy(Qt::NoFocus);
  const int bar = area->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  area->setMinimumWidth(content->minimumSizeHint().width() + bar + kGrid);
  return area;
}

void FillStrip(QWidget* strip, MeasuringControls& c) {
  c.drawing = new PelvisDrawing;
  c.drawing->setObjectName(QStringLiteral("picStep"));
  c.instruction = Words("lblStep");
  c.instruction->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(kGrid, kGrid, kGrid, kGrid);
  row->setSpacing(2 * kGrid);
  row->addWidget(c.drawing);
  row->addWidget(c.instruction, 1);
}

}  // namespace

void EntryControls::SetVisible(bool visible) const {
  for (QWidget* part :
       {static_cast<QWidget*>(caption), static_cast<QWidget*>(box), static_cast<QWidget*>(unit)}) {
    part->setVisible(visible);
  }
}

MeasuringControls MakeMeasuringControls(QWidget* panel, QWidget* strip) {
  MeasuringControls c;
  auto* content = new QWidget;
  auto* blocks = new QVBoxLayout(content);
  blocks->setContentsMargins(0, 0, kGrid, 0);
  blocks->setSpacing(kGrid);
  blocks->addLayout(ScaleBlock(c));
  blocks->addLayout(MarksBlock(c));
  blocks->addLayout(PatientBlock(c));
  blocks->addLayout(ResultsBlock(c));
  blocks->addWidget(Tabs(c));
  blocks->addStretch(1);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(kGrid, kGrid, kGrid, kGrid);
  column->setSpacing(kGrid);
  column->addWidget(Scrolled(content), 1);
  column->addLayout(Buttons(c));
  panel->setFixedWidth(panel->minimumSizeHint().width());
  FillStrip(strip, c);
  return c;
}

}  // namespace Measuring
