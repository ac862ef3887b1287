#include "projectfile/key_text.h"

#include <string_view>

namespace projectfile {
namespace {

constexpr unsigned largestIndex = 9999;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

const char* readIndex(const char* p, const char* end, std::uint16_t& index) {
  if (p == end || !isDigit(*p)) return nullptr;
  unsigned value = static_cast<unsigned>(*p++ - '0');
  if (value > 0)
    for (; p != end && isDigit(*p); ++p) {
      value = value * 10 + static_cast<unsigned>(*p - '0');
      if (value > largestIndex) return nullptr;
    }
  index = static_cast<std::uint16_t>(value);
  return p;
}

const char* skipText(const char* p, const char* end, std::string_view expected) {
  if (!p || !std::string_view(p, static_cast<std::size_t>(end - p)).starts_with(expected))
    return nullptr;
  return p + expected.size();
}

/// After "(1": a blank and one of the two words.
const char* readWord(const char* p, const char* end, Form& form) {
  if (const char* after = skipText(p, end, " Start)")) {
    form = Form::start;
    return after;
  }
  form = Form::stop;
  return skipText(p, end, " Stop)");
}

const char* readSpaced(const char* p, const char* end, KeyTail& tail) {
  tail.form = Form::spaced;
  p = readIndex(p, end, tail.indexes.at[1]);
  return skipText(p, end, ")");
}

const char* readIndexes(const char* p, const char* end, KeyTail& tail) {
  for (std::size_t i = 0; i < tail.indexes.at.size(); ++i) {
    p = readIndex(p, end, tail.indexes.at[i]);
    if (!p || p == end) return nullptr;
    if (*p == ')') {
      tail.form = static_cast<Form>(i + 1);
      return p + 1;
    }
    if (*p == ' ' && i == 0) return readWord(p, end, tail.form);
    if (*p++ != ',') return nullptr;
    if (i == 0 && p != end && *p == ' ') return readSpaced(p + 1, end, tail);
  }
  return nullptr;
}

}  // namespace

const char* readKeyTail(const char* from, const char* end, KeyTail& tail) {
  if (from == end) return nullptr;
  if (*from == '=') {
    tail.form = Form::none;
    return from;
  }
  if (*from != '(') return nullptr;
  const char* p = readIndexes(from + 1, end, tail);
  return p && p != end && *p == '=' ? p : nullptr;
}

}  // namespace projectfile
