#include "channels/channel_csv.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>
#include <unordered_set>

#include "channels/cells.h"
#include "channels/channel_cells.h"
#include "channels/csv.h"
#include "text/strings.h"

namespace channels {
namespace {

using model::BlockKind;
using model::Element;

/// A channel of the project that rows are taken into.
struct Channel : ChannelAddress {
  const model::MeasurementBlock* owner = nullptr;
  Element* element = nullptr;
};

/// How often each name is used, without regard to case, by channels, CAN values and calculated
/// fields.
class UsedNames {
 public:
  explicit UsedNames(const model::Project& project) {
    for (const model::BlockSet& set : project.blockSets)
      for (const model::MeasurementBlock& block : set.blocks) add(block.elements);
    for (const model::CanItem& item : project.can.items) add(item.values);
    for (const model::CalculatedField& field : project.calculated.fields)
      ++uses_[text::lower(field.CalcName)];
  }
  [[nodiscard]] bool shared(std::string_view name) const {
    const auto found = uses_.find(text::lower(name));
    return !name.empty() && found != uses_.end() && found->second > 1;
  }

 private:
  void add(const std::vector<Element>& elements) {
    for (const Element& element : elements)
      if (!element.AliasName.empty()) ++uses_[text::lower(element.AliasName)];
  }
  std::unordered_map<std::string, std::size_t> uses_;
};

class Importer {
 public:
  explicit Importer(model::Project& project) : project_(project) {}

  ImportReport run(std::string_view csv) {
    CsvReader reader(csv, separatorOf(csv));
    CsvRow row;
    if (!reader.next(row))
      fault(1, "the table is empty; start from an export");
    else if (readHeader(row))
      while (reader.next(row)) readRow(row);
    refuseSharedNames();
    std::stable_sort(report_.faults.begin(), report_.faults.end(),
                     [](const LineText& a, const LineText& b) { return a.line < b.line; });
    return std::move(report_);
  }

 private:
  void fault(std::size_t line, std::string text) {
    addFault(report_.faults, line, std::move(text));
  }

  bool readHeader(const CsvRow& row) {
    for (const std::string& cell : row.cells) {
      const Column* column = columnNamed(text::trimmed(cell));
      if (column == nullptr)
        fault(row.line, text::concat("column '", cell,
                                     "' is not known; name columns as an export does and separate "
                                     "them with commas or tabs"));
      else if (std::find(order_.begin(), order_.end(), column) != order_.end())
        fault(row.line, text::concat("column ", column->name, " stands twice; remove one"));
      order_.push_back(column);
    }
    for (const Column& column : allColumns().first(addressColumns))
      if (std::find(order_.begin(), order_.end(), &column) == order_.end())
        fault(row.line, text::concat("column ", column.name, " is missing; add it"));
    return report_.faults.empty();
  }

  void readRow(const CsvRow& row) {
    if (!row.complaint.empty()) return fault(row.line, row.complaint);
    if (row.cells.size() != order_.size())
      return fault(row.line, text::concat(row.cells.size(), " cells where the first line has ",
                                          order_.size(), "; give one for each column"));
    const Channel channel = addressedChannel(row);
    if (channel.element == nullptr) return;
    if (!seen_.insert(channel.element).second)
      return fault(row.line, text::concat(nameOf(channel), " stands twice; remove one line"));
    ofBlock_ = saysOfBlock(row);
    for (std::size_t i = 0; i < order_.size(); ++i) readCell(row, i, channel);
  }

  /// A line without own scaling tells that of its block, which is not set here.
  [[nodiscard]] bool saysOfBlock(const CsvRow& row) const {
    bool own = true;
    for (std::size_t i = 0; i < order_.size(); ++i)
      if (order_[i]->field == Field::ownScaling) storeYesNo(text::trimmed(row.cells[i]), own);
    return !own;
  }

  static std::optional<std::string> store(const Column& column, std::string_view cell,
                                          const Channel& channel, bool ofBlock) {
    const bool scaling = column.field == Field::multiplier || column.field == Field::offset;
    double ignored = 0;
    if (ofBlock && scaling) return storeNumber(cell, ignored);
    return storeCell(column, channel.kind, cell, scalingOf(*channel.owner), *channel.element);
  }

  static std::string textOf(const Column& column, const Channel& channel) {
    return cellText(column, channel, scalingOf(*channel.owner), *channel.element);
  }

