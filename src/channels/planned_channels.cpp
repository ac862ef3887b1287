#include "channels/planned_channels.h"

#include <algorithm>
#include <unordered_set>

#include "model/names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace channels {
namespace {

using text::concat;

constexpr std::size_t cellsOfLine = 5;

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

class PlanReader {
 public:
  PlannedList run(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    while (!text.empty()) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      ++line_;
      std::string_view line = text.substr(0, end);
      if (line.ends_with('\r')) line.remove_suffix(1);
      readLine(line);
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::move(list_);
  }

 private:
  void fault(std::string text) {
    if (list_.faults.size() + 1 == mostFaults)
      text = "further faults are not listed; mend these first";
    if (list_.faults.size() < mostFaults) list_.faults.push_back({line_, std::move(text)});
  }

  void readLine(std::string_view line) {
    if (text::trimmed(line).empty()) return;
    std::vector<std::string> cells;
    for (std::size_t begin = 0; begin <= line.size();) {
      const std::size_t end = std::min(line.find('\t', begin), line.size());
      cells.push_back(text::asUtf8(text::trimmed(line.substr(begin, end - begin))));
      begin = end + 1;
    }
    const bool isHeader = line_ == 1 && text::equalsIgnoringCase(cells.front(), "kind");
    if (isHeader) return;
    if (cells.size() > cellsOfLine)
      return fault(concat(cells.size(), " cells where there are ", cellsOfLine,
                          " columns; separate them with one tab each"));
    cells.resize(cellsOfLine);
    readChannel(cells);
  }

  void readChannel(const std::vector<std::string>& cells) {
    const auto kind = kindNamed(cells[0]);
    if (!kind) return fault(concat("'", cells[0], "' is no kind; write one of ", kindNames()));
    PlannedChannel channel{*kind, cells[1], cells[2], std::nullopt, std::nullopt};
    if (const auto complaint = model::complaintAboutAlias(channel.name)) return fault(*complaint);
    if (const auto complaint = model::complaintAboutUnits(channel.units)) return fault(*complaint);
    if (!readNumber(cells[3], channel.multiplier) || !readNumber(cells[4], channel.offset)) return;
    if (!channel.name.empty() && !names_.insert(text::lower(channel.name)).second)
      return fault(concat("'", channel.name, "' is the name of a line above; choose another"));
    list_.channels.push_back(std::move(channel));
  }

  bool readNumber(const std::string& cell, std::optional<double>& number) {
    if (cell.empty()) return true;
    if (!text::isNumber(cell))
      return fault(concat("'", cell, "' is no number; write it with a decimal point")), false;
    number = text::readNumber(cell);
    return true;
  }

  PlannedList list_;
  std::unordered_set<std::string> names_;
  std::size_t line_ = 0;
};

}  // namespace

PlannedList plannedChannelsFrom(std::string_view text) { return PlanReader().run(text); }

}  // namespace channels
