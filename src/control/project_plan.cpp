#include "control/project_plan.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <unordered_set>

#include "model/channel_plan.h"
#include "model/module_terminals.h"
#include "model/names.h"
#include "model/quantity_rules.h"
#include "model/table_rules.h"
#include "model/time_units.h"
#include "text/strings.h"
#include "timing/execution_interval.h"
#include "timing/measurement_times.h"

namespace control {
namespace {

using channels::PlannedChannel;
using model::BlockKind;
using model::MeasurementBlock;
using model::ModuleKindIndex;
using text::concat;

/// Level crossings need levels, which a plan does not have.
constexpr std::uint8_t plannableProcessings = 0x7F;

// ---- times

struct Interval {
  double number = 0;
  std::int16_t unit = 0;
};

/// The interval as a whole number of its unit or of a smaller one.
Interval inWholeUnits(double micros, std::int16_t unit) {
  for (; unit > 0; --unit) {
    const double number = micros / model::microsFrom(1, unit);
    if (number >= 1 && std::abs(number - std::round(number)) < 1e-9 * number)
      return {std::round(number), unit};
  }
  return {std::round(micros / model::microsFrom(1, 0)), 0};
}

constexpr std::int16_t longestUnit = 5;

/// The shortest interval of a unit that is no shorter than asked and a whole number of scans;
/// nothing when its number would be larger than a table takes.
std::optional<Interval> inWholeScans(double micros, double scan, std::int16_t unit) {
  const double one = model::microsFrom(1, unit);
  const auto common = static_cast<double>(std::gcd(std::llround(one), std::llround(scan)));
  const double step = scan / common;  // so many of the unit are a whole number of scans
  const double number = std::max(std::ceil(micros / one / step - 1e-9), 1.0) * step;
  const std::string text = text::shortest(number);
  if (model::clampedInterval(text, unit) != text) return std::nullopt;
  return Interval{number, unit};
}

/// The shortest of all units; the one that was asked for comes first.
Interval closestInWholeScans(double micros, double scan, std::int16_t unit) {
  Interval best{1, unit};
  double least = std::numeric_limits<double>::infinity();
  const auto consider = [&](std::int16_t each) {
    const auto found = inWholeScans(micros, scan, each);
    if (!found || model::microsFrom(found->number, each) >= least) return;
    best = *found;
    least = model::microsFrom(found->number, each);
  };
  for (std::int16_t each = unit; each >= 0; --each) consider(each);
  for (auto each = static_cast<std::int16_t>(unit + 1); each <= longestUnit; ++each) consider(each);
  return best;
}

std::string intervalText(double micros) {
  const Interval interval = inWholeUnits(micros, model::unitcode::seconds);
  return concat(model::trueNumber(interval.number, interval.unit), " ",
                KGEN_COMMON::TimeUnitName(interval.unit, false));
}

/// 1, 2 or 5 and zeros.
double roundUpward(double micros) {
  double decade = 1;
  while (decade * 10 < micros) decade *= 10;
  for (const double step : {1.0, 2.0, 5.0, 10.0})
    if (step * decade >= micros) return step * decade;
  return micros;
}

// ---- blocks

/// Channels that a block of a kind can have; those of one module, unless it runs over several.
std::size_t mostChannels(BlockKind kind, const MeasurementBlock& block) {
  switch (kind) {
    case BlockKind::highVoltage:
      return model::isDifferential(block) ? model::pairsOf7127 : model::channelsOf7127;
    case BlockKind::isolated:
      return model::channelsOf7128;
    case BlockKind::filter:
      return model::channelsOf7125;
    case BlockKind::pulse:
      return model::channelsOf7141;
    default:
      return model::maxElements;
  }
}

class Builder {
 public:
  Builder(const ProjectPlan& plan, const model::DefaultSettings& settings)
      : plan_(plan), out_{KGEN_COMMON::newProject(settings), {}, {}} {}

  PlannedProject run() {
    takeTableNames();
    chooseCpu();
    for (const BlockKind kind : model::allBlockKinds) addBlocks(kind);
    remarkOnTables();
    addModules();
    model::fitLists(project());
    chooseScan();
    for (std::size_t t = 0; t < tableCount(); ++t) addTable(t);
    return std::move(out_);
  }

