#include <array>
#include <charconv>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "command.h"
#include "disk_files.h"
#include "failure.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"
#include "timing/filter_order.h"

namespace kgen {
namespace {

using nlohmann::json;
using text::concat;

struct PlanOptions {
  std::string scan, integration, order, batch;
  std::string scansPerSubScan;
  bool openTC = false;
  bool reversal = false;

  [[nodiscard]] bool asksForOnePlan() const {
    return openTC || reversal ||
           !(scan.empty() && integration.empty() && order.empty() && scansPerSubScan.empty());
  }
};

/// The arguments of one call of the planner.
struct Step {
  std::int32_t ScanInterval = 0;
  std::int32_t IntegTime = 0;
  bool OpenTC = false;
  bool InputRev = false;
  std::int16_t ScansPerSubScan = 1;
};

struct Fault {
  std::string source, description;
};

/// What the planner said during one call, on either way.
class Recorder final : public ports::MessageService, public ports::ErrorReporter {
 public:
  ports::Answer show(const ports::Message& message) override {
    messages.push_back(message);
    return message.defaultButton;
  }
  void report(int, std::string_view description, std::string_view source) override {
    faults.push_back({std::string(source), std::string(description)});
  }

  std::vector<ports::Message> messages;
  std::vector<Fault> faults;
};

// ---- results

/// The fewest digits that read back to the same single.
double shortestDecimal(float single) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.begin(), digits.end(), single).ptr;
  double decimal = 0;
  std::from_chars(digits.begin(), end, decimal);
  return decimal;
}

void writeProperty(text::JsonWriter& out, const char* name, bool value) { out.member(name, value); }
void writeProperty(text::JsonWriter& out, const char* name, float value) {
  out.member(name, shortestDecimal(value));
}
template <std::integral Int>
void writeProperty(text::JsonWriter& out, const char* name, Int value) {
  out.member(name, static_cast<std::int64_t>(value));
}

void writeLines(text::JsonWriter& out, std::string_view text) {
  constexpr std::string_view lineBreak = "\r\n";
  out.key("lines");
  out.openArray();
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = text.find(lineBreak);
    out.value(text.substr(0, end));
    if (end != std::string_view::npos) text.remove_prefix(end + lineBreak.size());
  }
  out.closeArray();
}

void writeMessages(text::JsonWriter& out, const std::vector<ports::Message>& messages) {
  out.key("messages");
  out.openArray();
  for (const ports::Message& message : messages) {
    out.openObject();
    out.member("title", message.title);
    writeLines(out, message.text);
    out.closeObject();
  }
  out.closeArray();
}

void writeFaults(text::JsonWriter& out, const std::vector<Fault>& faults) {
  if (faults.empty()) return;
  out.key("faults");
  out.openArray();
  for (const Fault& fault : faults) {
    out.openObject();
    out.member("source", fault.source);
    out.member("description", fault.description);
    out.closeObject();
  }
  out.closeArray();
}

/// One planner and what it hears; a step more with every call.
class PlannerRun {
 public:
  explicit PlannerRun(text::JsonWriter& out) : out_(out) {}

  void take(Step step) {
    recorder_.messages.clear();
    recorder_.faults.clear();
    const std::int32_t result = planner_.CalcFOrderOrIntTime(
        step.ScanInterval, step.IntegTime, step.OpenTC, step.InputRev, step.ScansPerSubScan);
    out_.openObject();
    out_.member("result", result);
    out_.member("ScansPerSubScan", step.ScansPerSubScan);
    writeMessages(out_, recorder_.messages);
    writeFaults(out_, recorder_.faults);
    out_.key("properties");
    out_.openObject();
    timing::visitProperties(
        planner_, [this](const char* name, auto value) { writeProperty(out_, name, value); });
    out_.closeObject();
    out_.closeObject();
  }

 private:
  text::JsonWriter& out_;
  Recorder recorder_;
  timing::cFilterOrder planner_{recorder_, recorder_};
};

// ---- one call

template <std::integral Int>
Int wholeNumber(std::string_view option, const std::string& value, Int low) {
  Int number = 0;
  const char* end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, number);
  if (error != std::errc{} || stop != end || number < low)
    throw Failure(wrongUsage, concat(option, ": '", value, "' is no whole number from ", low,
                                     " to ", std::numeric_limits<Int>::max()));
  return number;
}

constexpr std::int32_t anyNumber = std::numeric_limits<std::int32_t>::min();

Step stepFrom(const PlanOptions& options) {
  if (options.scan.empty())
    throw Failure(wrongUsage, "plan: --scan is required; or name a file with --batch");
  if (options.integration.empty() == options.order.empty())
    throw Failure(wrongUsage, "plan: give --integration or --order, one of them");
  Step step;
  step.ScanInterval = wholeNumber("--scan", options.scan, anyNumber);
  step.IntegTime = options.order.empty()
                       ? wholeNumber("--integration", options.integration, anyNumber)
                       : -wholeNumber("--order", options.order, std::int32_t{0});
  step.OpenTC = options.openTC;
  step.InputRev = options.reversal;
  if (!options.scansPerSubScan.empty())
    step.ScansPerSubScan = wholeNumber("--scans-per-subscan", options.scansPerSubScan,
                                       std::numeric_limits<std::int16_t>::min());
  return step;
}

