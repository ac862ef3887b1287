#include "text/json_writer.h"

#include <cmath>

#include "text/numbers.h"

namespace text {
namespace {

constexpr std::size_t drainSize = 1U << 16U;

bool isPlain(unsigned char c) { return c >= 0x20 && c != '"' && c != '\\'; }

void appendEscaped(std::string& out, unsigned char c) {
  static constexpr char hex[] = "0123456789abcdef";
  switch (c) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      out += "\\u00";
      out += hex[c >> 4U];
      out += hex[c & 15U];
  }
}

void appendQuoted(std::string& out, std::string_view text) {
  out += '"';
  std::size_t plain = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (isPlain(c)) continue;
    out.append(text, plain, i - plain);
    appendEscaped(out, c);
    plain = i + 1;
  }
  out.append(text, plain, text.size() - plain);
  out += '"';
}

}  // namespace

JsonWriter::JsonWriter(Drain drain) : drain_(std::move(drain)) {
  buffer_.reserve(drainSize + drainSize / 8);
}

void JsonWriter::drainWhenFull() {
  if (buffer_.size() < drainSize) return;
  drain_(buffer_);
  buffer_.clear();
}

void JsonWriter::comma() {
  if (!first_) buffer_ += ',';
  first_ = false;
}

void JsonWriter::open(char bracket) {
  comma();
  buffer_ += bracket;
  first_ = true;
}

void JsonWriter::close(char bracket) {
  buffer_ += bracket;
  first_ = false;
  drainWhenFull();
}

void JsonWriter::key(std::string_view name) {
  comma();
  appendQuoted(buffer_, name);
  buffer_ += ':';
  first_ = true;
}

void JsonWriter::value(std::string_view text) {
  comma();
  appendQuoted(buffer_, text);
  drainWhenFull();
}

void JsonWriter::value(bool flag) {
  comma();
  buffer_ += flag ? "true" : "false";
}

void JsonWriter::value(double number) {
  comma();
  if (std::isfinite(number))
    appendShortest(buffer_, number);
  else
    buffer_ += "null";
}

void JsonWriter::value(std::int64_t number) {
  comma();
  appendShortest(buffer_, number);
}

void JsonWriter::finish() {
  buffer_ += '\n';
  drain_(buffer_);
  buffer_.clear();
}

}  // namespace text
