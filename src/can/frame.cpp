#include "can/frame.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>

#include "text/strings.h"

namespace can {
namespace {

using text::concat;
using Words = std::vector<std::string_view>;

constexpr std::size_t longestData = 64;  // bytes of the longest frames there are

// ---- frames as text

bool isHex(std::string_view digits) {
  return !digits.empty() &&
         digits.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

std::uint64_t hexValue(std::string_view digits) {
  std::uint64_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

bool isMarked(std::string_view word) {
  return text::equalsIgnoringCase(word.substr(0, 2), "0x") ||
         text::equalsIgnoringCase(word.substr(0, 2), "&H");
}

std::string_view withoutMark(std::string_view word) {
  return isMarked(word) ? word.substr(2) : word;
}

Words wordsOf(std::string_view line) {
  Words words;
  for (std::size_t begin = line.find_first_not_of(" \t,;"); begin != std::string_view::npos;) {
    const std::size_t end = std::min(line.find_first_of(" \t,;", begin), line.size());
    words.push_back(line.substr(begin, end - begin));
    begin = line.find_first_not_of(" \t,;", end);
  }
  return words;
}

/// "[8]"
bool isBracketed(std::string_view word) {
  return word.size() >= 3 && word.front() == '[' && word.back() == ']';
}

class FrameReader {
 public:
  FrameReading run(std::string_view line) {
    line = text::trimmed(line);
    if (line.starts_with('('))  // the time
      line = text::trimmed(line.substr(std::min(line.find(')') + 1, line.size())));
    const std::size_t hash = line.find('#');
    if (line.empty())
      refuse("there is no frame; write identifier and data bytes, like 123#0102");
    else if (hash != std::string_view::npos)
      readHashed(line.substr(0, hash), line.substr(hash + 1));
    else
      readWords(wordsOf(line));
    if (!complaint_.empty()) return {std::nullopt, complaint_};
    return {std::move(frame_), ""};
  }

 private:
  void refuse(std::string complaint) {
    if (complaint_.empty()) complaint_ = std::move(complaint);
  }

  void readHashed(std::string_view before, std::string_view data) {
    const Words words = wordsOf(before);
    readIdentifier(words.empty() ? "" : words.back());
    if (data.starts_with('#')) data.remove_prefix(std::min<std::size_t>(2, data.size()));  // flags
    if (data.starts_with('R') || data.starts_with('r'))
      return refuse("a request for a frame has no data; give a frame that has some");
    std::string digits(data);
    std::replace(digits.begin(), digits.end(), '.', ' ');
    for (const std::string_view word : wordsOf(digits)) readData(word);
  }

  void readWords(Words words) {
    const auto bracketed = std::find_if(words.begin(), words.end(), isBracketed);
    if (bracketed != words.end() && bracketed != words.begin()) {
      readIdentifier(*(bracketed - 1));
      words.erase(words.begin(), bracketed + 1);
    } else if (beginsWithIdentifier(words)) {
      readIdentifier(words.front());
      words.erase(words.begin());
      if (countsTheRest(words)) words.erase(words.begin());
    }
    for (const std::string_view word : words) readData(word);
    if (frame_.data.empty()) refuse("there are no data bytes; write them behind the identifier");
  }

  /// The first of some words is the number of bytes that follow.
  static bool countsTheRest(const Words& words) {
    return !words.empty() && words.front().size() == 1 && isHex(words.front()) &&
           hexValue(words.front()) + 1 == words.size();
  }

  static bool beginsWithIdentifier(const Words& words) {
    const std::size_t digits = withoutMark(words.front()).size();
    if (words.size() < 2) return false;
    return digits == 3 || digits > 4 || words.front().ends_with('x') ||
           countsTheRest({words.begin() + 1, words.end()});
  }

  void readIdentifier(std::string_view word) {
    std::string_view digits = withoutMark(word);
    const bool saysExtended = digits.ends_with('x');
    if (saysExtended) digits.remove_suffix(1);
    if (!isHex(digits) || digits.size() > 8)
      return refuse(concat("'", word, "' is no identifier; write up to 8 hexadecimal digits"));
    constexpr std::uint64_t extendedMark = 0x80000000;
    const std::uint64_t value = hexValue(digits) & ~extendedMark;
    if (value > largestExtended)
      return refuse(concat("'", word, "' has more than 29 bits; the largest is 1FFFFFFF"));
    frame_.identifier = static_cast<std::uint32_t>(value);
    frame_.extended = saysExtended || digits.size() > 3 || value > largestStandard;
  }

  void readData(std::string_view word) {
    const std::string_view digits = withoutMark(word);
    const bool whole = digits.size() % 2 == 0 || digits.size() == 1;
    if (!isHex(digits) || !whole)
      return refuse(
          concat("'", word, "' are no data bytes; write two hexadecimal digits for each"));
    for (std::size_t at = 0; at < digits.size(); at += 2)
      frame_.data.push_back(static_cast<std::uint8_t>(hexValue(digits.substr(at, 2))));
    if (frame_.data.size() > longestData)
      refuse(concat("a frame has at most ", longestData, " bytes; give one frame"));
  }

  Frame frame_;
  std::string complaint_;
};

// ---- bits

/// Forms of values, the same for retrieving and transmitting: 0 to 5.
int formOf(int messageType) {
  return messageType >= 1 && messageType <= 12 ? (messageType - 1) % 6 : -1;
}

double signedValue(std::uint64_t bits, int count) {
  if (count < 64 && (bits >> (count - 1) & 1U) != 0) bits |= ~std::uint64_t{0} << count;
  return static_cast<double>(static_cast<std::int64_t>(bits));
}

std::string_view digitsOf(std::string_view hexText) {
  if (text::equalsIgnoringCase(hexText.substr(0, 2), "&H")) hexText.remove_prefix(2);
  return hexText;
}

}  // namespace

FrameReading frameFrom(std::string_view text) { return FrameReader().run(text); }

bool isMsbFirst(int messageType) { return formOf(messageType) % 2 == 0; }

bool isSigned(int messageType) { return formOf(messageType) == 2 || formOf(messageType) == 3; }

bool isFloat(int messageType) { return formOf(messageType) >= 4; }

bool retrieves(int messageType) { return messageType >= 1 && messageType <= 6; }

std::vector<int> bitsOf(const BitField& field, int value) {
  std::vector<int> bits;
  const bool msbFirst = isMsbFirst(field.messageType);
  const int first = field.startBit - 1 + value * field.numBits;
  for (int i = 0; i < field.numBits; ++i) {
    const int sent = msbFirst ? first + field.numBits - 1 - i : first + i;
    const int bit = msbFirst ? sent / 8 * 8 + 7 - sent % 8 : sent;
    if (sent >= 0 && sent < frameBits) bits.push_back(bit);
  }
  return bits;
}

std::optional<double> numberIn(std::span<const std::uint8_t> data, const BitField& field,
                               int value) {
  const std::vector<int> bits = bitsOf(field, value);
  const bool whole = !bits.empty() && static_cast<int>(bits.size()) == field.numBits;
  const bool wrongFloat = isFloat(field.messageType) && field.numBits != 32;
  if (formOf(field.messageType) < 0 || !whole || wrongFloat) return std::nullopt;
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < bits.size(); ++i) {
    const auto byte = static_cast<std::size_t>(bits[i] / 8);
    if (byte >= data.size()) return std::nullopt;
    number |= static_cast<std::uint64_t>(data[byte] >> (bits[i] % 8) & 1U) << i;
  }
  if (isFloat(field.messageType)) return std::bit_cast<float>(static_cast<std::uint32_t>(number));
  if (isSigned(field.messageType)) return signedValue(number, field.numBits);
  return static_cast<double>(number);
}

int byteOf(std::string_view hexText, int byte) {
  const std::string_view digits = digitsOf(hexText);
  const auto at = static_cast<std::size_t>(byte - 1) * 2;
  if (at + 1 >= digits.size() || !isHex(digits.substr(at, 2))) return -1;
  return static_cast<int>(hexValue(digits.substr(at, 2)));
}

int maskByte(std::string_view maskText, int byte) {
  const int mask =
      digitsOf(maskText).size() >= std::size_t{2} * frameBytes ? byteOf(maskText, byte) : -1;
  return mask < 0 ? 255 : mask;
}

bool matchesPattern(std::span<const std::uint8_t> data, std::string_view match,
                    std::string_view mask) {
  for (int byte = 1; byte <= frameBytes; ++byte) {
    const int pattern = byteOf(match, byte);
    const int bits = maskByte(mask, byte);
    if (pattern < 0 || bits == 0) continue;
    const auto at = static_cast<std::size_t>(byte - 1);
    if (at >= data.size() || (data[at] & bits) != (pattern & bits)) return false;
  }
  return true;
}

}  // namespace can
