#pragma once

#include <cstdint>
#include <string>

namespace model {

/// The main scan: how often, and how it is buffered in burst mode.
struct ScanSetup {
  double ExecutionTime = 1;        // in the unit ExecTimeUnits; unit 0 counts tens of us
  std::int16_t ExecTimeUnits = 2;  // time-unit code
  std::int16_t ScanMode = 0;       // 0 continuous, 1 burst
  bool ScanBuffer = false;
  std::int16_t BurstTrigger = 0;  // 0 start at once, 1 measurement condition, 2 flag
  std::int16_t ScanBufferSize = 0;
  std::int16_t PamBuffer = 0;  // 0 CPU S-RAM, 1 card A, 2 card B
  std::int32_t PostTriggerScans = 0;
  std::string TriggerMeasVar;
  std::int16_t TriggerCompare = 2;
  double TriggerValue = 0;
  std::string TrigExpression;
  std::int32_t BufferScans = 0;  // scans buffered on the K700X
  std::int16_t FlagScan = 0;     // 0 none, k: wait for Flag(k)
  bool operator==(const ScanSetup&) const = default;
};

}  // namespace model