 private:
  model::Project& project() { return out_.project; }
  void remark(PlanStep step, std::string text) { out_.remarks.push_back({step, std::move(text)}); }
  void obstacle(PlanStep step, std::string text) {
    out_.obstacles.push_back({step, std::move(text)});
  }

  [[nodiscard]] std::size_t tableCount() const {
    return std::min(plan_.tables.size(), model::maxTables);
  }

  // ---- channels

  [[nodiscard]] std::vector<const PlannedChannel*> listed(BlockKind kind) const {
    std::vector<const PlannedChannel*> found;
    for (const PlannedChannel& channel : plan_.list)
      if (channel.kind == kind) found.push_back(&channel);
    return found;
  }

  [[nodiscard]] std::size_t wanted(BlockKind kind) const {
    return std::max(plan_.channels[static_cast<std::size_t>(kind)], listed(kind).size());
  }

  void chooseCpu() {
    const bool needsK700X = wanted(BlockKind::isolated) > 0 || wanted(BlockKind::tcmux) > 0 ||
                            plannedModules(ModuleKindIndex::isolation7128) > 0;
    project().configuration.quantity(ModuleKindIndex::cpu) =
        plan_.cpu == 2 || needsK700X ? std::int16_t{2} : std::int16_t{1};
    if (needsK700X && plan_.cpu != 2)
      remark(PlanStep::logger, "the CPU is the 7104, which isolated and TCMUX channels need");
  }

  void addBlocks(BlockKind kind) {
    const std::vector<const PlannedChannel*> list = listed(kind);
    std::size_t left = wanted(kind), done = 0;
    const std::size_t limit = model::infoOf(kind).blockLimit;
    std::size_t number = 1;
    for (; left > 0 && number <= limit; ++number) {
      MeasurementBlock& block = project().block(kind, number);
      const std::size_t count = std::min(left, mostChannels(kind, block));
      const std::size_t named = std::min(list.size() - std::min(done, list.size()), count);
      fillBlock(kind, block, count, list.data() + std::min(done, list.size()), named);
      done += count;
      left -= count;
      countBlock(kind, number);
    }
    if (left > 0)
      obstacle(PlanStep::kinds,
               concat(wanted(kind), " ", model::infoOf(kind).name, " channels are more than ",
                      limit, " blocks hold; leave ", left, " out"));
  }

  /// Each filter block has a module of its own.
  void countBlock(BlockKind kind, std::size_t number) {
    project().set(kind).BlockCount = static_cast<std::int16_t>(number);
    if (kind == BlockKind::filter) project().filterSlots[number - 1].BlockCount = 1;
  }

  void fillBlock(BlockKind kind, MeasurementBlock& block, std::size_t count,
                 const PlannedChannel* const* list, std::size_t named) {
    block.Reps = static_cast<std::int16_t>(count);
    if (named > 0) setDefaults(kind, block, *list[0]);
    model::Element element = model::defaultElement(kind);
    element.AliasMult = block.DefaultMult;
    element.AliasOffset = block.DefaultOffset;
    element.AliasGFactor = block.GageFactor;
    for (std::size_t t = 0; t < tableCount(); ++t)
      element.Table[t] = plan_.tables[t].processings & plannableProcessings;
    block.elements.assign(count, element);
    for (std::size_t e = 0; e < named; ++e) {
      setChannel(kind, block, block.elements[e], *list[e]);
      setTables(block.elements[e], *list[e]);
    }
  }

  /// The first channel of a block is like the block.
  static void setDefaults(BlockKind kind, MeasurementBlock& block, const PlannedChannel& channel) {
    if (!model::complaintAboutUnits(channel.units) && !channel.units.empty())
      block.Units = channel.units;
    block.DefaultMult = channel.multiplier.value_or(block.DefaultMult);
    double& second = kind == BlockKind::bridge ? block.GageFactor : block.DefaultOffset;
    second = channel.offset.value_or(second);
  }

