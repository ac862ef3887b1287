#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <optional>

#include "calculators/sensitivity.h"
#include "calculators/sensor_factors.h"
#include "calculators/speed.h"
#include "calculators/two_point.h"
#include "command.h"
#include "failure.h"
#include "parser.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/numbers.h"
#include "text/strings.h"

namespace kgen {
namespace {

using calculators::Result;

void checkNumber(std::string_view option, const std::string& value) {
  if (!text::isNumber(value))
    throw Failure(wrongUsage,
                  text::concat(option, ": '", value, "' is no number; write it like 12.5 or 1e-3"));
}

/// The same for an option that may be left out.
void checkOptional(std::string_view option, const std::string& value) {
  if (!value.empty()) checkNumber(option, value);
}

template <std::size_t N>
void checkGiven(std::string_view option, const std::array<std::string_view, N>& choices,
                const std::string& value) {
  if (!value.empty()) return;
  std::string list;
  for (const std::string_view choice : choices)
    list += text::concat(list.empty() ? "" : ", ", choice);
  throw Failure(wrongUsage, text::concat(option, " is required; choose one of ", list));
}

template <std::size_t N>
std::int16_t indexIn(const std::array<std::string_view, N>& choices, std::string_view value) {
  return static_cast<std::int16_t>(std::find(choices.begin(), choices.end(), value) -
                                   choices.begin());
}

template <std::size_t N>
Parser::Words wordsOf(const std::array<std::string_view, N>& choices) {
  return {choices.begin(), choices.end()};
}

/// The answer of a calculator: numbers, then the same as its window shows them.
class Answer {
 public:
  Answer() : json_(writeOut) { json_.openObject(); }

  void add(std::string_view name, const Result& result) {
    add(name, result, result ? std::optional(result->shown) : std::nullopt);
  }
  void add(std::string_view name, const Result& result, std::optional<std::string> shown) {
    json_.member(name, calculators::numberOf(result));
    shown_.emplace_back(name, std::move(shown));
    computed_ = computed_ || result;
  }
  /// A number that was given, beside those that are computed.
  void addGiven(std::string_view name, const Result& given) {
    json_.member(name, calculators::numberOf(given));
    shown_.emplace_back(name, given->shown);
  }
  void addText(std::string_view name, std::string_view value) { json_.member(name, value); }
  void add(const ports::Message& message) {
    json_.key("message");
    json_.openObject();
    json_.member("title", message.title);
    json_.member("text", message.text);
    json_.closeObject();
  }

  /// Ends the answer. When nothing could be computed, the advice says what to give.
  int finish(std::string_view advice) {
    json_.key("shown");
    json_.openObject();
    for (const auto& [name, shown] : shown_) {
      json_.key(name);
      if (shown)
        json_.value(*shown);
      else
        json_.value(std::numeric_limits<double>::quiet_NaN());  // null
    }
    json_.closeObject();
    json_.closeObject();
    json_.finish();
    if (!computed_) complain(text::concat("calc: nothing can be computed; ", advice));
    return done;
  }

