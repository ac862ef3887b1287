#include "ui/frm_filt_setup.h"

#include <algorithm>

#include "model/filter_blocks.h"
#include "model/quantity_rules.h"
#include "model/time_units.h"
#include "text/numbers.h"
#include "text/strings.h"
#include "timing/execution_interval.h"
#include "timing/isolated_plan.h"
#include "ui/frm_calc_mult_off.h"

namespace ui {
namespace {

using model::BlockField;

template <std::size_t N>
std::vector<Choice> choicesFrom(const std::array<std::string_view, N>& texts) {
  std::vector<Choice> choices;
  choices.reserve(N);
  for (const std::string_view each : texts)
    choices.push_back({std::string(each), static_cast<int>(choices.size())});
  return choices;
}

/// Remarks of programs stand in parentheses.
template <std::size_t N>
std::vector<Choice> choicesWithin(const std::array<std::string_view, N>& remarks) {
  std::vector<Choice> choices = choicesFrom(remarks);
  for (Choice& each : choices) each.text = each.text.substr(1, each.text.size() - 2);
  return choices;
}

}  // namespace

frmFiltSetup::frmFiltSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmFiltSetup", "Filter and FFT Measurements", "filter blocks"},
                  model::BlockKind::filter, parent) {
  blockChosen();
  build();
}

std::size_t frmFiltSetup::listedBlocks() const { return model::blockCount(working_, kind()); }

/// The module of the block comes with it.
void frmFiltSetup::blockChosen() {
  const std::size_t slot = model::filterSlotOf(working_, number());
  if (slot > 0) slot_ = slot - 1;
}

// ---- the module

void frmFiltSetup::addSharedFields(Form& form) {
  Form& module = form.group("Module");
  addModule(module);
  addVoltageFilter(module);
  addFft(module);
  module.button({"Add a bloc&k", "Gives the module one block more."}, [this] { addBlock(); });
  module.button({"Remove the &block", "Takes the chosen block away."}, [this] { removeBlock(); })
      .closedWhen(
          [this]() -> std::string { return listedBlocks() > 0 ? "" : "There is no block yet."; });
}

std::vector<Choice> frmFiltSetup::modules() const {
  std::vector<Choice> choices;
  const int modules = working_.configuration.quantity(model::ModuleKindIndex::filter7125);
  const int first = model::firstSlot(working_.configuration, model::ModuleKindIndex::filter7125);
  choices.reserve(static_cast<std::size_t>(std::max(modules, 1)));
  for (int s = 0; s < modules; ++s)
    choices.push_back({text::concat("7125 in slot ", first + s), s});
  if (choices.empty()) choices.push_back({"no 7125 module", 0});
  return choices;
}

void frmFiltSetup::addModule(Form& form) {
  form.choice({"Mod&ule:", "The module whose settings are shown."},
              std::function<std::vector<Choice>()>([this] { return modules(); }),
              [this]() -> std::size_t& { return slot_; })
      .then([this] { chooseModule(); });
  form.choice({"M&ode:", "Filtered voltages, or the samples or spectra of a series."},
              choicesOf({"Voltage filter", "FFT"}), [this]() -> bool& { return slot().FFTModule; })
      .then([this] { refuseSpectra(); });
  form.choice({"Pass band:", "What passes the filter, by its sample rate Fsr."},
              choicesWithin(model::filterPassBands),
              [this]() -> std::int16_t& { return slot().OverSample; });
}

void frmFiltSetup::addVoltageFilter(Form& form) {
  const auto isFilter = [this] { return !slot().FFTModule; };
  form.number({"&Sample rate:", "Filtered samples a second.", "Hz"}, model::filterRateBounds,
              [this]() -> double& { return slot().FiltFreqNum; })
      .shownWhen(isFilter);
  form.check({"Once a sca&n", "Measures once each scan, without subscans."},
             [this]() -> bool& { return slot().FiltNoSubscan; })
      .shownWhen(isFilter);
  form.readout({"Subscan:", "How the samples lie in a scan."},
               [this] {
                 const model::FilterSubscan subscan = model::filterSubscan(working_, slot());
                 return text::concat(microsText(static_cast<double>(subscan.intervalMicros)),
                                     " uSec, ", subscan.count, " a scan");
               })
      .shownWhen([this] { return !slot().FFTModule && !slot().FiltNoSubscan; });
}

