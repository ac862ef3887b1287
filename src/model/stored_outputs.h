#pragma once

#include <string>
#include <vector>

#include "model/channel_plan.h"
#include "model/project.h"

namespace model {

enum class StoredSource {
  batteryCurrent,
  batteryVolts,
  tcmuxReference,
  isolatedReference,
  block,
  tcReference,
  canItem,
  port,
  calculatedField
};

/// The highest processing code (0 to 7) that the program has for a source; higher ones of a file
/// store nothing.
int lastProcessingOf(StoredSource source);

/// One processing instruction of a table: of a whole group, or of one of its elements.
struct StoredOutput {
  int code = 0;                // processing 0 to 7
  std::size_t element = 0;     // from 1; 0: all elements of the group in one instruction
  std::size_t count = 1;       // elements that the instruction stores
  std::size_t valuesEach = 1;  // values stored for each of them
};

/// What one source stores in one table, in the order of the record.
struct StoredGroup {
  StoredSource source = StoredSource::block;
  BlockKind kind = BlockKind::thermocouple;  // of a block
  std::size_t number = 0;                    // block, item, port group or field, from 1
  int slot = 0;                              // of filter, isolated and pulse blocks and ports
  bool fft = false;
  std::string dataType;
  std::vector<StoredOutput> outputs = {};
};

/// The one list of what a table (1 to 8) stores. Program, table information, record size and
/// summary all read it, so they agree.
std::vector<StoredGroup> storedGroups(const Project& project, const ChannelPlan& plan,
                                      std::size_t table);

/// Data bytes of a record that stores these groups.
std::int32_t bytesOf(const std::vector<StoredGroup>& groups);

/// True when the masks select anything in the table that is on and shown by the display, so that
/// its variable must be public.
bool shownByDisplay(const Project& project, const TableMasks& masks);

/// A port group that the program reads: inputs of a 7141/42 with a port included.
bool isReadGroup(const Project& project, const ChannelPlan& plan, std::size_t number);

}  // namespace model

namespace KGEN_COMMON {

/// Values that an FFT block stores of each channel: its spectral bins or its time series.
std::size_t FftValues(const model::Project& project, std::size_t filterBlock);

/// 1 for sample to standard deviation, bins or products of dimensions for the histograms, 0 for
/// another code or an output that is not enabled.
std::size_t ValuesPerOutput(bool enabled, int code, std::string_view bins,
                            std::string_view rainflow, std::string_view level);

/// Exactly "FP2" 2, "IEEE4" 4, anything else 0.
int BytesPerValue(std::string_view dataType);

/// Data bytes of one record of a table 1 to 8.
void BytesPerRecord(const model::Project& project, std::size_t table, std::int32_t& bytes);

/// Values in one record of a table 1 to 8.
std::size_t FieldsPerRecord(const model::Project& project, std::size_t table);

/// The first two unsigned numbers found anywhere in a text, at most 1000; a missing one is 1.
struct Dimensions {
  std::size_t first = 1, second = 1;
};
Dimensions dimensionsIn(std::string_view text);

}  // namespace KGEN_COMMON
