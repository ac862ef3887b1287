#include "channels/can_list.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "model/can_values.h"
#include "model/names.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace channels {
namespace {

using model::CanItem;
using text::concat;
using Cells = std::vector<std::string>;
using Complaint = std::optional<std::string>;

constexpr int firstTransmitType = 7;

// ---- cells

Complaint storeText(std::string_view cell, std::string& text) {
  if (Complaint complaint = complaintAboutItemText(cell)) return complaint;
  text = cell;
  return {};
}

Complaint storeWhole(std::string_view cell, std::int16_t& number) {
  const double value = text::readNumber(cell);
  if (!text::isNumber(cell) || value != text::halfEven(value) || value < 0 || value > 1000)
    return concat("'", cell, "' is no whole number; write one, like 16");
  number = static_cast<std::int16_t>(value);
  return {};
}

Complaint storeUnits(std::string_view cell, std::string& units) {
  if (auto complaint = model::complaintAboutUnits(cell)) return complaint;
  units = cell;
  return {};
}

bool transmits(const CanItem& item) { return item.DataStyle == 1; }

struct ListColumn {
  std::string_view name;
  std::string (*text)(const CanItem&);
  Complaint (*store)(std::string_view, CanItem&);
  bool needed = false;
};

/// The type stands before the identifier when cells are stored: it says which one it is.
constexpr std::array<ListColumn, 10> columns = {{
    {"name", [](const CanItem& item) { return item.Name; },
     [](std::string_view cell, CanItem& item) { return storeText(cell, item.Name); }},
    {"id", [](const CanItem& item) { return transmits(item) ? item.TxDataId : item.DataId; },
     [](std::string_view cell, CanItem& item) {
       (transmits(item) ? item.TxDataId : item.DataId) = cell;
       return Complaint();
     },
     true},
    {"type", [](const CanItem& item) { return concat(item.ItemMessageType); },
     [](std::string_view cell, CanItem& item) { return storeWhole(cell, item.ItemMessageType); },
     true},
    {"start", [](const CanItem& item) { return concat(item.StartBit); },
     [](std::string_view cell, CanItem& item) { return storeWhole(cell, item.StartBit); }, true},
    {"bits", [](const CanItem& item) { return concat(item.NumBits); },
     [](std::string_view cell, CanItem& item) { return storeWhole(cell, item.NumBits); }, true},
    {"values", [](const CanItem& item) { return concat(item.NumVals); },
     [](std::string_view cell, CanItem& item) { return storeWhole(cell, item.NumVals); }},
    {"multiplier", [](const CanItem& item) { return text::shortest(item.Mult); },
     [](std::string_view cell, CanItem& item) { return storeNumber(cell, item.Mult); }},
    {"offset", [](const CanItem& item) { return text::shortest(item.Offset); },
     [](std::string_view cell, CanItem& item) { return storeNumber(cell, item.Offset); }},
    {"units", [](const CanItem& item) { return item.Units; },
     [](std::string_view cell, CanItem& item) { return storeUnits(cell, item.Units); }},
    {"description", [](const CanItem& item) { return item.Description; },
     [](std::string_view cell, CanItem& item) { return storeText(cell, item.Description); }},
}};
constexpr const ListColumn& typeColumn = columns[2];

const ListColumn* columnNamed(std::string_view name) {
  const auto* const found = std::find_if(
      columns.begin(), columns.end(),
      [name](const ListColumn& column) { return text::equalsIgnoringCase(column.name, name); });
  return found == columns.end() ? nullptr : found;
}

// ---- lines

Cells cellsOf(std::string_view line) {
  Cells cells;
  for (std::size_t begin = 0; begin <= line.size();) {
    const std::size_t end = std::min(line.find('\t', begin), line.size());
    cells.push_back(text::asUtf8(text::trimmed(line.substr(begin, end - begin))));
    begin = end + 1;
  }
  return cells;
}

std::string oneCell(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
  return text;
}

class ListReader {
 public:
  explicit ListReader(const model::CanSetup& can) : can_(can) {
    for (const ListColumn& column : columns) order_.push_back(&column);
  }

