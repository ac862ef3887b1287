#include "ui/frm_pulse_setup.h"

#include <algorithm>

#include "ui/frm_flow_calc.h"
#include "ui/frm_more_spd_calc.h"
#include "ui/frm_rpm_calc.h"
#include "ui/frm_spd_calc.h"

namespace ui {
namespace {

/// Of the option of a pulse block: counts, Hz, and above them the milliseconds of an average.
enum PulseResult { counts = 0, hertz = 1, averaged = 2 };
constexpr std::int16_t usualMilliseconds = 100;

}  // namespace

frmPulseSetup::frmPulseSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmPulseSetup", "Pulse Measurements", "pulse blocks"},
                  model::BlockKind::pulse, parent) {
  build();
}

void frmPulseSetup::addFields(Form& form) {
  addReps(form);
  form.pick(
      {"&Input:", "High-level pulses, low-level AC, or a switch closure."},
      [] {
        return std::vector<std::string>{"HiLev", "LoLev", "Switch"};
      },
      [this]() -> std::string& { return block().Meas; });
  addResult(form);
  addScaling(form);
  addCalculator<frmRPMCalc>(form);
  addCalculator<frmFlowCalc>(form);
  addCalculator<frmSpdCalc>(form);
  addCalculator<frmMoreSpdCalc>(form);
  addUnits(form);
  addCalibration(form);
  addStorage(form);
}

void frmPulseSetup::addResult(Form& form) {
  form.addChoice(
      {"Resul&t:", "What the pulses of a scan become."},
      [] {
        return choicesOf({"Counts", "Hz", "Hz, averaged"});
      },
      [this] { return std::clamp<int>(block().Opt, counts, averaged); },
      [this](int result) {
        block().Opt = result == averaged ? usualMilliseconds : static_cast<std::int16_t>(result);
      });
  const double longest = model::boundsOf(kind(), model::BlockField::Opt).high;
  form.number({"A&veraged over:", "The time over which the frequency is averaged.", "mSec"},
              Bounds{averaged, longest}, [this]() -> std::int16_t& { return block().Opt; })
      .shownWhen([this] { return block().Opt >= averaged; });
}

}  // namespace ui
