#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Frames of the bus and the bits in them.
namespace can {

constexpr int frameBytes = 8;  // that the logger takes
constexpr int frameBits = 8 * frameBytes;
constexpr std::uint32_t largestStandard = 0x7FF;
constexpr std::uint32_t largestExtended = 0x1FFFFFFF;

struct Frame {
  std::optional<std::uint32_t> identifier;  // nothing: not told
  bool extended = false;
  std::vector<std::uint8_t> data;
  bool operator==(const Frame&) const = default;
};

/// A frame out of a text, or what is wrong with it and what to do.
struct FrameReading {
  std::optional<Frame> frame;
  std::string complaint;
};
/// Takes what bus tools show: "18FEF100#0102A0", "(1.5) can0 123#01.02", "123 8 01 02 ...",
/// "can0 123 [2] 01 02", "123 0102A0", and data alone "01 02 A0". All numbers are hexadecimal,
/// with or without "0x" or "&H".
FrameReading frameFrom(std::string_view text);

/// Where values stand in a frame: one or more of like form, one after another. Messages that begin
/// with the most significant bit count bits as they are sent (1 is the highest of byte 1), the
/// others from the lowest bit of byte 1 upwards. So byte n begins with bit 8n - 7 in both.
struct BitField {
  int startBit = 1;
  int numBits = 1;
  int numVals = 1;
  int messageType = 1;  // 1 to 6 retrieve, 7 to 12 transmit
};

bool isMsbFirst(int messageType);
bool isSigned(int messageType);
bool isFloat(int messageType);
/// The type takes values out of a frame.
bool retrieves(int messageType);

/// The bits of one value (from 0), the least significant first. A bit of a frame is told by
/// 8 * byte + place in the byte, both from 0, the lowest bit of a byte being 0. Those beyond the
/// frame are left out.
std::vector<int> bitsOf(const BitField& field, int value);

/// The number that a frame holds for one value (from 0), before scaling; nothing when the frame is
/// too short or the type retrieves nothing.
std::optional<double> numberIn(std::span<const std::uint8_t> data, const BitField& field,
                               int value);

/// Byte 1 to 8 of a text of hexadecimal digits behind "&H"; -1 where a digit is "X" or missing.
int byteOf(std::string_view hexText, int byte);
/// Mask of a received byte; a text that names no byte compares every bit.
int maskByte(std::string_view maskText, int byte);
/// The masked bytes of a frame are those of the pattern, as far as that tells.
bool matchesPattern(std::span<const std::uint8_t> data, std::string_view match,
                    std::string_view mask);

}  // namespace can