void frmFiltSetup::addFft(Form& form) {
  const auto isFft = [this] { return slot().FFTModule; };
  form.number({"Sample rate of the &FFT:", "Samples a second of a series.", "Hz"},
              model::fftRateBounds, [this]() -> double& { return slot().FiltFFTSampleRate; })
      .shownWhen(isFft);
  form.number({"FFT &length:", "Samples of a series: a power of two."}, model::fftLengthBounds,
              [this]() -> std::int16_t& { return slot().FFTLength; })
      .settledBy([this](double samples) {
        model::setFftLength(working_, slot_ + 1, model::nearestFftLength(samples));
        return slot().FFTLength;
      })
      .shownWhen(isFft);
  form.choice({"R&esult:", "The samples of the series, or its spectrum."},
              choicesOf({"Individual samples", "Spectra"}),
              [this]() -> std::int16_t& { return slot().FFTType; })
      .then([this] { refuseSpectra(); })
      .shownWhen(isFft);
}

/// The chosen block is one of the module, if it has any.
void frmFiltSetup::chooseModule() {
  for (std::size_t n = 1; n <= listedBlocks(); ++n)
    if (model::filterSlotOf(working_, n) == slot_ + 1) return chooseBlock(n);
}

void frmFiltSetup::addBlock() {
  if (const auto complaint = model::complaintAboutNewFilterBlock(working_, slot_ + 1)) {
    ports_.messages.show(*complaint);
    return;
  }
  blockAdded(model::addFilterBlock(working_, slot_ + 1));
}

void frmFiltSetup::removeBlock() {
  const std::size_t gone = number();
  model::removeFilterBlock(working_, gone);
  blockRemoved(gone);
}

/// A 7103 CPU has none: the module gives samples.
void frmFiltSetup::refuseSpectra() {
  const auto warning = model::warningAboutSpectra(working_, working_.configuration);
  if (!warning) return;
  ports_.messages.show(*warning);
  slot().FFTType = 0;
}

// ---- the block

void frmFiltSetup::addFields(Form& form) {
  Form& fields = form.group("Block");
  addReps(fields);
  addRange(fields);
  fields.choice({"Excitation:", "What the module feeds the sensors with."},
                choicesWithin(model::filterExcitations),
                [this]() -> double& { return block().Excite; });
  addSpectrum(fields);
  addScaling(fields);
  addCalculator<frmCalcMultOff>(fields);
  addUnits(fields);
  addZeroAndCalibration(fields);
  addStorage(fields);
  onRefresh([this, &fields] { fields.parentWidget()->setVisible(listedBlocks() > 0); });
}

void frmFiltSetup::addSpectrum(Form& form) {
  const auto isFft = [this] { return model::isFft(working_, number()); };
  const auto isSpectrum = [this, isFft] { return isFft() && slot().FFTType == 1; };
  form.choice({"&Window:", "Weighs the samples of a series."}, choicesFrom(model::fftWindows),
              [this]() -> std::int16_t& { return block().TSWindow; })
      .shownWhen(isFft);
  form.choice({"Spec&trum:", "What the spectrum gives of each bin."},
              choicesFrom(model::spectrumOptions),
              [this]() -> std::int16_t& { return block().SpectOption; })
      .shownWhen(isSpectrum);
  form.number({"Reference frequency:",
               "Reference of the logarithmic binning; 0 while bins are equally wide.", "Hz"},
              Bounds{0, model::fftRateBounds.high}, [this]() -> double& { return block().FRef; })
      .shownWhen(isSpectrum);
  form.number({"Binning:", "The binning parameter of the FFT; 0 returns every bin as it is."},
              Bounds{0, model::fftLengthBounds.high},
              [this]() -> std::int16_t& { return block().SBin; })
      .shownWhen(isSpectrum);
  form.number({"First bin:", "The lowest bin that is returned."}, bounds(BlockField::ILow),
              [this]() -> std::int16_t& { return block().ILow; })
      .shownWhen(isSpectrum);
  form.number({"Last bin:", "The highest bin that is returned."}, bounds(BlockField::IHigh),
              [this]() -> std::int16_t& { return block().IHigh; })
      .shownWhen(isSpectrum);
}

// ---- the scan

void frmFiltSetup::addTotals(Form& form) {
  form.readout({"Shortest scan:", "What the voltage filters allow.", "uSec"},
               [this] { return microsText(timing::minimumFilterScanMicros(working_)); });
  form.readout({"Scan interval:", "Whether the samples fit into it."},
               [this] { return timing::complaintAboutScan(working_).value_or("fits"); });
  BlockWindow::addTotals(form);
}

/// The isolated blocks follow the scan that the filters leave.
bool frmFiltSetup::mayBeDone() {
  if (!BlockWindow::mayBeDone()) return false;
  const model::Project& before = ports_.session.project();
  if (working_.filterSlots != before.filterSlots || working_.set(kind()) != before.set(kind()))
    KGEN_COMMON::PlanIsolatedBlocks(working_, ports_.messages, ports_.errors);
  return true;
}

}  // namespace ui
