#include <algorithm>

#include "generator/emitters.h"
#include "model/filter_blocks.h"

namespace generator {
namespace {

using text::concat;

template <std::size_t N>
std::string_view textAt(const std::array<std::string_view, N>& texts, int code) {
  return texts[static_cast<std::size_t>(std::clamp(code, 0, static_cast<int>(N) - 1))];
}

/// Constants and arrays of one block of a 7125 module.
class FilterBlock {
 public:
  FilterBlock(ProgramText& out, const ProgramPlan& plan, const SourceBlock& block)
      : out_(out),
        plan_(plan),
        block_(block),
        slot_(plan.project.filterSlots[block.filterSlot - 1]),
        prefix_(concat("'Block", block.number, " Slot", block.place.first.slot)) {}

  void emit() {
    const auto& settings = *block_.block;
    constant("RNG", model::rangeKeyword(settings.Range, false),
             concat(" measurement range (", settings.Range, ")"));
    constant("REP", block_.reps, " repetitions");
    constant("OPT", slot_.OverSample,
             concat(" option ", textAt(model::filterPassBands, slot_.OverSample)));
    const int excitation = static_cast<int>(text::integerWithin(settings.Excite, 0, 6));
    constant("EXCIT", excitation,
             concat(" excitation ", textAt(model::filterExcitations, excitation)));
    constant("MULT", block_.multiplier, " default multiplier");
    if (block_.fft) emitSpectrum();
    constant("OSET", block_.offset, " default offset");
    if (!block_.fft)
      commented(concat(scope(block_.isPublic), sized(block_.declaredValues())),
                " dimensioned source");
    commented(concat("Public ", sized(block_.multipliers())), " dimensioned multiplier");
    commented(concat("Public ", sized(block_.offsets())), " dimensioned offset");
    if (plan_.stamp.dunmoreHost) emitCalibration();
    if (!block_.fft) emitValues();
  }

 private:
  template <class Value>
  void constant(std::string_view suffix, const Value& value, std::string_view comment) {
    commented(concat("Const ", block_.constant(suffix), " = ", value), comment);
  }
  void commented(const std::string& code, std::string_view comment) {
    out_.code(code).comment(prefix_, comment);
  }
  [[nodiscard]] std::string sized(const std::string& name) const {
    return concat(name, "(", block_.constant("REP"), ")");
  }
  void units() {
    if (!block_.units.empty()) out_.line("Units ", block_.declaredValues(), " = ", block_.units);
  }

  void emitSpectrum() {
    const auto& settings = *block_.block;
    constant("FSR", slot_.FiltFFTSampleRate, " FFT Sample Rate");
    constant("FLEN", std::max<int>(slot_.FFTLength, 1), " FFT Time Series #Samples");
    constant("TSWIN", settings.TSWindow, " FFT Time Series Window");
    constant("SPECT", settings.SpectOption, " FFT Specrtal Output");
    constant("FREF", settings.FRef, " FFT Log Binning Ref Freq.");
    constant("SBIN", settings.SBin, " FFT Binning parameter");
    constant("ILO", settings.ILow, " FFT 1st bin returned");
    constant("IHI", std::max(settings.ILow, settings.IHigh), " FFT Highest bin returned");
    const std::string values =
        slot_.FFTType == 1 ? concat(block_.constant("IHI"), "-", block_.constant("ILO"), "+1")
                           : block_.constant("FLEN");
    commented(concat(scope(block_.isPublic), block_.declaredValues(), "(", block_.constant("REP"),
                     ",", values, ",2)"),
              " dimensioned source");
    units();
  }

  void emitCalibration() {
    out_.line("Public ", block_.constant("CalMode"));
    out_.line("Public ", sized(block_.constant("KnownVar")));
    out_.line("Public ", block_.constant("CalReps"));
  }

  void emitValues() {
    units();
    if (block_.zeroed())
      commented(concat("Dim ", sized(block_.declaredValues() + "Zero")), " zero variable");
    emitCrossingArrays(out_, block_);
  }

  ProgramText& out_;
  const ProgramPlan& plan_;
  const SourceBlock& block_;
  const model::FilterSlot& slot_;
  std::string prefix_;
};

}  // namespace

void emitFilterConstants(ProgramText& out, const ProgramPlan& plan) {
  std::size_t slot = 0;
  for (const SourceBlock& block : plan.of('F')) {
    const std::string_view kind = block.fft ? " FFT " : " FILTER ";
    if (block.filterSlot != slot)
      out.spacedSectionBanner(concat(kind, "CONSTANTS - SLOT ", block.place.first.slot));
    slot = block.filterSlot;
    out.subBanner(concat(block.fft ? " FFT " : " Filt ", "Block", block.number));
    FilterBlock(out, plan, block).emit();
  }
}

}  // namespace generator