  CanList run(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    while (!text.empty()) {
      const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
      ++line_;
      readLine(text.substr(0, end));
      const bool pair = text.substr(end, 2) == "\r\n";
      text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    }
    return std::move(list_);
  }

 private:
  void fault(std::string text) { addFault(list_.faults, line_, std::move(text)); }

  void readLine(std::string_view line) {
    if (text::trimmed(line).empty()) return;
    const Cells cells = cellsOf(line);
    const bool first = std::exchange(atFirstLine_, false);
    if (first && columnNamed(cells.front()) != nullptr) return readHeader(cells);
    CanItem item;
    if (!store(cells, item)) return;
    if (can_.items.size() + list_.items.size() >= model::maxCanItems)
      return fault(concat("a project holds ", model::maxCanItems,
                          " messages; remove some before this one is added"));
    item.values.resize(static_cast<std::size_t>(item.NumVals));
    list_.items.push_back(std::move(item));
  }

  /// An unknown column is passed over and told, a needed one that is missing makes each line fail.
  void readHeader(const Cells& cells) {
    order_.clear();
    for (const std::string& cell : cells) {
      order_.push_back(columnNamed(cell));
      if (order_.back() == nullptr)
        fault(concat("column '", cell,
                     "' is not known and is left out; name columns as a saved "
                     "list does"));
    }
  }

  bool store(const Cells& cells, CanItem& item) {
    if (cells.size() > order_.size())
      return fault(concat(cells.size(), " cells where there are ", order_.size(),
                          " columns; separate them with one tab each")),
             false;
    for (const ListColumn& column : columns)
      if (column.needed && cellOf(cells, column).empty())
        return fault(concat("the ", column.name, " is missing; write it")), false;
    if (!storeCell(cells, typeColumn, item)) return false;
    item.DataStyle = item.ItemMessageType >= firstTransmitType ? 1 : 0;
    for (const ListColumn& column : columns)
      if (!storeCell(cells, column, item)) return false;
    const Complaint complaint = complaintAboutItem(item, can_);
    if (complaint) fault(*complaint);
    return !complaint;
  }

  std::string_view cellOf(const Cells& cells, const ListColumn& column) const {
    const auto at =
        static_cast<std::size_t>(std::find(order_.begin(), order_.end(), &column) - order_.begin());
    return at < cells.size() ? std::string_view(cells[at]) : std::string_view();
  }

  bool storeCell(const Cells& cells, const ListColumn& column, CanItem& item) {
    const std::string_view cell = cellOf(cells, column);
    if (cell.empty()) return true;
    const Complaint complaint = column.store(cell, item);
    if (complaint) fault(concat(column.name, ": ", *complaint));
    return !complaint;
  }

  const model::CanSetup& can_;
  std::vector<const ListColumn*> order_;
  std::size_t line_ = 0;
  bool atFirstLine_ = true;
  CanList list_;
};

}  // namespace

std::optional<std::string> complaintAboutItemText(std::string_view text) {
  const bool odd = std::any_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' || c == '[' || c == ']';
  });
  if (!odd) return std::nullopt;
  return concat("'", text, "' has square brackets or control characters; remove them");
}

std::string canListText(const std::vector<CanItem>& items) {
  std::string out;
  for (const ListColumn& column : columns)
    out += concat(column.name, &column == &columns.back() ? "\r\n" : "\t");
  for (const CanItem& item : items)
    for (const ListColumn& column : columns)
      out += concat(oneCell(column.text(item)), &column == &columns.back() ? "\r\n" : "\t");
  return out;
}

CanList canItemsFrom(std::string_view text, const model::CanSetup& can) {
  return ListReader(can).run(text);
}

}  // namespace channels
