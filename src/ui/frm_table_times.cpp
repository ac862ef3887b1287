#include "ui/frm_table_times.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QVBoxLayout>
#include <cmath>
#include <limits>

#include "model/table_rules.h"
#include "pictures/colours.h"
#include "text/strings.h"
#include "timing/execution_interval.h"
#include "ui/cell_columns.h"

namespace ui {
namespace {

using model::Medium;
using text::concat;

constexpr int flashMs = 500;
constexpr std::array<std::string_view, 4> partNames = {"days", "hours", "minutes", "seconds"};

QString titled(std::string_view name) {
  QString title = qstring(name);
  title[0] = title[0].toUpper();
  return title;
}

double& partOf(std::array<double, 4>& parts, int part) {
  return parts[static_cast<std::size_t>(part)];
}

std::array<double, 4> partsOf(const model::Duration& time) {
  return {static_cast<double>(time.days), static_cast<double>(time.hours),
          static_cast<double>(time.minutes), time.seconds};
}

double secondsFrom(const std::array<double, 4>& parts) {
  return ((parts[0] * 24 + parts[1]) * 60 + parts[2]) * 60 + parts[3];
}

}  // namespace

frmTableTimes::frmTableTimes(SetupWindow& owner)
    : SetupWindow(owner, {"frmTableTimes", "Table Sizes and Times", "table sizes"}),
      bars_(new pictures::StackedBars(this)) {
  onRefresh([this] { CalcTableRecs(); });
  auto* contents = new QWidget(this);
  auto* layout = new QVBoxLayout(contents);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(bars_);
  layout->addWidget(mediaFigures());
  layout->addWidget(tableSheet(), 1);
  tmrFlash_.setObjectName("tmrFlash");
  connect(&tmrFlash_, &QTimer::timeout, this, &frmTableTimes::flash);
  tmrFlash_.start(flashMs);
  setContents(contents);
  resize(1000, 640);
}

void frmTableTimes::CalcTableRecs() {
  plan_ = KGEN_COMMON::CalcTableRecs(working_, timing::bufferBytes(working_));
  showMedia();
  showBars();
}

QWidget* frmTableTimes::mediaFigures() {
  auto* area = new QWidget(this);
  auto* grid = new QGridLayout(area);
  const char* titles[] = {"Memory", "Estimated free space", "Burst buffer", "Selected tables"};
  for (int column = 0; column < 4; ++column) {
    auto* title = new QLabel(titles[column], area);
    title->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(title, 0, column);
    grid->setColumnStretch(column, 1);
  }
  for (const Medium medium : model::allMedia) {
    const int row = static_cast<int>(medium) + 1;
    Figures& each = figures_[static_cast<std::size_t>(medium)];
    each = {new QLabel(area), new QLabel(area), new QLabel(area)};
    grid->addWidget(new QLabel(qstring(model::nameOf(medium)), area), row, 0);
    grid->addWidget(each.free, row, 1);
    grid->addWidget(each.burst, row, 2);
    grid->addWidget(each.total, row, 3);
    each.total->setObjectName(qstring(concat("total of ", model::nameOf(medium))));
  }
  return area;
}

void frmTableTimes::showMedia() {
  for (const Medium medium : model::allMedia) {
    const model::MediumSpace& space = plan_.of(medium);
    const Figures& each = figures_[static_cast<std::size_t>(medium)];
    each.free->setText(qstring(model::bytesText(space.free())));
    each.burst->setText(qstring(model::burstBufferText(space)));
    each.total->setText(qstring(
        concat(model::bytesText(space.tables), space.isOverfull() ? ", more than there is" : "")));
  }
}

/// Totals that are too large change their colour twice a second.
void frmTableTimes::flash() {
  lit_ = !lit_;
  for (const Medium medium : model::allMedia) {
    QPalette colours;
    if (lit_ && plan_.of(medium).isOverfull())
      colours.setColor(QPalette::WindowText, pictures::alarmColour(palette()));
    figures_[static_cast<std::size_t>(medium)].total->setPalette(colours);
  }
}

/// In percent, since a card holds so much more than the CPU that nothing else would show.
void frmTableTimes::showBars() {
  QList<pictures::Bar> bars;
  for (const Medium medium : model::allMedia) {
    const model::MediumSpace& space = plan_.of(medium);
    const double percent = space.capacity > 0 ? 100 / space.capacity : 0;
    if (percent == 0) continue;
    pictures::Bar bar{qstring(model::nameOf(medium)), {}, 100};
    if (space.burstBuffer > 0) bar.segments.append({"Burst buffer", space.burstBuffer * percent});
    for (std::size_t t = 0; t < model::maxTables; ++t)
      if (plan_.tables[t].on && plan_.tables[t].medium == medium && plan_.tables[t].bytes > 0)
        bar.segments.append(
            {qstring(working_.tables[t].TableName), plan_.tables[t].bytes * percent});
    bars.append(bar);
  }
  bars_->setBars(bars, "%");
}

QWidget* frmTableTimes::tableSheet() {
  sheet_.setColumns(columns(), [] { return model::maxTables; });
  view_ = new SheetView(sheet_, this);
  view_->verticalHeader()->hide();
  view_->setObjectName("tables");
  describe(*view_, "Tables", "Enter records, or the time that a table should hold.");
  const int letter = fontMetrics().averageCharWidth();
  const int widths[] = {24, 14, 12, 11, 14, 10, 10, 10, 12};
  for (int i = 0; i < 9; ++i) view_->setColumnWidth(i, widths[i] * letter);
  add(sheet_);
  return view_;
}

std::vector<SheetColumn> frmTableTimes::columns() {
  const auto space = [this](std::size_t row) -> const model::TableSpace& {
    return plan_.tables[row];
  };
  std::vector<SheetColumn> columns = {
      {"Table", "The table; one that is off takes no memory.",
       [this](std::size_t row) {
         const model::OutputTable& table = working_.tables[row];
         return concat(model::tableLabel(table), table.TableOn ? "" : " (off)");
       }},
      {"Memory", "Where the records are kept.",
       [space](std::size_t row) { return std::string(model::nameOf(space(row).medium)); }},
      {"Record", "Bytes of a record, with date and time when they are stored with it.",
       [space](std::size_t row) { return concat(space(row).recordBytes); }},
      {"Auto size", "Takes what the other tables leave; yes or no.",
       [this](std::size_t row) { return yesNoText(model::isAutoSized(working_.tables[row])); },
       [this](std::size_t row, std::string_view text) { return storeAutoSize(row, text); },
       [] {
         return std::vector<std::string>{"no", "yes"};
       }},
      {"Records", "Records that the table holds.",
       [space](std::size_t row) { return concat(space(row).records); },
       [this](std::size_t row, std::string_view text) { return storeRecords(row, text); }}};
  for (const Part part : {Part::days, Part::hours, Part::minutes, Part::seconds})
    columns.push_back(timeColumn(part));
  columns.push_back({"Bytes", "What the table takes of its memory.", [space](std::size_t row) {
                       return text::formatted(space(row).bytes, "#,##0");
                     }});
  return columns;
}

SheetColumn frmTableTimes::timeColumn(Part part) {
  const std::string_view name = partNames[static_cast<std::size_t>(part)];
  return {
      titled(name), qstring(model::timeEntryHelp(name)),
      [this, part](std::size_t row) {
        std::array<double, 4> parts = partsOf(GetTime(row));
        return text::formatted(partOf(parts, static_cast<int>(part)), "0.###");
      },
      [this, part](std::size_t row, std::string_view text) { return storeTime(row, part, text); }};
}

model::Duration frmTableTimes::GetTime(std::size_t table) const {
  const model::TableSpace& space = plan_.tables[table];
  return model::durationFrom(static_cast<double>(space.records) * space.intervalMicros / 1e6);
}

Complaint frmTableTimes::storeTime(std::size_t table, Part part, std::string_view text) {
  const double number = text::readNumber(text);
  if (!text::isNumber(text) || number < 0)
    return concat("'", text, "' is no number of ", partNames[static_cast<std::size_t>(part)]);
  CalcTableRecs();  // cells that are pasted together build on each other
  if (Complaint complaint = model::complaintAboutTimeOf(plan_, table + 1)) return complaint;
  std::array<double, 4> parts = partsOf(GetTime(table));
  partOf(parts, static_cast<int>(part)) = number;
  // Half a microsecond makes up for what rounding took.
  const auto records = model::recordsIn(secondsFrom(parts) + 0.5e-6, plan_, table + 1);
  if (!records) {
    const ports::Message complaint = model::complaintAboutTableTime();
    // Not while a cell is being left, which a box would make happen again.
    QMetaObject::invokeMethod(
        this, [this, complaint] { ports_.messages.show(complaint); }, Qt::QueuedConnection);
    return complaint.text;
  }
  working_.tables[table].AutoSize = false;
  working_.tables[table].Buffer = *records;
  return std::nullopt;
}

Complaint frmTableTimes::storeRecords(std::size_t table, std::string_view text) {
  constexpr double most = std::numeric_limits<std::int32_t>::max();
  const double records = text::readNumber(text);
  if (!text::isNumber(text) || records != std::floor(records) || records < 0 || records > most)
    return concat("'", text, "' is no number of records");
  working_.tables[table].AutoSize = false;
  working_.tables[table].Buffer = static_cast<std::int32_t>(records);
  return std::nullopt;
}

Complaint frmTableTimes::storeAutoSize(std::size_t table, std::string_view text) {
  bool yes = false;
  if (Complaint complaint = storeYesNo(text, yes)) return complaint;
  model::OutputTable& settings = working_.tables[table];
  if (!yes && settings.Buffer < 0) settings.Buffer = 0;
  settings.AutoSize = yes;
  return std::nullopt;
}

}  // namespace ui
