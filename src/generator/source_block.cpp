#include "generator/source_block.h"

#include "text/strings.h"

namespace generator {

using text::concat;

std::string SourceBlock::values() const {
  if (letter != 'F') return concat(letter, "Blk", number);
  return concat(fft ? "FFBlk" : "FVBlk", number);
}

std::string SourceBlock::declaredValues() const {
  if (letter != 'F') return values();
  return concat(fft ? "FFBlK" : "FVBlK", number);
}

std::string SourceBlock::multipliers() const { return concat("M", letter, "Blk", number); }
std::string SourceBlock::offsets() const { return concat("O", letter, "Blk", number); }
std::string SourceBlock::gaugeFactors() const { return concat("GBBlk", number); }

std::string SourceBlock::constant(std::string_view suffix) const {
  return concat(letter, suffix, number);
}

std::string SourceBlock::crossingSource(std::size_t element) const {
  return concat("LC", letter, "Blk", number, "_", element);
}

std::string SourceBlock::element(std::size_t element) const {
  return concat(declaredValues(), "(", element, ")");
}

int pulseInputCode(const model::MeasurementBlock& pulse) {
  if (text::equalsIgnoringCase(pulse.Meas, "LoLev")) return 1;
  const bool isSwitch = text::equalsIgnoringCase(pulse.Meas, "Switch") ||
                        text::equalsIgnoringCase(pulse.Meas, "SWTCH");
  return isSwitch ? 2 : 0;
}

}  // namespace generator
