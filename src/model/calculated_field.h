#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "model/measurement_block.h"

namespace model {

/// A value computed each scan: an expression, or the running average of one.
struct CalculatedField {
  bool Public = false;
  std::string DataResolution = "IEEE4";
  TableMasks CalcField = {};  // processings by table
  std::string CalcName;
  std::int16_t CalcType = 0;  // 0 expression, 1 running average
  std::string CalcExpress;
  std::string CalcUnits;
  std::int16_t CalcAvg = 0;  // values averaged
  bool operator==(const CalculatedField&) const = default;
};

struct CalculatedFields {
  std::int16_t CalcFieldCount = 0;
  std::vector<CalculatedField> fields;  // CalcFieldCount of them
  bool operator==(const CalculatedFields&) const = default;
};

}  // namespace model
