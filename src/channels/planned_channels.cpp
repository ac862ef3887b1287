#include "channels/planned_channels.h"

#include <algorithm>
#include <unordered_set>

#include "channels/channel_cells.h"
#include "channels/csv.h"
#include "model/names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace channels {
namespace {

using text::concat;

std::optional<model::BlockKind> kindNamed(std::string_view name) {
  for (const model::BlockKind kind : model::allBlockKinds)
    if (text::equalsIgnoringCase(model::infoOf(kind).name, name)) return kind;
  return std::nullopt;
}

std::string kindNames() {
  std::string names;
  for (const model::BlockKind kind : model::allBlockKinds)
    names += concat(names.empty() ? "" : ", ", model::infoOf(kind).name);
  return names;
}

/// The column of a name in the first line.
const Column* plannedColumn(std::string_view name) {
  name = text::trimmed(name);
  if (text::equalsIgnoringCase(name, "name")) return columnNamed("alias");
  if (text::equalsIgnoringCase(name, "gauge factor")) return columnNamed("offset");
  return columnNamed(name);
}

class PlanReader {
 public:
  explicit PlanReader(std::string_view text)
      : separator_(separatorOf(text)), reader_(text, separator_) {
    for (const char* usual : {"kind", "alias", "units", "multiplier", "offset"})
      order_.push_back(columnNamed(usual));
  }

  PlannedList run() {
    for (bool first = true; reader_.next(row_); first = false) {
      for (std::string& cell : row_.cells) cell = text::asUtf8(text::trimmed(cell));
      if (first && isHeader())
        readHeader();
      else
        readRow();
    }
    return std::move(list_);
  }

 private:
  void fault(std::string text) { addFault(list_.faults, row_.line, std::move(text)); }

  [[nodiscard]] bool isHeader() const {
    return std::any_of(row_.cells.begin(), row_.cells.end(), [](const std::string& cell) {
      return text::equalsIgnoringCase(cell, "kind");
    });
  }

  void readHeader() {
    order_.clear();
    for (const std::string& cell : row_.cells) {
      order_.push_back(plannedColumn(cell));
      if (order_.back() == nullptr)
        fault(concat("column '", cell,
                     "' is not known and passed over; there are kind, name, units, multiplier, "
                     "offset, and table1 to table8"));
    }
  }

  void readRow() {
    const auto isEmpty = [](const std::string& cell) { return cell.empty(); };
    if (!row_.complaint.empty()) return fault(row_.complaint);
    if (std::all_of(row_.cells.begin(), row_.cells.end(), isEmpty)) return;
    if (row_.cells.size() > order_.size())
      return fault(concat(row_.cells.size(), " cells where there are ", order_.size(),
                          " columns; separate them with one ", separator_ == ',' ? "comma" : "tab",
                          " each"));
    PlannedChannel channel;
    ownScaling_ = true;
    bool hasKind = false;
    for (std::size_t i = 0; i < row_.cells.size(); ++i) {
      if (order_[i] == nullptr) continue;
      if (const auto complaint = readCell(*order_[i], row_.cells[i], channel))
        return fault(*complaint);
      hasKind = hasKind || order_[i]->field == Field::kind;
    }
    if (!hasKind) return fault(concat("the kind is missing; write one of ", kindNames()));
    if (!ownScaling_) channel.multiplier = channel.offset = std::nullopt;
    keep(std::move(channel));
  }

  using Complaint = std::optional<std::string>;

  Complaint readCell(const Column& column, const std::string& cell, PlannedChannel& channel) {
    switch (column.field) {
      case Field::kind:
        return readKind(cell, channel.kind);
      case Field::alias:
        channel.name = cell;
        return model::complaintAboutAlias(cell);
      case Field::units:
        channel.units = cell;
        return model::complaintAboutUnits(cell);
      case Field::multiplier:
        return readNumber(cell, channel.multiplier);
      case Field::offset:
        return readNumber(cell, channel.offset);
      case Field::ownScaling:
        ownScaling_ = !text::equalsIgnoringCase(cell, "no");
        return std::nullopt;
      case Field::table:
        return storeMask(cell, channel.tables.at(column.table).emplace());
      default:
        return std::nullopt;
    }
  }

  static Complaint readKind(const std::string& cell, model::BlockKind& kind) {
    const auto named = kindNamed(cell);
    if (!named) return concat("'", cell, "' is no kind; write one of ", kindNames());
    kind = *named;
    return std::nullopt;
  }

  static Complaint readNumber(const std::string& cell, std::optional<double>& number) {
    if (cell.empty()) return std::nullopt;
    return storeNumber(cell, number.emplace());
  }

  void keep(PlannedChannel channel) {
    if (!channel.name.empty() && !names_.insert(text::lower(channel.name)).second)
      return fault(concat("'", channel.name, "' is the name of a line above; choose another"));
    list_.channels.push_back(std::move(channel));
  }

  char separator_;
  CsvReader reader_;
  CsvRow row_;
  std::vector<const Column*> order_;
  bool ownScaling_ = true;  // of the row
  PlannedList list_;
  std::unordered_set<std::string> names_;
};

}  // namespace

PlannedList plannedChannelsFrom(std::string_view text) { return PlanReader(text).run(); }

}  // namespace channels
