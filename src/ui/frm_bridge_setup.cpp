#include "ui/frm_bridge_setup.h"

#include <algorithm>

#include "ui/frm_calc_mv_per_volt.h"
#include "ui/frm_calc_pot.h"

namespace ui {

frmBridgeSetup::frmBridgeSetup(const WindowPorts& ports, QWidget* parent)
    : BlockWindow(ports, {"frmBridgeSetup", "Bridge Measurements", "bridge blocks"},
                  model::BlockKind::bridge, parent) {
  build();
}

void frmBridgeSetup::addFields(Form& form) {
  addConfiguration(form);
  addReps(form);
  addExcitation(form);
  addRange(form);
  addIntegration(form, model::InputKind::analog7121);
  addSettle(form);
  addInputReversal(form);
  addOpenSensor(form);
  addGauge(form);
  addScaling(form);
  addCalculator<frmCalcmVPerVolt>(form);
  addCalculator<frmCalcPot>(form);
  addUnits(form);
  addZeroAndCalibration(form);
  addStorage(form);
}

void frmBridgeSetup::addConfiguration(Form& form) {
  form.choice({"Confi&guration:", "How the bridge is wired."},
              choicesOf({"Full bridge", "Full bridge, 6 wires", "Half bridge",
                         "Half bridge, 3 wires", "Half bridge, 4 wires", "Quarter bridge strain",
                         "Half bridge strain", "Full bridge strain"}),
              [this]() -> std::int16_t& { return block().Style; })
      .then([this] {
        block().Type = model::bridgeInstruction(block().Style);
        fitReps();
      });
}

void frmBridgeSetup::addExcitation(Form& form) {
  form.number({"&Excitation:", "The voltage that excites the bridges.", "mV"},
              bounds(model::BlockField::Excite), [this]() -> double& { return block().Excite; });
  form.number({"&Bridges each:", "Bridges that one excitation channel feeds."},
              bounds(model::BlockField::ExciteReps),
              [this]() -> std::int16_t& { return block().ExciteReps; })
      .then([this] { fitReps(); });
  form.check(
          {"Continuous analo&g output", "Excited all the time, by an analog output of the 7131."},
          [this]() -> bool& { return block().CheckCAO; })
      .then([this] { fitReps(); });
  form.check({"Reverse excitation", "Measures twice with the excitation exchanged."},
             [this]() -> bool& { return block().RevExcite; });
}

/// Either of two settings reverses the inputs; the window shows them as one.
void frmBridgeSetup::addInputReversal(Form& form) {
  form.addCheck(
          {"Re&verse inputs",
           "Measures twice with the inputs exchanged, which cancels "
           "offsets."},
          [this] { return block().ReverseMes || block().RevOutput; },
          [this](bool on) {
            block().ReverseMes = on;
            if (!on) block().RevOutput = false;
          })
      .closedWhen([this]() -> std::string {
        return model::isSingleEndedBridge(block()) ? "This bridge is measured single-ended." : "";
      });
}

void frmBridgeSetup::addGauge(Form& form) {
  const auto isStrain = [this] { return model::isStrain(block()); };
  form.choice({"Gauge fa&ctors:", "One for the block, or one for each channel."},
              choicesOf({"One for all", "One a channel"}, 1),
              [this]() -> std::int16_t& { return block().GageCode; })
      .shownWhen(isStrain);
  form.number({"Gauge factor:", "Of every channel without its own."},
              bounds(model::BlockField::GageFactor),
              [this]() -> double& { return block().GageFactor; })
      .shownWhen(isStrain);
}

/// An excitation channel feeds no more bridges than the block has, when it has fewer now.
bool frmBridgeSetup::mayBeDone() {
  if (!BlockWindow::mayBeDone()) return false;
  for (std::size_t n = 1; n <= model::maxBlocks; ++n) {
    model::MeasurementBlock& each = working_.block(kind(), n);
    if (each.Reps < 1 || each.Reps >= ports_.session.project().block(kind(), n).Reps) continue;
    const auto bounds = model::boundsIn(working_, kind(), n, model::BlockField::ExciteReps);
    each.ExciteReps = std::min(each.ExciteReps, static_cast<std::int16_t>(bounds.high));
  }
  return true;
}

}  // namespace ui