 private:
  text::JsonWriter json_;
  std::vector<std::pair<std::string_view, std::optional<std::string>>> shown_;
  bool computed_ = false;
};

struct TwoPointOptions {
  model::TwoPointInputs inputs;
  std::string x, y;
};

int runTwoPoint(const TwoPointOptions& options) {
  const auto& [inputs, x, y] = options;
  checkNumber("--xmin", inputs.XMin);
  checkNumber("--xmax", inputs.XMax);
  checkNumber("--ymin", inputs.YMin);
  checkNumber("--ymax", inputs.YMax);
  checkOptional("--x", x);
  checkOptional("--y", y);
  if (!x.empty() && !y.empty())
    throw Failure(wrongUsage, "--x and --y: each gives the other; give one of them");
  const calculators::TwoPointLine line = calculators::lineThrough(inputs);
  Answer answer;
  answer.add("multiplier", line.multiplier);
  answer.add("offset", line.offset);
  if (!x.empty() || !y.empty()) {
    const auto probe =
        y.empty() ? calculators::probeAtX(inputs, x) : calculators::probeAtY(inputs, y);
    answer.add("x", probe.x);
    answer.add("y", probe.y);
  }
  return answer.finish("give --xmin and --xmax that differ");
}

Action prepareTwoPoint(Parser& parser) {
  const auto options = std::make_shared<TwoPointOptions>();
  parser.requiredOption("--xmin", "V", "Lowest sensor output", options->inputs.XMin);
  parser.requiredOption("--xmax", "V", "Highest sensor output", options->inputs.XMax);
  parser.requiredOption("--ymin", "V", "Lowest units output", options->inputs.YMin);
  parser.requiredOption("--ymax", "V", "Highest units output", options->inputs.YMax);
  parser.option("--x", "V", "What if: sensor output to give Y for", options->x);
  parser.option("--y", "V", "What if: units output to give X for", options->y);
  return [options] { return runTwoPoint(*options); };
}

constexpr std::array<std::string_view, 3> unknownNames = {"E", "U", "V"};

struct SensitivityOptions {
  model::SensitivityInputs inputs;
  calculators::SensitivityPanel panel;
  std::string excitation, solve;
};

void checkPanel(const SensitivityOptions& options) {
  const std::array<const std::string*, 3> boxes = {&options.panel.excitation, &options.panel.units,
                                                   &options.panel.output};
  for (std::size_t i = 0; i < boxes.size(); ++i)
    if (unknownNames[i] != options.solve && boxes[i]->empty())
      throw Failure(wrongUsage, text::concat("--solve ", options.solve, " needs --",
                                             text::lower(unknownNames[i])));
}

/// Adds the solution and answers with the excitation that the window now shows.
std::string addSolution(Answer& answer, const SensitivityOptions& options) {
  const auto unknown = static_cast<calculators::Unknown>(indexIn(unknownNames, options.solve));
  const auto solution = calculators::solvedFor(unknown, options.inputs, options.panel);
  answer.addText("formula", calculators::formulaOf(unknown));
  answer.add(options.solve, solution.value, solution.shown);
  return unknown == calculators::Unknown::excitation ? solution.shown : options.panel.excitation;
}

int runSensitivity(SensitivityOptions options) {
  checkNumber("--capacity", options.inputs.FullScale);
  checkNumber("--full-scale", options.inputs.mVPerV);
  checkOptional("--excitation", options.excitation);
  checkOptional("--e", options.panel.excitation);
  checkOptional("--u", options.panel.units);
  checkOptional("--v", options.panel.output);
  if (options.panel.excitation.empty()) options.panel.excitation = options.excitation;
  if (!options.solve.empty()) checkPanel(options);
  Answer answer;
  answer.add("multiplier", calculators::sensitivityMultiplier(options.inputs));
  std::string excitation = options.panel.excitation;
  if (!options.excitation.empty())
    answer.addGiven("excitation", calculators::shownExcitation(options.excitation));
  if (!options.solve.empty()) excitation = addSolution(answer, options);
  if (const auto question = calculators::questionAboutExcitation(excitation)) answer.add(*question);
  return answer.finish("give a --full-scale other than 0");
}

Action prepareSensitivity(Parser& parser) {
  const auto options = std::make_shared<SensitivityOptions>();
  parser.requiredOption("--capacity", "V", "Full scale rated capacity, in units",
                        options->inputs.FullScale);
  parser.requiredOption("--full-scale", "V", "Full scale output in mV/V", options->inputs.mVPerV);
  parser.option("--excitation", "MV", "Excitation in mV", options->excitation);
  parser.choice("--solve", wordsOf(unknownNames),
                "What if: solve for excitation E, units U or sensor output V", options->solve);
  parser.option("--e", "MV", "What if: excitation in mV; --excitation unless given",
                options->panel.excitation);
  parser.option("--u", "V", "What if: units", options->panel.units);
  parser.option("--v", "MV", "What if: sensor output in mV", options->panel.output);
  return [options] { return runSensitivity(*options); };
}

constexpr std::array<std::string_view, 2> resistanceUnits = {"Ohms", "kOhms"};

int runResistance(const model::ResistanceInputs& inputs) {
  checkNumber("--ohms", inputs.RsOhms);
  checkGiven("--units", resistanceUnits, inputs.Units);
  Answer answer;
  answer.add("multiplier", calculators::resistanceMultiplier(inputs));
  answer.addText("units", inputs.Units);
  return answer.finish("give --ohms");
}

Action prepareResistance(Parser& parser) {
  const auto inputs = std::make_shared<model::ResistanceInputs>();
  parser.requiredOption("--ohms", "V", "Value of Rf in Ohms", inputs->RsOhms);
  parser.choice("--units", wordsOf(resistanceUnits), "Units of the output", inputs->Units);
  return [inputs] { return runResistance(*inputs); };
}

int runRpm(const model::RpmInputs& inputs) {
  checkNumber("--pulses", inputs.Pulses);
  checkOptional("--per-second", inputs.WhatIf);
  Answer answer;
  answer.add("multiplier", calculators::rpmMultiplier(inputs));
  if (!inputs.WhatIf.empty()) answer.add("rpm", calculators::rpmAtExample(inputs));
  return answer.finish("give --pulses other than 0");
}

Action prepareRpm(Parser& parser) {
  const auto inputs = std::make_shared<model::RpmInputs>();
  parser.requiredOption("--pulses", "N", "Pulses per revolution from the sensor", inputs->Pulses);
  parser.option("--per-second", "V", "What if: pulses per second to give the RPM for",
                inputs->WhatIf);
  return [inputs] { return runRpm(*inputs); };
}

constexpr std::array<std::string_view, 2> volumes = {"gallon", "liter"};
constexpr std::array<std::string_view, 3> times = {"sec", "min", "hour"};

struct FlowOptions {
  std::string factor, per, out, time;
};

int runFlow(const FlowOptions& options) {
  checkNumber("--factor", options.factor);
  checkGiven("--per", volumes, options.per);
  checkGiven("--out", volumes, options.out);
  checkGiven("--time", times, options.time);
  const model::FlowInputs inputs{options.factor, indexIn(volumes, options.per),
                                 indexIn(volumes, options.out), indexIn(times, options.time), ""};
  Answer answer;
  answer.add("multiplier", calculators::flowMultiplier(inputs));
  answer.addText("units", calculators::flowUnits(inputs));
  return answer.finish("give a --factor above 0");
}

Action prepareFlow(Parser& parser) {
  const auto options = std::make_shared<FlowOptions>();
  parser.requiredOption("--factor", "V", "Calibration factor in pulses per volume",
                        options->factor);
  parser.choice("--per", wordsOf(volumes), "Volume of the factor", options->per);
  parser.choice("--out", wordsOf(volumes), "Volume of the output", options->out);
  parser.choice("--time", wordsOf(times), "Time of the output", options->time);
  return [options] { return runFlow(*options); };
}

constexpr std::array<std::string_view, 3> sizeNames = {"circumference", "diameter", "radius"};
constexpr std::array<std::string_view, 2> measures = {"inch", "cm"};

calculators::SpeedUnit unitNamed(std::string_view name) {
  return static_cast<calculators::SpeedUnit>(indexIn(calculators::speedUnitNames, name));
}

void addSpeed(Answer& answer, const calculators::SpeedScaling& scaling,
              calculators::SpeedUnit unit) {
  answer.add("cmPerPulse", scaling.cmPerPulse);
  answer.add("inchesPerPulse", scaling.inchesPerPulse);
  answer.add("pulsesPerKm", scaling.pulsesPerKm);
  answer.add("pulsesPerMile", scaling.pulsesPerMile);
  answer.add("multiplier", scaling.multiplier);
  answer.addText("units", calculators::nameOf(unit));
}

struct SpeedOptions {
  model::SpeedInputs inputs;
  std::string as, measure, out;
};

int runSpeed(SpeedOptions options) {
  model::SpeedInputs& inputs = options.inputs;
  checkNumber("--pulses", inputs.RevSpeed);
  checkNumber("--wheel", inputs.WheelSize);
  for (const std::string& gear : inputs.GearRatio) checkNumber("--gear", gear);
  checkGiven("--as", sizeNames, options.as);
  checkGiven("--measure", measures, options.measure);
  checkGiven("--out", calculators::speedUnitNames, options.out);
  inputs.SizeOption = indexIn(sizeNames, options.as);
  inputs.MKSSpd = indexIn(measures, options.measure);
  setSpeedUnit(inputs, unitNamed(options.out));
  Answer answer;
  addSpeed(answer, calculators::speedScaling(inputs), calculators::speedUnit(inputs));
  return answer.finish("give --pulses, --gear and --wheel above 0");
}

Action prepareSpeed(Parser& parser) {
  const auto options = std::make_shared<SpeedOptions>();
  parser.requiredOption("--pulses", "N", "Pulses per revolution of the shaft",
                        options->inputs.RevSpeed);
  parser.repeated("--gear", "R", "Turns of a gear box; may be repeated", options->inputs.GearRatio);
  parser.requiredOption("--wheel", "V", "Size of the wheel", options->inputs.WheelSize);
  parser.choice("--as", wordsOf(sizeNames), "What the size is", options->as);
  parser.choice("--measure", wordsOf(measures), "Unit of the size", options->measure);
  parser.choice("--out", wordsOf(calculators::speedUnitNames), "Unit of the speed", options->out);
  return [options] { return runSpeed(*options); };
}

constexpr std::array<std::string_view, 2> distances = {"mile", "km"};

struct MoreSpeedOptions {
  model::MoreSpeedInputs inputs;
  std::string per, out;
};

int runMoreSpeed(MoreSpeedOptions options) {
  model::MoreSpeedInputs& inputs = options.inputs;
  checkNumber("--pulses", inputs.InPulses);
  checkGiven("--per", distances, options.per);
  checkGiven("--out", calculators::speedUnitNames, options.out);
  inputs.InSystem = indexIn(distances, options.per);
  setSpeedUnit(inputs, unitNamed(options.out));
  Answer answer;
  addSpeed(answer, calculators::speedScaling(inputs), calculators::speedUnit(inputs));
  return answer.finish("give --pulses above 0");
}

Action prepareMoreSpeed(Parser& parser) {
  const auto options = std::make_shared<MoreSpeedOptions>();
  parser.requiredOption("--pulses", "V", "Pulses over the distance", options->inputs.InPulses);
  parser.choice("--per", wordsOf(distances), "The distance", options->per);
  parser.choice("--out", wordsOf(calculators::speedUnitNames), "Unit of the speed", options->out);
  return [options] { return runMoreSpeed(*options); };
}

constexpr Command calcCommands[] = {
    {"multoff", "Multiplier and offset from two points, as JSON", prepareTwoPoint},
    {"pot", "Multiplier and offset of a potentiometer, as JSON", prepareTwoPoint},
    {"mvperv", "Multiplier of a bridge sensor, as JSON", prepareSensitivity},
    {"rs", "Multiplier of a resistance, as JSON", prepareResistance},
    {"rpm", "Multiplier of revolutions per minute, as JSON", prepareRpm},
    {"flow", "Multiplier of a flow sensor, as JSON", prepareFlow},
    {"speed", "Multiplier of a speed from a wheel, as JSON", prepareSpeed},
    {"morespeed", "Multiplier of a speed from pulses over a distance, as JSON", prepareMoreSpeed},
};

}  // namespace

Action prepareCalc(Parser& parser) { return parser.commands(calcCommands); }

}  // namespace kgen
