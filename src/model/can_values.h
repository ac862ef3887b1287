#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "can/frame.h"
#include "model/project.h"

/// The values that CAN items take out of frames.
namespace model {

/// The largest identifier of a setup: of 11 or 29 bits.
std::int32_t largestIdentifier(const CanSetup& can);
/// A text that is no identifier of a setup, or one that a program would cut.
std::optional<std::string> complaintAboutIdentifier(std::string_view text, const CanSetup& can);
/// Bytes to send as "&H" and two hexadecimal digits each.
std::optional<std::string> complaintAboutFrame(std::string_view text);

/// What the program makes of an item: it takes values out of messages, or only sends.
bool onlySends(const CanItem& item);
/// The message types of an item's direction: 1 to 6 take values, 7 to 14 send.
bool hasTypeOfDirection(const CanItem& item);
/// The type that says the same of values in the item's direction; 0 where there is none.
std::int16_t typeOfDirection(const CanItem& item);
/// Two items of one message: they take, or send, what has the same identifier, however written.
bool areOfOneMessage(const CanItem& a, const CanItem& b, const CanSetup& can);

can::BitField fieldOf(const CanItem& item);
/// All bits of a frame that an item takes, ascending; see can::bitsOf.
std::vector<int> bitsOf(const CanItem& item);

/// Two receiving items of one message that take the same bits. Replies that are told apart by
/// their pattern are not compared.
struct SharedBits {
  std::size_t first = 0, second = 0;  // items, from 0
  std::vector<int> bits;
  bool operator==(const SharedBits&) const = default;
};
std::vector<SharedBits> sharedBits(const CanSetup& can);

/// What a program can't do with an item: identifiers, a type or bits that no frame has, a type of
/// the other direction, bytes that can't be read.
std::optional<std::string> complaintAboutItem(const CanItem& item, const CanSetup& can);

/// The name of a value (from 0) of an item (from 0): its own, or "CBlk2(1)".
std::string valueName(const CanItem& item, std::size_t itemIndex, std::size_t value);

struct DecodedValue {
  std::size_t item = 0, value = 0;  // from 0
  std::string name;
  std::optional<double> number;  // scaled
  std::string units;
  std::string remark;  // why there is no number
};
/// What the receiving items of a project make of a frame; of one without identifier, all of them.
std::vector<DecodedValue> decoded(const Project& project, const can::Frame& frame);

}  // namespace model
