#include "verify/duplicate_names.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/names.h"
#include "text/strings.h"
#include "verify/message_lines.h"

namespace verify {
namespace {

using model::BlockKind;
using ports::Icon;
using ports::Message;
using text::concat;

constexpr std::string_view mustBeCorrected = "THIS MUST BE CORRECTED BEFORE SAVING.";

/// A name that the user gave, and where.
struct NameUse {
  std::string_view name;
  std::string use;
};

struct NamedKind {
  BlockKind kind;
  std::string_view array;
};
constexpr NamedKind namedKinds[] = {
    {BlockKind::thermocouple, "TBlk"}, {BlockKind::voltage, "VBlk"},
    {BlockKind::highVoltage, "HBlk"},  {BlockKind::isolated, "IBlk"},
    {BlockKind::bridge, "BBlk"},       {BlockKind::pulse, "PBlk"},
    {BlockKind::tcmux, "ABlk"},        {BlockKind::filter, "FVBlk"}};

class NameList {
 public:
  explicit NameList(const model::Project& project) : project_(project) {}

  std::vector<NameUse> run() {
    for (std::size_t t = 0; t < model::maxTables; ++t)
      add(project_.tables[t].TableName, concat("Table", t + 1, " name"));
    for (const NamedKind& kind : namedKinds) addBlocks(kind);
    addCanItems();
    for (std::size_t f = 0; f < project_.calculated.fields.size(); ++f)
      add(project_.calculated.fields[f].CalcName, concat("CalcField ", f + 1));
    return std::move(uses_);
  }

 private:
  void add(std::string_view name, std::string use) {
    if (!name.empty()) uses_.push_back({name, std::move(use)});
  }

  void addChannels(const std::vector<model::Element>& elements, const std::string& use) {
    for (const model::Element& element : elements) add(element.AliasName, use);
  }

  void addBlocks(const NamedKind& named) {
    for (std::size_t n = 1; n <= infoOf(named.kind).blockLimit; ++n)
      if (inUse(project_, named.kind, n))
        addChannels(project_.block(named.kind, n).elements,
                    concat(named.array, "(", n, ") alias name"));
  }

  void addCanItems() {
    for (std::size_t k = 0; k < project_.can.items.size(); ++k)
      if (canItemInUse(project_, project_.can.items[k]))
        addChannels(project_.can.items[k].values, concat("CANBus Item ", k + 1));
  }

  const model::Project& project_;
  std::vector<NameUse> uses_;
};

std::vector<std::string> duplicateLines(const std::vector<NameUse>& uses) {
  std::unordered_map<std::string, const NameUse*> firstUses;
  std::vector<std::string> lines;
  for (const NameUse& use : uses) {
    const auto [first, isNew] = firstUses.emplace(text::lower(use.name), &use);
    if (!isNew)
      lines.push_back(concat("\"", first->second->name, "\" is used as [ ", first->second->use,
                             " ] and [ ", use.use, " ]."));
  }
  return lines;
}

std::vector<std::string> keywordLines(const std::vector<NameUse>& uses) {
  std::unordered_set<std::string_view> told;
  std::vector<std::string> lines;
  for (const NameUse& use : uses) {
    const std::string_view word = model::reservedWordFor(use.name);
    if (!word.empty() && told.insert(use.name).second)
      lines.push_back(concat("\"", use.name, "\" is used as ", word, "."));
  }
  return lines;
}

}  // namespace

std::optional<Message> complaintAboutDuplicates(const model::Project& project) {
  const std::vector<std::string> lines = duplicateLines(NameList(project).run());
  if (lines.empty()) return std::nullopt;
  return Message{.title = "DUPLICATION FOUND",
                 .text = joinedLines({"The following duplicate names were found:",
                                      listedLines(lines), "", mustBeCorrected}),
                 .icon = Icon::critical};
}

std::optional<Message> complaintAboutKeywords(const model::Project& project) {
  const std::vector<std::string> lines = keywordLines(NameList(project).run());
  if (lines.empty()) return std::nullopt;
  return Message{.title = "ILLEGAL KEYWORD USAGE",
                 .text = joinedLines(
                     {"The following key words were used:", listedLines(lines), mustBeCorrected}),
                 .icon = Icon::critical};
}

}  // namespace verify

namespace KGEN_COMMON {

void CheckDuplicateNames(const model::Project& project, const verify::CheckContext& context,
                         bool& problem) {
  const bool duplicates = answerTo(context, verify::complaintAboutDuplicates(project)).has_value();
  const bool keywords = answerTo(context, verify::complaintAboutKeywords(project)).has_value();
  problem = duplicates || keywords;
}

}  // namespace KGEN_COMMON
