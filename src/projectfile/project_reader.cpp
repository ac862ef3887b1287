#include "projectfile/project_reader.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "projectfile/rows.h"
#include "projectfile/value_text.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace projectfile {
namespace {

using text::concat;

constexpr std::size_t maxLine = 65'536;
constexpr std::size_t maxNotes = 200;
constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

std::string_view withoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

const char* findChar(const char* from, const char* end, char wanted) {
  return static_cast<const char*>(std::memchr(from, wanted, static_cast<std::size_t>(end - from)));
}

bool isAscii(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

/// The earliest files begin with a bare version number: one word with a point and a digit.
bool isVersionLine(std::string_view line) {
  const std::string_view word = text::trimmed(line);
  return word.find_first_of(" \t") == std::string_view::npos &&
         word.find('.') != std::string_view::npos &&
         std::any_of(word.begin(), word.end(), text::isDigit);
}

void storeText(std::string& place, std::string_view value) {
  if (isAscii(value))
    place = value;
  else
    place = text::asUtf8(value);
}

/// Block times may be filed in milliseconds, told by the end of the text.
double microsFrom(std::string_view value) {
  const double number = readDouble(value);
  return value.ends_with("mSecs") ? number * 1000 : number;
}

}  // namespace

void settleRangeCodes(model::Project& project) {
  for (const model::BlockKind kind : model::allBlockKinds)
    for (model::MeasurementBlock& block : project.set(kind).blocks)
      if (const std::int16_t code = model::rangeCode(kind, block.Range); code != 0)
        block.RangeNo = code;
}

ProjectReader::ProjectReader(model::Project& project, const KGEN_GENFILE::LoadOptions& options)
    : target_(project), options_(options), sections_(knownSections().size()) {}

bool ProjectReader::holdsNul(std::string_view text) {
  const char* const nul = findChar(text.data(), text.data() + text.size(), '\0');
  if (!nul) return false;
  const auto line = target_.line + 1 + static_cast<std::size_t>(std::count(text.data(), nul, '\n'));
  failure_ = concat("line ", line, " holds a NUL byte");
  return true;
}

std::size_t ProjectReader::take(std::string_view text, bool atEnd) {
  if (text.empty() || failure_ || holdsNul(text)) return text.size();
  const char* p = text.data();
  const char* const end = p + text.size();
  const char* bracket = findChar(p, end, '[');
  while (p != end && !failure_) {
    const char* lineEnd = findChar(p, end, '\n');
    if (!lineEnd && !atEnd) break;
    if (!lineEnd) lineEnd = end;
    if (bracket && bracket < p) bracket = findChar(p, end, '[');
    takeLine({p, static_cast<std::size_t>(lineEnd - p)}, bracket && bracket < lineEnd);
    p = lineEnd == end ? end : lineEnd + 1;
  }
  const auto taken = static_cast<std::size_t>(p - text.data());
  if (text.size() - taken > maxLine + 1 && !failure_)
    failure_ = concat("line ", target_.line + 1, " is longer than 65,536 bytes");
  return taken;
}

inline void ProjectReader::takeLine(std::string_view line, bool mayBeHeader) {
  ++target_.line;
  line = withoutReturn(line);
  if (line.size() > maxLine) {
    failure_ = concat("line ", target_.line, " is longer than 65,536 bytes");
    return;
  }
  if (target_.line == 1) {
    if (line.starts_with(utf8Mark)) line.remove_prefix(utf8Mark.size());
    takeFirstLine(line);
  }
  // The line after a header is a value line, whatever it looks like.
  if (mayBeHeader && !afterHeader_) return enterSection(line);
  afterHeader_ = false;
  takeValueLine(line);
}

void ProjectReader::takeFirstLine(std::string_view line) {
  if (line.find('.') == std::string_view::npos) return;
  target_.project.configuration.Version = text::asUtf8(line);
  looksLikeProject_ = isVersionLine(line);
}

void ProjectReader::enterSection(std::string_view header) {
  afterHeader_ = true;
  keys_ = nullptr;
  const auto known = knownSections();
  const auto found = std::find_if(known.begin(), known.end(), [header](const SectionInfo& section) {
    return headerOf(section) == header;
  });
  if (found == known.end()) return;
  looksLikeProject_ = true;
  if (header == canHeader) target_.canRead = true;
  target_.enterKind(found->kind);
  Section& section = sections_[static_cast<std::size_t>(found - known.begin())];
  if (!section.described) found->describe(section.keys, found->kind);
  section.described = true;
  keys_ = &section.keys;
  expected_ = previous_ = 0;
}

inline void ProjectReader::takeValueLine(std::string_view line) {
  if (keys_ && takeExpected(line)) return;
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) return;
  if (keys_ && takeSought(line, equals)) return;
  ignore(line);
}

