#include "projectfile/key_text.h"

#include <algorithm>

namespace projectfile {
namespace {

const char* skipText(const char* p, const char* end, std::string_view expected) {
  const std::string_view text(p, static_cast<std::size_t>(end - p));
  return text.starts_with(expected) ? p + expected.size() : nullptr;
}

}  // namespace

const char* KeyTailReader::readWhole(const char* from, const char* end) {
  repeatedSize_ = 0;
  if (from == end) return nullptr;
  if (*from == '=') {
    form_ = Form::none;
    return from;
  }
  if (*from != '(') return nullptr;
  const char* const p = readIndexes(from + 1, end);
  if (!p || p == end || *p != '=') return nullptr;
  const std::string_view tail(from, static_cast<std::size_t>(p - from));
  if (form_ != Form::start && form_ != Form::stop)
    remember(tail.substr(0, tail.find_last_of("(, ") + 1));
  return p;
}

const char* KeyTailReader::readIndexes(const char* p, const char* end) {
  bool spaced = false;  // "(1, 2)"
  for (last_ = 0; last_ < indexes_.at.size(); ++last_) {
    p = readIndex(p, end, indexes_.at[last_]);
    if (!p || p == end) return nullptr;
    if (*p == ')') {
      form_ = spaced ? Form::spaced : static_cast<Form>(last_ + 1);
      return spaced && last_ != 1 ? nullptr : p + 1;
    }
    if (*p == ' ' && last_ == 0) return readWord(p, end);
    if (*p++ != ',') return nullptr;
    if (last_ == 0 && p != end && *p == ' ') {
      spaced = true;
      ++p;
    }
  }
  return nullptr;
}

/// After "(1": a blank and one of the two words.
const char* KeyTailReader::readWord(const char* p, const char* end) {
  form_ = Form::start;
  if (const char* after = skipText(p, end, " Start)")) return after;
  form_ = Form::stop;
  return skipText(p, end, " Stop)");
}

void KeyTailReader::remember(std::string_view repeated) {
  if (repeated.size() > repeated_.size()) return;
  std::copy(repeated.begin(), repeated.end(), repeated_.begin());
  repeatedSize_ = repeated.size();
}

}  // namespace projectfile