  void readCell(const CsvRow& row, std::size_t index, const Channel& channel) {
    const Column& column = *order_[index];
    const std::string before = textOf(column, channel);
    const std::string cell = text::asUtf8(text::trimmed(row.cells[index]));
    if (cell == before) return;  // what a project holds already is not judged here
    if (const auto complaint = store(column, cell, channel, ofBlock_))
      return fault(row.line, text::concat(column.name, ": ", *complaint));
    const std::string after = textOf(column, channel);
    if (after == before) return;
    report_.changes.push_back({row.line, text::concat(nameOf(channel), " ", column.name, ": \"",
                                                      before, "\" -> \"", after, "\"")});
    if (column.field == Field::alias) renamed_.push_back({row.line, after});
  }

  [[nodiscard]] const std::string& cellOf(const CsvRow& row, Field field) const {
    const auto at = std::find_if(order_.begin(), order_.end(),
                                 [field](const Column* c) { return c->field == field; });
    return row.cells[static_cast<std::size_t>(at - order_.begin())];
  }

  /// 0 for a text that is no count.
  [[nodiscard]] std::size_t countOf(const CsvRow& row, Field field) const {
    const std::string_view cell = text::trimmed(cellOf(row, field));
    std::size_t count = 0;
    const char* end = cell.data() + cell.size();
    const auto [stop, error] = std::from_chars(cell.data(), end, count);
    return error == std::errc{} && stop == end ? count : 0;
  }

  Channel addressedChannel(const CsvRow& row) {
    const std::string_view kindName = text::trimmed(cellOf(row, Field::kind));
    for (const BlockKind kind : model::allBlockKinds)
      if (text::equalsIgnoringCase(model::infoOf(kind).name, kindName))
        return channelOf(row, {{kind, countOf(row, Field::block), countOf(row, Field::element)}});
    fault(row.line, text::concat("kind: there is no kind '", kindName,
                                 "'; use the kinds that an export shows"));
    return {};
  }

  Channel channelOf(const CsvRow& row, Channel channel) {
    const std::size_t blocks = model::blockCount(project_, channel.kind);
    const std::string_view kind = model::infoOf(channel.kind).name;
    if (channel.block < 1 || channel.block > blocks) {
      fault(row.line, text::concat("block: there is no ", kind, " block ",
                                   cellOf(row, Field::block), "; the project has ", blocks));
      return {};
    }
    auto& owner = project_.block(channel.kind, channel.block);
    auto& elements = owner.elements;
    if (channel.number < 1 || channel.number > elements.size()) {
      fault(row.line, text::concat("element: ", kind, " block ", channel.block, " has no channel ",
                                   cellOf(row, Field::element), "; it has ", elements.size()));
      return {};
    }
    channel.owner = &owner;
    channel.element = &elements[channel.number - 1];
    return channel;
  }

  static std::string nameOf(const Channel& channel) {
    return text::concat(model::infoOf(channel.kind).name, " ", channel.block, "(", channel.number,
                        ")");
  }

  void refuseSharedNames() {
    if (renamed_.empty()) return;
    const UsedNames names(project_);
    for (const LineText& renamed : renamed_)
      if (names.shared(renamed.text))
        fault(renamed.line, text::concat("alias: '", renamed.text,
                                         "' is used twice; give every channel a name of its own"));
  }

  model::Project& project_;
  ImportReport report_;
  bool ofBlock_ = false;  // the scaling of the row
  std::vector<const Column*> order_;
  std::unordered_set<const Element*> seen_;
  std::vector<LineText> renamed_;
};

}  // namespace

std::string csvText(const model::Project& project) {
  std::string out;
  std::vector<std::string> cells;
  for (const Column& column : allColumns()) cells.emplace_back(column.name);
  appendCsvRow(out, cells);
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t block = 1; block <= model::blockCount(project, kind); ++block) {
      const model::MeasurementBlock& owner = project.block(kind, block);
      const model::Scaling shared = scalingOf(owner);
      const auto& elements = owner.elements;
      for (std::size_t i = 0; i < elements.size(); ++i) {
        const ChannelAddress channel{kind, block, i + 1};
        cells.clear();
        for (const Column& column : allColumns())
          cells.push_back(cellText(column, channel, shared, elements[i]));
        appendCsvRow(out, cells);
      }
    }
  return out;
}

bool isChannelTable(std::string_view text) {
  CsvRow row;
  if (!CsvReader(text, separatorOf(text)).next(row)) return false;
  const auto hasColumn = [&row](const Column& column) {
    return std::any_of(row.cells.begin(), row.cells.end(), [&column](const std::string& cell) {
      return columnNamed(text::trimmed(cell)) == &column;
    });
  };
  const auto address = allColumns().first(addressColumns);
  return std::all_of(address.begin(), address.end(), hasColumn);
}

ImportReport importCsv(std::string_view csv, model::Project& project) {
  model::Project changed = project;
  ImportReport report = Importer(changed).run(csv);
  if (report.faults.empty()) project = std::move(changed);
  return report;
}

}  // namespace channels