  void setChannel(BlockKind kind, const MeasurementBlock& block, model::Element& element,
                  const PlannedChannel& channel) {
    const bool fits = !model::complaintAboutAlias(channel.name) &&
                      (channel.name.empty() || names_.insert(text::lower(channel.name)).second);
    if (fits)
      element.AliasName = channel.name;
    else
      remark(PlanStep::list, concat("a ", model::infoOf(kind).name, " channel has no name: '",
                                    channel.name, "' is no name or another one's"));
    if (channel.units != block.Units && !model::complaintAboutUnits(channel.units))
      element.AliasUnits = channel.units;
    double& second = kind == BlockKind::bridge ? element.AliasGFactor : element.AliasOffset;
    const double mult = channel.multiplier.value_or(element.AliasMult);
    const double offset = channel.offset.value_or(second);
    element.AliasExcept = mult != element.AliasMult || offset != second;
    element.AliasMult = mult;
    second = offset;
  }

  /// What the list says of a table takes the place of what the table stores of all channels.
  void setTables(model::Element& element, const PlannedChannel& channel) {
    for (std::size_t t = 0; t < model::maxTables; ++t) {
      if (!channel.tables[t]) continue;
      element.Table[t] = *channel.tables[t] & plannableProcessings;
      if (element.Table[t] != *channel.tables[t]) crossings_ = true;
      if (t >= tableCount() && element.Table[t] != 0) surplus_ = std::max(surplus_, t + 1);
    }
  }

  void remarkOnTables() {
    if (crossings_)
      remark(PlanStep::list,
             "level crossings are left out: their levels are set up with the block");
    if (surplus_ > 0)
      remark(PlanStep::tables, concat("the list stores channels in table ", surplus_,
                                      ", which is off; plan so many tables"));
  }

  // ---- modules

  void addModules() {
    using enum ModuleKindIndex;
    model::LoggerConfiguration& configuration = project().configuration;
    constexpr std::size_t ofMultiplexer = model::channelsOfMultiplexer;
    configuration.TCMUXQty =
        static_cast<std::int16_t>((wanted(BlockKind::tcmux) + ofMultiplexer - 1) / ofMultiplexer);
    for (const ModuleKindIndex kind :
         {analog7121, excitation7131, counter7141, highVoltage7127, filter7125, isolation7128})
      takeModules(kind);
    configuration.quantity(adaptor7151) = plannedModules(adaptor7151);
    const int modules = userModules(configuration);
    if (modules > static_cast<int>(model::maxUserModules))
      obstacle(PlanStep::logger,
               concat("the logger needs ", modules, " modules, and a logger has room for ",
                      model::maxUserModules, "; leave some out"));
  }

  [[nodiscard]] std::int16_t plannedModules(ModuleKindIndex kind) const {
    return std::max<std::int16_t>(plan_.modules[static_cast<std::size_t>(kind)], 0);
  }

  void takeModules(ModuleKindIndex kind) {
    const auto needed = static_cast<std::int16_t>(modulesNeeded(project(), kind));
    const std::int16_t planned = plannedModules(kind);
    project().configuration.quantity(kind) = std::max(needed, planned);
    if (planned > 0 && needed > planned)
      remark(PlanStep::logger, concat("the channels need ", needed, " modules ", moduleName(kind),
                                      " in place of ", planned));
  }

  // ---- scan

  [[nodiscard]] double scan() { return model::scanMicros(project()); }

  void setScan(double micros, std::int16_t unit) {
    const Interval interval = inWholeUnits(micros, unit);
    project().scan.ExecutionTime = interval.number;
    project().scan.ExecTimeUnits = interval.unit;
  }

  void lengthenScan(double micros, std::string_view reason) {
    setScan(micros, project().scan.ExecTimeUnits);
    remark(PlanStep::logger, concat("the scan interval is ", intervalText(micros), reason));
  }

  void chooseScan() {
    const auto unit = std::clamp<std::int16_t>(plan_.scanUnits, 0, longestUnit);
    const double planned = model::microsFrom(plan_.scan, unit);
    setScan(planned > 0 ? planned : timing::shortestScanMicros, unit);
    const double longest = wanted(BlockKind::isolated) > 0 ? timing::longestIsolatedScanMicros
                                                           : timing::longestScanMicros;
    if (!(scan() <= longest)) lengthenScan(longest, ", the longest that there is");
    leaveSlowSequence();
    lengthenForMeasurements();
    lengthenForFilters();
  }

