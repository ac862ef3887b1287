#include "ui/frm_status_monitor.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "model/conditions.h"
#include "model/limits.h"
#include "model/pick_list.h"
#include "text/strings.h"
#include "ui/config_panels.h"

namespace ui {
namespace {

using model::StatusColumn;

constexpr std::string_view fieldHelp = "Status field to test.";
constexpr std::string_view comparisonHelp = "Comparison to make.";
constexpr std::string_view valueHelp = "Value to compare to field.";
constexpr std::string_view flagHelp = "Flag to set True or False.";
const char* const codeHelp = "Shows the code that will be included in the LogScript file.";
constexpr int longestValue = 60;

std::vector<std::string> comparisonTexts() {
  const auto texts = model::statusComparisons();
  return {texts.begin(), texts.end()};
}

std::vector<Choice> flagChoices(int chosen) {
  std::vector<Choice> choices;
  if (chosen == 0) choices.push_back({"---", 0});
  for (int flag = 1; flag <= static_cast<int>(model::maxFlags); ++flag)
    choices.push_back({text::concat("Flag(", flag, ")"), flag});
  return choices;
}

}  // namespace

frmStatusMonitor::frmStatusMonitor(SetupWindow& owner)
    : SetupWindow(owner, {"frmStatusMonitor", "Monitor Status", "status monitor", "frmConfig"}) {
  entered(StatusColumn::comparison) = model::statusComparisons().front();
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* top = new QHBoxLayout;
  top->addWidget(entry());
  top->addWidget(lineSheet(), 1);
  layout->addLayout(top, 1);
  layout->addWidget(code());
  setContents(contents);
  resize(900, 700);
}

QWidget* frmStatusMonitor::entry() {
  auto* form = new Form;
  addSwitch(*form, working_, model::PowerOption::statusMonitor);
  Form& line = form->group("New line");
  line.pick(
      {"&Status Field:", fieldHelp}, [this] { return statusFields(); },
      [this]() -> std::string& { return entered(StatusColumn::field); }, true);
  line.pick({"Co&mp:", comparisonHelp}, comparisonTexts,
            [this]() -> std::string& { return entered(StatusColumn::comparison); });
  line.text({"&Value:", valueHelp}, longestValue,
            [this]() -> std::string& { return entered(StatusColumn::value); });
  line.choice(
      {"&Flag:", flagHelp}, [this] { return flagChoices(configuration().StatusFlag); },
      [this]() -> std::int16_t& { return configuration().StatusFlag; });
  line.choice({"S&et to:", flagHelp}, {{"True", 1}, {"False", 0}},
              [this]() -> bool& { return configuration().StatTrueFalse; });
  line.button({"&Add line", "Press to add the line below the last one."}, [this] { addLine(); });
  form->rowStretch();
  add(*form);
  form->setFocus();
  return form;
}

QWidget* frmStatusMonitor::lineSheet() {
  lines_.setColumns(columns(), [this] {
    return std::max(model::maxStatusLines, working_.configuration.Status.size());
  });
  auto* side = new QWidget(this);
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  view_ = new SheetView(lines_, side);
  view_->setObjectName("lines");
  auto* caption = new QLabel("&Lines", side);
  caption->setBuddy(view_);
  auto* remove = new QPushButton("&Remove line", side);
  remove->setObjectName("Remove line");
  remove->setAutoDefault(false);
  describe(*remove, "Remove line", "Press to remove the line that is chosen.");
  connect(remove, &QPushButton::clicked, this, [this] { removeLine(); });
  layout->addWidget(caption);
  layout->addWidget(view_, 1);
  layout->addWidget(remove, 0, Qt::AlignLeft);
  describe(*view_, "Lines", "What the monitor tests, and the flag that each line sets.");
  add(lines_);
  return side;
}

/// The program lines, and which line is left out of them.
QWidget* frmStatusMonitor::code() {
  auto* part = new QWidget(this);
  auto* view = new ProgramView(part);
  view->setObjectName("code");
  view->setMaximumHeight(fontMetrics().height() * 9);
  describe(*view, "Code", codeHelp);
  auto* remark = new QLabel(part);
  remark->setObjectName("remark");
  auto* layout = new QVBoxLayout(part);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(remark);
  layout->addWidget(new QLabel(codeHelp, part));
  layout->addWidget(view);
  onRefresh([this, view, remark] {
    std::string program;
    for (const std::string& line : statusMonitorLines(configuration())) program += line + "\n";
    view->setProgram(program);
    remark->setText(qstring(model::remarkOnStatus(configuration()).value_or("")));
    remark->setVisible(!remark->text().isEmpty());
  });
  return part;
}

std::vector<SheetColumn> frmStatusMonitor::columns() {
  SheetColumn field = column(StatusColumn::field, "Status Field", fieldHelp);
  field.offers = [this] { return statusFields(); };
  field.freeText = true;
  SheetColumn comparison = column(StatusColumn::comparison, "Comp", comparisonHelp);
  comparison.offers = comparisonTexts;
  SheetColumn value = column(StatusColumn::value, "Value", valueHelp);
  SheetColumn flag = column(StatusColumn::assignment, "Flag", flagHelp);
  flag.offers = model::statusAssignments;
  return {std::move(field), std::move(comparison), std::move(value), std::move(flag)};
}

SheetColumn frmStatusMonitor::column(StatusColumn which, const char* title, std::string_view help) {
  return {title, qstring(help),
          [this, which](std::size_t row) { return statusCell(configuration(), row, which); },
          [this, which](std::size_t row, std::string_view cell) {
            return storeStatusCell(configuration(), row, which, cell);
          }};
}

std::vector<std::string> frmStatusMonitor::statusFields() const {
  return model::variableNames(working_, model::loggerVariables | model::tableVariables);
}

void frmStatusMonitor::addLine() {
  if (const Complaint complaint = storeEntry()) tell(qstring(*complaint));
}

Complaint frmStatusMonitor::storeEntry() {
  model::StatusLine line = entry_;
  const int flag = configuration().StatusFlag;
  if (flag > 0)
    line[static_cast<std::size_t>(StatusColumn::assignment)] =
        model::statusAssignment(flag, configuration().StatTrueFalse);
  if (Complaint complaint = addStatusLine(configuration(), line)) return complaint;
  entered(StatusColumn::value).clear();
  addedField_ = entered(StatusColumn::field);
  noteEdit("add line");
  return std::nullopt;
}

/// A line that stands in the boxes is meant to be one of the monitor.
bool frmStatusMonitor::mayBeDone() {
  const bool begun = !text::trimmed(entered(StatusColumn::value)).empty() ||
                     entered(StatusColumn::field) != addedField_;
  if (!begun) return true;
  const Complaint complaint = storeEntry();
  if (!complaint) return true;
  ports_.messages.show(
      {.title = "NEW LINE",
       .text = text::concat("The new line was not added.\r\n", *complaint,
                            "\r\nEmpty its field and its value if it is not wanted.")});
  return false;
}

void frmStatusMonitor::removeLine() {
  const QModelIndex current = view_->currentIndex();
  if (!current.isValid()) return tell("Choose the line to remove first.");
  model::removeStatusLine(configuration(), static_cast<std::size_t>(current.row()));
  noteEdit("remove line");
}

}  // namespace ui
