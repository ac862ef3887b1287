#include "text/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "text/numbers.h"

namespace text {
namespace {

constexpr std::size_t usualCapacity = 1U << 16U;
constexpr std::size_t longestToken = 32;  // brackets, words, numbers, with a comma before them
constexpr std::size_t longestEscape = 6;

bool isPlain(unsigned char c) { return c >= 0x20 && c != '"' && c != '\\'; }

/// All bytes of a word are plain: eight characters looked at together.
bool allPlain(std::uint64_t word) {
  constexpr std::uint64_t ones = 0x0101010101010101;
  constexpr std::uint64_t tops = 0x80 * ones;
  const auto anyZero = [](std::uint64_t w) { return (w - ones) & ~w & tops; };
  const std::uint64_t control = (word - 0x20 * ones) & ~word & tops;
  return (control | anyZero(word ^ ('"' * ones)) | anyZero(word ^ ('\\' * ones))) == 0;
}

std::size_t plainLength(std::string_view text) {
  std::size_t i = 0;
  for (std::uint64_t word = 0; i + sizeof word <= text.size(); i += sizeof word) {
    std::memcpy(&word, text.data() + i, sizeof word);
    if (!allPlain(word)) break;
  }
  while (i < text.size() && isPlain(static_cast<unsigned char>(text[i]))) ++i;
  return i;
}

}  // namespace

JsonWriter::JsonWriter(Drain drain)
    : drain_(std::move(drain)),
      capacity_(usualCapacity),
      buffer_(std::make_unique_for_overwrite<char[]>(usualCapacity)) {}

void JsonWriter::drain() {
  drain_({buffer_.get(), size_});
  size_ = 0;
}

/// Sees to room for so many more bytes; a text longer than the buffer makes it grow.
void JsonWriter::room(std::size_t bytes) {
  if (capacity_ - size_ >= bytes) return;
  drain();
  if (capacity_ >= bytes) return;
  buffer_ = std::make_unique_for_overwrite<char[]>(bytes);
  capacity_ = bytes;
}

void JsonWriter::put(std::string_view text) {
  std::memcpy(buffer_.get() + size_, text.data(), text.size());
  size_ += text.size();
}

void JsonWriter::putEscaped(unsigned char c) {
  static constexpr char hex[] = "0123456789abcdef";
  static constexpr std::string_view escaped = "\"\\\n\r\t";
  static constexpr std::string_view letters = "\"\\nrt";
  put('\\');
  const std::size_t letter = escaped.find(static_cast<char>(c));
  if (letter != std::string_view::npos) return put(letters[letter]);
  put("u00");
  put(hex[c >> 4U]);
  put(hex[c & 15U]);
}

void JsonWriter::quoted(std::string_view text) {
  put('"');
  while (true) {
    const std::size_t plain = plainLength(text);
    put(text.substr(0, plain));
    if (plain == text.size()) break;
    putEscaped(static_cast<unsigned char>(text[plain]));
    text.remove_prefix(plain + 1);
  }
  put('"');
}

void JsonWriter::comma() {
  if (!first_) put(',');
  first_ = false;
}

void JsonWriter::open(char bracket) {
  room(longestToken);
  comma();
  put(bracket);
  first_ = true;
}

void JsonWriter::close(char bracket) {
  room(longestToken);
  put(bracket);
  first_ = false;
}

void JsonWriter::key(std::string_view name) {
  room(name.size() + longestToken);
  comma();
  put('"');
  put(name);
  put("\":");
  first_ = true;
}

void JsonWriter::value(std::string_view text) {
  room(longestEscape * text.size() + longestToken);
  comma();
  quoted(text);
}

void JsonWriter::value(bool flag) {
  room(longestToken);
  comma();
  put(flag ? std::string_view("true") : std::string_view("false"));
}

void JsonWriter::value(double number) {
  constexpr double exact = 1e15;  // whole numbers below it are written without an exponent
  if (std::abs(number) < exact && number == std::floor(number))
    return value(static_cast<std::int64_t>(number));
  number_.clear();
  if (std::isfinite(number))
    appendShortest(number_, number);
  else
    number_ = "null";
  room(longestToken);
  comma();
  put(number_);
}

void JsonWriter::value(std::int64_t number) {
  room(longestToken);
  comma();
  char* const begin = buffer_.get() + size_;
  size_ += static_cast<std::size_t>(std::to_chars(begin, begin + longestToken, number).ptr - begin);
}

void JsonWriter::finish() {
  room(1);
  put('\n');
  drain();
}

}  // namespace text