/// The short way: keys come in the order in which they came last time, so that the name needs
/// comparing with one entry only.
inline bool ProjectReader::takeExpected(std::string_view line) {
  const SectionKeys::Entry& entry = (*keys_)[expected_];
  const std::size_t nameSize = entry.name.size();
  if (line.size() <= nameSize || std::memcmp(line.data(), entry.name.data(), nameSize) != 0)
    return false;
  const char* const equals = tail_.read(line.data() + nameSize, line.data() + line.size());
  if (!equals || tail_.form() != entry.form) return false;
  const auto keySize = static_cast<std::size_t>(equals - line.data());
  return store(expected_, line.substr(keySize + 1), line.substr(0, keySize));
}

bool ProjectReader::takeSought(std::string_view line, std::size_t equals) {
  const std::string_view key = line.substr(0, equals);
  const std::string_view name = key.substr(0, key.find('('));
  if (!tail_.read(line.data() + name.size(), line.data() + equals + 1)) return false;
  const std::uint32_t entry = keys_->find(name, tail_.form());
  return entry != SectionKeys::none && store(entry, line.substr(equals + 1), key);
}

inline bool ProjectReader::store(std::uint32_t number, std::string_view value,
                                 std::string_view key) {
  const SectionKeys::Entry& entry = (*keys_)[number];
  const ValueRef place = entry.locate(entry.row, target_, tail_.indexes());
  if (std::holds_alternative<std::monostate>(place)) return false;
  storeValue(entry, place, value, key);
  if (number != expected_) keys_->expectAfter(previous_, number);
  previous_ = number;
  expected_ = keys_->expectedAfter(number);
  return true;
}

inline void ProjectReader::storeValue(const SectionKeys::Entry& entry, const ValueRef& place,
                                      std::string_view value, std::string_view key) {
  if (auto* const mask = std::get_if<std::uint8_t*>(&place))
    storeInteger(entry, **mask, value, key);
  else if (auto* const text = std::get_if<std::string*>(&place))
    storeText(**text, value);
  else if (auto* const number = std::get_if<double*>(&place))
    **number = entry.isTime ? microsFrom(value) : readDouble(value);
  else if (auto* const flag = std::get_if<bool*>(&place))
    **flag = readDouble(value) != 0;
  else if (auto* const small = std::get_if<std::int16_t*>(&place))
    storeInteger(entry, **small, value, key);
  else if (auto* const large = std::get_if<std::int32_t*>(&place))
    storeInteger(entry, **large, value, key);
}

template <class Integer>
void ProjectReader::storeInteger(const SectionKeys::Entry& entry, Integer& place,
                                 std::string_view value, std::string_view key) {
  using Range = std::numeric_limits<Integer>;
  const std::int64_t read = readInteger(value, Range::min(), Range::max());
  const auto used = std::clamp<std::int64_t>(read, entry.limits.low, entry.limits.high);
  if (used != read)
    note(target_.line, concat(key, ": ", text::trimmed(value), " is outside ", entry.limits.low,
                              " to ", entry.limits.high, "; ", used, " is used"));
  place = static_cast<Integer>(used);
}

void ProjectReader::note(std::size_t line, std::string text) {
  if (report_.notes.size() < maxNotes)
    report_.notes.push_back({line, std::move(text)});
  else if (report_.notes.size() == maxNotes)
    report_.notes.push_back({line, "further remarks are left out"});
}

void ProjectReader::ignore(std::string_view line) {
  ++report_.ignoredLines;
  if (options_.listIgnored) report_.ignored.push_back({target_.line, text::asUtf8(line)});
}

