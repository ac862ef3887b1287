#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// CAN databases: the messages of a bus and the signals in them.
namespace dbc {

enum class ByteOrder : std::uint8_t { msbFirst, lsbFirst };
enum class ValueType : std::uint8_t { integer, float32, float64 };

struct ValueName {
  double value = 0;
  std::string name;
  bool operator==(const ValueName&) const = default;
};

struct Range {
  std::uint64_t low = 0, high = 0;
  bool operator==(const Range&) const = default;
};

/// A number in a message. Bits are told by 8 * byte + place in the byte, both from 0, the lowest
/// bit of a byte being 0; the start bit is the most significant one when that comes first, else the
/// least significant.
struct Signal {
  std::string name;
  std::size_t line = 0;
  int startBit = 0;
  int bits = 0;
  ByteOrder order = ByteOrder::lsbFirst;
  bool isSigned = false;
  ValueType type = ValueType::integer;
  double factor = 1, offset = 0;
  double minimum = 0, maximum = 0;
  std::string units;
  std::vector<std::string> receivers;
  std::string comment;
  std::vector<ValueName> valueNames;
  bool isSwitch = false;       // its value tells which multiplexed signals a frame has
  std::string switchName;      // of the switch that it depends on
  std::vector<Range> onlyFor;  // values of the switch; empty: the signal is in every frame
  bool operator==(const Signal&) const = default;
};

struct Message {
  std::uint32_t identifier = 0;
  bool extended = false;  // 29 bits
  std::string name;
  std::size_t line = 0;
  int bytes = 8;
  std::string sender;
  std::string comment;
  std::vector<Signal> signals;
  bool operator==(const Message&) const = default;
};

/// Something wrong in a line, counted from 1: what, and what becomes of it or what to do.
struct Fault {
  std::size_t line = 0;
  std::string text;
  bool operator==(const Fault&) const = default;
};

/// Signals that belong to no message stand below one with this identifier.
constexpr std::uint32_t noMessageIdentifier = 0x40000000;

struct Database {
  std::string version;
  std::string comment;
  std::vector<std::string> nodes;
  std::vector<Message> messages;
  std::vector<Fault> faults;  // by line; at most mostFaults
};
constexpr std::size_t mostFaults = 1000;

/// Reads the text of a CAN database. Whatever is wrong is named, the rest is kept. Bytes that are
/// not UTF-8 are taken as Windows-1252; lines end in CR LF, LF or CR.
Database read(std::string_view text);

/// The first bit of a signal as the logger counts it, but from 0: bits as they are sent when the
/// most significant one comes first, else from the lowest bit of byte 1 upwards.
int firstBit(const Signal& signal);
/// Bytes of a frame up to the end of the signal.
int bytesUsed(const Signal& signal);

}  // namespace dbc
