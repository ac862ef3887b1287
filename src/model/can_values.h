#pragma once

#include <optional>
#include <string>
#include <vector>

#include "can/frame.h"
#include "model/project.h"

/// The values that CAN items take out of frames.
namespace model {

/// The largest identifier of a setup: of 11 or 29 bits.
std::int32_t largestIdentifier(const CanSetup& can);

can::BitField fieldOf(const CanItem& item);
/// All bits of a frame that an item takes, ascending; see can::bitsOf.
std::vector<int> bitsOf(const CanItem& item);

/// Two receiving items of one identifier that take the same bits.
struct SharedBits {
  std::size_t first = 0, second = 0;  // items, from 0
  std::vector<int> bits;
  bool operator==(const SharedBits&) const = default;
};
std::vector<SharedBits> sharedBits(const CanSetup& can);

/// What a program can't do with an item: an identifier, a type or bits that no frame has.
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