bool ProjectReader::finish() {
  if (!looksLikeProject_) return false;
  moveLegacyQuantities();
  chooseModel();
  settleWriteIfs();
  adoptOldEventTexts();
  limitFilterBlocks();
  emptyUncountedBlocks();
  settleRangeCodes(target_.project);
  if (!target_.canRead) {
    target_.project.can.CanCount = 0;
    target_.project.can.items.clear();
  }
  model::fitLists(target_.project);
  return true;
}

/// Layouts before 1.5 knew two more kinds of modules. The version moves on with the quantities,
/// lest the next load moves them again.
void ProjectReader::moveLegacyQuantities() {
  model::LoggerConfiguration& configuration = target_.project.configuration;
  const bool hasOldOrder = text::readNumber(configuration.Version) < text::readNumber(todaysOrder);
  if (!target_.quantitiesRead || !hasOldOrder) return;
  auto& quantities = configuration.ModuleQty;
  std::copy(quantities.begin() + 7, quantities.end(), quantities.begin() + 5);
  quantities[8] = quantities[9] = 0;
  configuration.Version = todaysOrder;
}

void ProjectReader::chooseModel() {
  model::LoggerConfiguration& configuration = target_.project.configuration;
  std::int16_t& cpu = configuration.quantity(model::ModuleKindIndex::cpu);
  if (cpu == 0) cpu = 1;  // a zero would not be filed again
  if (!options_.dunmoreHost || model::isK700X(configuration)) return;
  cpu = 2;
  report_.modelForced = true;
}

void ProjectReader::settleWriteIfs() {
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    model::OutputTable& table = target_.project.tables[t];
    if (table.WriteIf < 0) table.WriteIf = 1;  // an old "true"
    if (table.WriteIf == 1) table.conditions.writeIf(1) = target_.writeIf[t].single;
    if (table.WriteIf <= 1) continue;
    for (std::size_t c = 0; c < model::maxConditions; ++c)
      table.conditions.writeIf(static_cast<int>(c + 1)) = target_.writeIf[t].listed[c];
  }
}

/// Before layout 6 a trigger was one text. "True" starts at once and "False" never stops, which is
/// what no condition means.
void ProjectReader::adoptOldEventTexts() {
  if (text::readNumber(target_.project.configuration.Version) >= 6) return;
  const auto adopt = [](std::int16_t& count, model::Condition& first, const std::string& text,
                        std::string_view always) {
    if (count != 0 || text::trimmed(text).empty()) return;
    if (text::equalsIgnoringCase(text::trimmed(text), always)) return;
    count = 1;
    first = {};
    first.Expression = text;
  };
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    model::OutputTable& table = target_.project.tables[t];
    const auto [startRead, stopRead] = target_.eventTextRead[t];
    if (startRead)
      adopt(table.TrigTable, table.conditions.trigger(0, 1), table.DataEventStart, "True");
    if (stopRead)
      adopt(table.TrigTabStop, table.conditions.trigger(1, 1), table.DataEventStop, "False");
  }
}

/// All filter slots together hold no more blocks than the kind.
void ProjectReader::limitFilterBlocks() {
  std::size_t left = model::maxBlocks;
  for (std::size_t s = 0; s < target_.project.filterSlots.size(); ++s) {
    std::int16_t& count = target_.project.filterSlots[s].BlockCount;
    const std::size_t used = std::min<std::size_t>(left, std::max<std::int16_t>(count, 0));
    if (static_cast<std::int16_t>(used) < count)
      note(target_.filterCountLines[s],
           concat("BlockCount(", s + 1, "): ", count, " is more than the ", left,
                  " filter blocks left of ", model::maxBlocks, "; ", used, " is used"));
    count = static_cast<std::int16_t>(used);
    left -= used;
  }
}

void ProjectReader::emptyUncountedBlocks() {
  for (const model::BlockKind kind : model::allBlockKinds) {
    if (!target_.countRead[static_cast<std::size_t>(kind)]) continue;
    auto& blocks = target_.project.set(kind).blocks;
    for (std::size_t b = model::blockCount(target_.project, kind); b < blocks.size(); ++b)
      blocks[b].Reps = 0;
  }
}

}  // namespace projectfile
