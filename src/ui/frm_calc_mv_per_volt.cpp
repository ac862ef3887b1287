#include "ui/frm_calc_mv_per_volt.h"

#include "calculators/calculator_texts.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace ui {

namespace help = calculators::help;
using calculators::Unknown;

frmCalcmVPerVolt::frmCalcmVPerVolt(SetupWindow& owner, const ScaledBlock& target)
    : CalculatorWindow(owner, target, "frmCalcmVPerVolt", calculators::title::sensitivity) {
  const auto excitation = calculators::shownExcitation(text::shortest(block().Excite));
  excitation_ = excitationBefore_ = excitation ? excitation->shown : "";
  build();
}

void frmCalcmVPerVolt::addInputs(Form& form) {
  addNumber(form, {"&Full scale output:", help::fullScaleMvPerV, "mV/V"},
            [this]() -> std::string& { return inputs().mvPerVolt.mVPerV; });
  addNumber(form, {"Rated &capacity:", help::ratedCapacity},
            [this]() -> std::string& { return inputs().mvPerVolt.FullScale; });
  addUnits(form, [this]() -> std::string& { return inputs().mvPerVolt.Units; });
}

void frmCalcmVPerVolt::addResults(Form& form) {
  addResult(form, {"Multiplier (M):", help::transferred},
            [this] { return calculators::sensitivityMultiplier(inputs().mvPerVolt); });
  Form& whatIf = form.group("What if");
  addUnknown(whatIf, {"&Excitation, mV (E):", help::transferred}, Unknown::excitation,
             [this]() -> std::string& { return excitation_; });
  addUnknown(whatIf, {"U&nits (U):", "The value in units that the sensor measures."},
             Unknown::units, [this]() -> std::string& { return units_; });
  addUnknown(whatIf, {"&Sensor output, mV (V):", "What the sensor gives."}, Unknown::output,
             [this]() -> std::string& { return inputs().mvPerVolt.mVOut; });
  whatIf.readout({"Formula:", "How the value that was clicked is worked out."},
                 [this] { return std::string(formula_); });
}

/// A box of the panel, and below it the button that works it out of the two others.
void frmCalcmVPerVolt::addUnknown(Form& form, const FieldText& text, Unknown unknown,
                                  const Place& place) {
  static constexpr std::string_view captions[] = {"Calculate E", "Calculate U", "Calculate V"};
  const bool isExcitation = unknown == Unknown::excitation;
  addNumber(form, text, place,
            isExcitation ? calculators::complaintAboutExcitation : Form::TextRule());
  form.button({captions[static_cast<std::size_t>(unknown)], help::solveForThis},
              [this, unknown, place] { solve(unknown, place); });
}

void frmCalcmVPerVolt::solve(Unknown unknown, const Place& place) {
  const calculators::SensitivityPanel panel{excitation_, units_, inputs().mvPerVolt.mVOut};
  place() = calculators::solvedFor(unknown, inputs().mvPerVolt, panel).shown;
  formula_ = calculators::formulaOf(unknown);
  noteEdit("what if");
}

/// An excitation that was not touched keeps all the digits that it has in the block.
bool frmCalcmVPerVolt::isExcitationEdited() const { return excitation_ != excitationBefore_; }

calculators::Transfer frmCalcmVPerVolt::transfer() const {
  return calculators::transferOf(inputs().mvPerVolt, isExcitationEdited() ? excitation_ : "");
}

bool frmCalcmVPerVolt::mayBeDone() {
  if (isExcitationEdited() && text::readNumber(excitation_) < 0) {
    ports_.messages.show(
        {.title = "EXCITATION", .text = *calculators::complaintAboutExcitation(excitation_)});
    return false;
  }
  if (const auto question = calculators::questionAboutExcitation(excitation_))
    if (ports_.messages.show(*question) == ports::Answer::yes) return false;
  return CalculatorWindow::mayBeDone();
}

}  // namespace ui
