#include "projectfile/line_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

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

void LineWriter::header(std::string_view section) {
  out_ += section;
  out_ += style_.lineEnd;
}

void LineWriter::key(std::string_view prefix, std::string_view name, std::string_view index) {
  std::array<char, 128> line;  // the parts go over together
  const std::size_t size = prefix.size() + name.size() + index.size() + style_.equals.size();
  if (size > line.size()) {
    out_ += text::concat(prefix, name, index, style_.equals);
    return;
  }
  char* end = line.data();
  for (const std::string_view part : {prefix, name, index, std::string_view(style_.equals)})
    end = std::copy(part.begin(), part.end(), end);
  out_.append(line.data(), size);
}

void LineWriter::textLine(std::string_view name, std::string_view index, std::string_view text) {
  key("", name, index);
  plainText(text);
  out_ += style_.lineEnd;
}

void LineWriter::maskLines(std::string_view name, std::size_t block, std::size_t table,
                           const std::vector<model::Element>& elements) {
  std::string head(name);
  head += indexText({block, table});
  head.back() = ',';
  std::string middle(")");
  middle += style_.equals;
  if (style_.blankBeforeNumbers) middle += ' ';
  std::string line = head + "525" + middle + "255";  // the lines differ in their ends only
  line += style_.lineEnd;
  char* const start = line.data();
  for (std::size_t e = 0; e < elements.size() && e < model::maxElements; ++e) {
    char* p = putDigits(start + head.size(), static_cast<unsigned>(e + 1));
    p = std::copy(middle.begin(), middle.end(), p);
    p = putDigits(p, elements[e].Table[table - 1]);
    p = std::copy(style_.lineEnd.begin(), style_.lineEnd.end(), p);
    out_.append(start, static_cast<std::size_t>(p - start));
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
  out_ += style_.lineEnd;
}

void LineWriter::number(std::int64_t value) {
  if (value >= 0 && style_.blankBeforeNumbers) out_ += ' ';
  appendDigits(out_, value);
}

void LineWriter::number(double value) {
  if (isWhole(value)) return number(static_cast<std::int64_t>(value));
  if (value != lastFraction_) {
    lastFraction_ = value;
    lastFractionText_.clear();
    text::appendGeneral(lastFractionText_, value);
  }
  const bool dropBlank = !style_.blankBeforeNumbers && lastFractionText_.starts_with(' ');
  out_.append(lastFractionText_, dropBlank ? 1 : 0);
}

void LineWriter::plainText(std::string_view text) {
  const std::size_t start = out_.size();
  out_ += text;
  const auto written = out_.begin() + static_cast<std::ptrdiff_t>(start);
  std::transform(written, out_.end(), written, harmless);
}

}  // namespace projectfile