  /// Battery saver and self calibration run beside scans of up to 30 seconds.
  void leaveSlowSequence() {
    if (scan() <= timing::longestSlowSequenceScanMicros) return;
    bool* const options = project().configuration.MonitorPower.data();
    options[static_cast<std::size_t>(model::PowerOption::batterySaver)] = false;
    options[static_cast<std::size_t>(model::PowerOption::selfCalibration)] = false;
    remark(PlanStep::logger,
           "battery saver and self calibration are off, since the scan is longer than 30 seconds");
  }

  /// A longer scan may itself need more time, of isolated modules above all.
  void lengthenForMeasurements() {
    constexpr int mostRounds = 4;
    for (int round = 0; round < mostRounds; ++round) {
      double least = 0;
      for (const timing::ScanLimit& limit : timing::scanLimits(project(), channelPlan(project())))
        least = std::max(least, limit.leastMicros);
      if (scan() >= least) return;
      lengthenScan(roundUpward(least), ", which the measurements need");
    }
  }

  void lengthenForFilters() {
    double step = 0;
    for (const timing::FilterScan& filter : timing::filterScans(project()))
      step = std::max(step, static_cast<double>(filter.subscanMicros));
    if (step == 0 || std::fmod(scan(), step) == 0) return;
    lengthenScan(std::ceil(scan() / step) * step, ", a multiple of the samples of the filters");
  }

  // ---- tables

  /// Names of tables, the default ones included, come before those of channels.
  void takeTableNames() {
    for (const model::OutputTable& table : project().tables)
      names_.insert(text::lower(table.TableName));
    for (std::size_t t = 0; t < tableCount(); ++t) nameTable(t);
    if (plan_.tables.size() > model::maxTables)
      obstacle(PlanStep::tables, concat(plan_.tables.size(), " tables are more than the ",
                                        model::maxTables, " of a logger; leave some out"));
  }

  void nameTable(std::size_t t) {
    const std::string& wantedName = plan_.tables[t].name;
    model::OutputTable& table = project().tables[t];
    if (wantedName.empty() || text::equalsIgnoringCase(wantedName, table.TableName)) return;
    const std::string name = model::typedTableName(wantedName);
    const bool isPlain = name == wantedName && !model::complaintAboutAlias(name);
    if (isPlain && names_.insert(text::lower(name)).second)
      table.TableName = name;
    else
      remark(PlanStep::tables, concat("table ", t + 1, " keeps its name: '", wantedName,
                                      "' is no table name or another one's"));
  }

  void addTable(std::size_t t) {
    const PlannedTable& planned = plan_.tables[t];
    model::OutputTable& table = project().tables[t];
    table.TableOn = true;
    table.OutIntUnits = std::clamp<std::int16_t>(planned.units, 0, longestUnit);
    table.OutInt = model::clampedInterval(planned.interval, table.OutIntUnits);
    const double asked = KGEN_COMMON::OutputIntervalMicros(project(), table);
    const Interval fitting = closestInWholeScans(asked, scan(), table.OutIntUnits);
    const double micros = model::microsFrom(fitting.number, fitting.unit);
    if (micros == asked) return;
    table.OutInt = text::shortest(fitting.number);
    table.OutIntUnits = fitting.unit;
    remark(PlanStep::tables, concat("the interval of table ", t + 1, " is ", intervalText(micros),
                                    ", a multiple of the scan interval"));
  }

  const ProjectPlan& plan_;
  PlannedProject out_;
  std::unordered_set<std::string> names_;  // taken, in lower case
  bool crossings_ = false;                 // the list has some
  std::size_t surplus_ = 0;                // the highest table of the list that is not planned
};

}  // namespace

PlannedProject projectFrom(const ProjectPlan& plan, const model::DefaultSettings& settings) {
  return Builder(plan, settings).run();
}

}  // namespace control
