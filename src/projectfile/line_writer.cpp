#include "projectfile/line_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "projectfile/rows.h"
#include "projectfile/value_text.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace projectfile {
namespace {

/// Characters that would end a line or make it a section header.
char harmless(char c) {
  if (c == '[') return '(';
  if (c == ']') return ')';
  return c == '\r' || c == '\n' || c == '\0' ? ' ' : c;
}

constexpr std::size_t longestStampedLine = 4 * Stamp::most;

/// An offset without a value of its own is a bare "0".
bool isBareZero(const Row<model::Element>& row, const model::Element& element) {
  return row.key == offsetKey && element.AliasOffset == 0 && !element.AliasExcept;
}

bool isWhole(double value) { return std::abs(value) < 1e15 && value == std::floor(value); }

}  // namespace

std::string indexText(std::initializer_list<std::size_t> indexes, std::string_view between) {
  std::string out;
  for (const std::size_t index : indexes) {
    out += out.empty() ? "(" : between;
    appendDigits(out, static_cast<std::int64_t>(index));
  }
  out += ')';
  return out;
}

std::string LineWriter::take() {
  drain();
  return std::move(out_);
}

void LineWriter::drain() {
  out_.append(piece_.data(), used_);
  used_ = 0;
}

void LineWriter::put(std::string_view text) {
  if (text.size() > piece_.size()) {
    drain();
    out_ += text;
    return;
  }
  keep(std::copy(text.begin(), text.end(), room(text.size())));
}

void LineWriter::header(std::string_view section) {
  put(section);
  endLine();
}

void LineWriter::key(std::string_view prefix, std::string_view name, std::string_view index) {
  for (const std::string_view part : {prefix, name, index, style_.equals}) put(part);
}

void LineWriter::maskLines(std::string_view name, std::size_t block, std::size_t table,
                           std::span<const model::Element> elements) {
  std::string start = text::concat(name, indexText({block, table}));
  start.back() = ',';
  const Stamp head(start);
  const Stamp middle(text::concat(")", style_.equals, style_.blankBeforeNumbers ? " " : ""));
  for (std::size_t e = 0; e < elements.size() && e < model::maxElements; ++e) {
    char* end = head.put(room(longestStampedLine));
    end = middle.put(putDigits(end, static_cast<unsigned>(e + 1)));
    keep(lineEnd_.put(putDigits(end, elements[e].Table[table - 1])));
  }
}

void LineWriter::elementLines(std::span<const Row<model::Element>> rows, std::size_t first,
                              std::span<const model::Element> elements) {
  std::vector<Stamp> keys;
  for (const Row<model::Element>& row : rows) keys.emplace_back(row.key);
  const Stamp open(text::concat("(", first, ",")), close(text::concat(")", style_.equals)),
      zero(text::concat("0", style_.lineEnd));
  for (std::size_t e = 0; e < elements.size() && e < model::maxElements; ++e) {
    const auto number = static_cast<unsigned>(e + 1);
    for (std::size_t r = 0; r < rows.size(); ++r) {
      char* end = open.put(keys[r].put(room(longestStampedLine)));
      end = close.put(putDigits(end, number));
      const bool bare = isBareZero(rows[r], elements[e]);
      keep(bare ? zero.put(end) : end);
      if (!bare) value(peek(rows[r], elements[e]));
    }
  }
}

void LineWriter::value(const ValueRef& value) {
  if (auto* const text = std::get_if<std::string*>(&value))
    plainText(**text);
  else if (auto* const real = std::get_if<double*>(&value))
    number(**real);
  else if (auto* const flag = std::get_if<bool*>(&value))
    number(std::int64_t{**flag ? -1 : 0});
  else if (auto* const small = std::get_if<std::int16_t*>(&value))
    number(std::int64_t{**small});
  else if (auto* const large = std::get_if<std::int32_t*>(&value))
    number(std::int64_t{**large});
  else if (auto* const mask = std::get_if<std::uint8_t*>(&value))
    number(std::int64_t{**mask});
  endLine();
}

void LineWriter::number(std::int64_t value) {
  constexpr std::size_t longest = 24;
  if (value < 0 || value > 999) {
    std::string digits(value >= 0 && style_.blankBeforeNumbers ? " " : "");
    text::appendShortest(digits, value);
    return put(digits);
  }
  char* end = room(longest);
  if (style_.blankBeforeNumbers) *end++ = ' ';
  keep(putDigits(end, static_cast<unsigned>(value)));
}

void LineWriter::number(double value) {
  if (isWhole(value)) return number(static_cast<std::int64_t>(value));
  if (value != lastFraction_) {
    lastFraction_ = value;
    lastFractionText_.clear();
    text::appendGeneral(lastFractionText_, value);
  }
  const bool dropBlank = !style_.blankBeforeNumbers && lastFractionText_.starts_with(' ');
  put(std::string_view(lastFractionText_).substr(dropBlank ? 1 : 0));
}

void LineWriter::plainText(std::string_view text) {
  if (std::none_of(text.begin(), text.end(), [](char c) { return harmless(c) != c; }))
    return put(text);
  std::string clean(text);
  std::transform(clean.begin(), clean.end(), clean.begin(), harmless);
  put(clean);
}

}  // namespace projectfile