int runSingle(const PlanOptions& options) {
  const Step step = stepFrom(options);
  text::JsonWriter out(writeOut);
  PlannerRun(out).take(step);
  out.finish();
  return done;
}

// ---- batch

/// What is wrong with a line; who reads it knows which.
class BadLine : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

void take(const json& value, bool& target) {
  if (!value.is_boolean()) throw BadLine("true or false is needed");
  target = value.get<bool>();
}

template <std::integral Int>
void take(const json& value, Int& target) {
  constexpr auto low = std::numeric_limits<Int>::min();
  constexpr auto high = std::numeric_limits<Int>::max();
  const bool fits = value.is_number_unsigned()
                        ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(high)
                        : value.is_number_integer() && value.get<std::int64_t>() >= low;
  if (!fits) throw BadLine(concat("a whole number from ", low, " to ", high, " is needed"));
  target = value.get<Int>();
}

void takeMember(const std::string& name, const json& value, Step& step) {
  if (name == "ScanInterval") return take(value, step.ScanInterval);
  if (name == "IntegTime") return take(value, step.IntegTime);
  if (name == "OpenTC") return take(value, step.OpenTC);
  if (name == "InputRev") return take(value, step.InputRev);
  if (name == "ScansPerSubScan") return take(value, step.ScansPerSubScan);
  throw BadLine(
      "no such argument; choose ScanInterval, IntegTime, OpenTC, InputRev or ScansPerSubScan");
}

Step stepFrom(const json& object) {
  if (!object.is_object()) throw BadLine("an object is needed");
  Step step;
  for (const auto& [name, value] : object.items()) {
    try {
      takeMember(name, value, step);
    } catch (const BadLine& fault) {
      throw BadLine(concat(name, ": ", fault.what()));
    }
  }
  for (const char* name : {"ScanInterval", "IntegTime"})
    if (!object.contains(name)) throw BadLine(concat(name, " is missing; add it"));
  return step;
}

json parsedLine(std::string_view line) {
  try {
    return json::parse(line);
  } catch (const json::parse_error& error) {
    throw BadLine(
        concat("no JSON at column ", error.byte, "; write one object {\"steps\":[...]} a line"));
  } catch (const json::exception&) {
    throw BadLine("a number is out of range; mend it");
  }
}

/// All steps of a line, read before the first is planned: a bad line gives no output.
std::vector<Step> stepsIn(std::string_view line) {
  const json document = parsedLine(line);
  const bool known = document.is_object() && document.size() == 1 && document.contains("steps") &&
                     document["steps"].is_array();
  if (!known) throw BadLine("write one object {\"steps\":[...]} a line");
  std::vector<Step> steps;
  for (const json& object : document["steps"]) {
    try {
      steps.push_back(stepFrom(object));
    } catch (const BadLine& fault) {
      throw BadLine(concat("step ", steps.size() + 1, ": ", fault.what()));
    }
  }
  return steps;
}

/// Gathers short pieces into few writes.
class GatheredOutput {
 public:
  void add(std::string_view piece) {
    constexpr std::size_t enough = 1U << 16U;
    gathered_ += piece;
    if (gathered_.size() >= enough) flush();
  }
  void flush() {
    writeOut(gathered_);
    gathered_.clear();
  }

 private:
  std::string gathered_;
};

void planLine(std::string_view line, GatheredOutput& output) {
  const std::vector<Step> steps = stepsIn(line);
  text::JsonWriter out([&output](std::string_view piece) { output.add(piece); });
  out.openObject();
  out.key("steps");
  out.openArray();
  PlannerRun run(out);
  for (const Step& step : steps) run.take(step);
  out.closeArray();
  out.closeObject();
  out.finish();
}

std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

int runBatch(const std::string& file) {
  const std::string content = readAll(file);
  GatheredOutput output;
  std::string_view rest = content;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::string_view line = takeLine(rest);
    if (text::trimmed(line).empty()) continue;
    try {
      planLine(line, output);
    } catch (const BadLine& fault) {
      output.flush();
      throw Failure(inputUnreadable, concat(shownName(file), ":", number, ": ", fault.what()));
    }
  }
  output.flush();
  return done;
}

int runPlan(const PlanOptions& options) {
  if (options.batch.empty()) return runSingle(options);
  if (options.asksForOnePlan())
    throw Failure(wrongUsage, "plan: --batch takes all arguments from its file; leave out others");
  return runBatch(options.batch);
}

}  // namespace

Action preparePlan(Parser& parser) {
  const auto options = std::make_shared<PlanOptions>();
  parser.option("--scan", "US", "Main scan interval in microseconds", options->scan);
  parser.option("--integration", "US", "Integration time in microseconds; gives the filter order",
                options->integration);
  parser.option("--order", "N", "Filter order 1 to 5; gives the integration time", options->order);
  parser.flag("--open-tc", "Check for open thermocouples before each measurement", options->openTC);
  parser.flag("--reversal", "Measure twice with reversed input", options->reversal);
  parser.option("--scans-per-subscan", "N", "Main scans per subscan; 1 unless said otherwise",
                options->scansPerSubScan);
  parser.option("--batch", "FILE",
                "Plan every line of a file, {\"steps\":[{\"ScanInterval\":..,\"IntegTime\":..}]}, "
                "- for standard input",
                options->batch);
  return [options] { return runPlan(*options); };
}

}  // namespace kgen
