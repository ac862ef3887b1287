#include "logscript/scan_times.h"

#include <algorithm>

#include "logscript/arguments.h"
#include "logscript/instructions.h"
#include "logscript/meaning.h"
#include "text/strings.h"

namespace logscript {
namespace {

using Kind = StatementKind;

constexpr double openSensorMicros = 10;
constexpr double referenceSettleMicros = 30;
constexpr double panelMicros = 70;
constexpr double pulseMicros = 10;
constexpr double filterMicros = 15;
constexpr double canItemMicros = 200;
constexpr double canValueMicros = 10;
constexpr double excitationMicros = 30;
constexpr double portMicros = 20;
constexpr double batteryVoltsMicros = 30;
constexpr double batteryCurrentMicros = 20;

class Estimate {
 public:
  explicit Estimate(const Program& program) : program_(program), meaning_(program, ignored_) {}

  std::vector<ScanTimes> run() {
    meaning_.declareAll();
    for (std::uint32_t i = 0; i < program_.statements.size(); ++i) statement(i);
    return std::move(scans_);
  }

 private:
  void statement(std::uint32_t index) {
    const Statement& statement = program_.statements[index];
    if (statement.kind == Kind::constant || statement.kind == Kind::variable) return;
    meaning_.evaluate(statement);
    if (statement.kind == Kind::scan) open(index);
    if (statement.kind != Kind::invoke || !isInstruction(statement.name)) return;
    const Instruction* form = formFor(instructionForms(statement.name), statement);
    if (form == nullptr) return;
    const double micros = microsOf(*form, statement) * timesInScan(statement);
    if (micros <= 0) return;
    if (scans_.empty() || scan_ != enclosing(index)) open(enclosing(index));
    scans_.back().instructions.push_back({text::upper(form->name), micros});
  }

  void open(std::uint32_t block) {
    scan_ = block;
    scans_.push_back({isInSubroutine(block), {}});
  }

  /// The scan that a statement is in, else its subroutine or program.
  [[nodiscard]] std::uint32_t enclosing(std::uint32_t index) const {
    for (;;) {
      const std::uint32_t parent = program_.statements[index].parent;
      if (parent == index || program_.statements[index].kind == Kind::scan) return index;
      index = parent;
    }
  }

  [[nodiscard]] bool isInSubroutine(std::uint32_t index) const {
    while (program_.statements[index].parent != index) index = program_.statements[index].parent;
    return program_.statements[index].kind == Kind::sub;
  }

  /// How often a statement is executed in its scan: the count of its subscan; none when a subscan
  /// is spread over several scans.
  [[nodiscard]] double timesInScan(const Statement& statement) const {
    const Statement* inner = &statement;
    while (true) {
      const Statement& block = program_.statements[inner->parent];
      if (block.kind == Kind::subScan && block.count == 3) {
        const double count =
            static_cast<double>(meaning_.whole(program_.expressions(block)[2]).value_or(1));
        return std::max(count, 0.0);
      }
      if (&block == inner || block.parent == inner->parent) return 1;
      inner = &block;
    }
  }

  /// The constant argument with the letter, the nth of them.
  [[nodiscard]] double argument(const Instruction& form, const Statement& statement, char letter,
                                std::size_t nth = 0) const {
    std::size_t at = form.arguments.find(letter);
    while (nth-- > 0 && at != std::string_view::npos) at = form.arguments.find(letter, at + 1);
    if (at == std::string_view::npos) return 0;
    const double value = meaning_.fact(program_.expressions(statement)[at]).value;
    return value == value ? value : 0;
  }

  [[nodiscard]] bool detectsOpenSensor(const Instruction& form, const Statement& statement) const {
    const std::size_t at = form.arguments.find('r');
    if (at == std::string_view::npos) return false;
    const NameId range = meaning_.word(program_.expressions(statement)[at]);
    return range != noName && program_.spelling(range).ends_with('C');
  }

  /// Settling and integration, once more for each reversal and for each wire measured besides.
  [[nodiscard]] double channelMicros(const Instruction& form, const Statement& statement) const {
    const auto isOn = [&](std::size_t nth) { return argument(form, statement, 'b', nth) != 0; };
    const bool bridge = form.name.starts_with("Br");
    const bool reverses = form.inputs == Inputs::differential && isOn(bridge ? 1 : 0);
    const bool twice =
        form.name == "BrFull6W" || form.name == "BrHalf3W" || form.name == "BrHalf4W";
    const double once = std::max(argument(form, statement, 'S'), 0.0) +
                        std::max(argument(form, statement, 'I'), 0.0);
    return once * (reverses ? 2 : 1) * (bridge && isOn(0) ? 2 : 1) * (twice ? 2 : 1) +
           (detectsOpenSensor(form, statement) ? openSensorMicros : 0);
  }

  [[nodiscard]] double microsOf(const Instruction& form, const Statement& statement) const {
    const double repetitions = std::max(argument(form, statement, 'n'), 0.0);
    switch (form.inputs) {
      case Inputs::singleEnded:
      case Inputs::differential:
        return repetitions * channelMicros(form, statement);
      case Inputs::pulse:
        return repetitions * pulseMicros;
      case Inputs::filter:
        return repetitions * filterMicros;
      case Inputs::none:
        break;
    }
    return otherMicros(form, statement, repetitions);
  }

  [[nodiscard]] double otherMicros(const Instruction& form, const Statement& statement,
                                   double repetitions) const {
    if (form.name == "ModuleTemp")
      return repetitions * (argument(form, statement, 'I') + referenceSettleMicros);
    if (form.name == "PanelTemp") return panelMicros;
    if (form.name == "Battery")
      return argument(form, statement, 'k') == 0 ? batteryVoltsMicros : batteryCurrentMicros;
    if (form.name == "CANBus") return canItemMicros + canValueMicros * repetitions;
    if (form.name == "Excite") return excitationMicros + argument(form, statement, 'k', 1);
    if (form.name == "ReadIO" || form.name == "WriteIO" || form.name == "PortSet")
      return portMicros;
    return 0;
  }

  const Program& program_;
  Findings ignored_;
  Meaning meaning_;
  std::vector<ScanTimes> scans_;
  std::uint32_t scan_ = 0;
};

}  // namespace

std::vector<ScanTimes> scanTimes(const Program& program) { return Estimate(program).run(); }

}  // namespace logscript
