#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/project.h"

/// What the tables take of the memory for records.
namespace model {

/// Where records are kept, in the order in which windows show it.
enum class Medium { cardB, cardA, flash, sRam };
inline constexpr std::array allMedia = {Medium::cardB, Medium::cardA, Medium::flash, Medium::sRam};

/// "PAM card B", "CPU Flash".
std::string_view nameOf(Medium medium);
/// Bytes that the medium has for records and buffers. The size of card B is not known: 0.
double capacityOf(const LoggerConfiguration& configuration, Medium medium);
/// Either card means card A, the one with a known size.
Medium mediumOf(const OutputTable& table);
Medium bufferMediumOf(const ScanSetup& scan);

/// What one table takes.
struct TableSpace {
  bool on = false;
  Medium medium = Medium::sRam;
  std::int32_t recordBytes = 0;
  std::int64_t records = 0;
  double bytes = 0;
  double intervalMicros = 0;  // between records
  bool operator==(const TableSpace&) const = default;
};

struct MediumSpace {
  double capacity = 0;
  double burstBuffer = 0;
  double tables = 0;  // of all tables on it that are on
  [[nodiscard]] double free() const;
  [[nodiscard]] bool isOverfull() const { return tables > free(); }
};

struct SpacePlan {
  std::array<MediumSpace, allMedia.size()> media;  // by Medium
  std::array<TableSpace, maxTables> tables;
  [[nodiscard]] const MediumSpace& of(Medium medium) const {
    return media[static_cast<std::size_t>(medium)];
  }
};

/// Why a table can't be sized by time: nothing tells how far apart its records are.
std::optional<std::string> complaintAboutTimeOf(const SpacePlan& plan, std::size_t table);
/// Records that a table keeps in a time; nothing when they take more than its medium has, or when
/// the table has no interval.
std::optional<std::int32_t> recordsIn(double seconds, const SpacePlan& plan, std::size_t table);

/// "TABLE DATA01"
std::string tableLabel(const OutputTable& table);
/// "1,000,000 bytes"
std::string bytesText(double bytes);
/// "1,000 bytes used for Burst Buffer."
std::string burstBufferText(const MediumSpace& space);
/// "Enter the number of days desired."
std::string timeEntryHelp(std::string_view unit);

}  // namespace model

namespace KGEN_COMMON {

/// Sizes all tables. Those of automatic size share evenly what the others leave of their medium.
/// The scan buffer takes so many bytes off the medium that the scan names.
model::SpacePlan CalcTableRecs(const model::Project& project, std::int64_t scanBufferBytes);

}  // namespace KGEN_COMMON
