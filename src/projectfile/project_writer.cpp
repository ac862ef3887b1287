#include "projectfile/project_writer.h"

#include <algorithm>

#include "model/channel_plan.h"
#include "projectfile/line_writer.h"
#include "projectfile/rows.h"
#include "text/numbers.h"

namespace projectfile {
namespace {

using model::BlockKind;

/// Numbers from 1 to a count, with the items that they stand for.
template <class List, class Act>
void eachNumbered(const List& list, std::size_t count, Act&& act) {
  for (std::size_t i = 0; i < std::min(count, list.size()); ++i) act(i + 1, list[i]);
}
template <class List, class Act>
void eachNumbered(const List& list, Act&& act) {
  eachNumbered(list, list.size(), std::forward<Act>(act));
}

std::size_t sizeFrom(std::int16_t count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

template <class List, class Item>
bool allAre(const List& list, const Item& usual) {
  for (const Item& item : list)
    if (!(item == usual)) return false;
  return true;
}

/// What is filed of a group that differs from a new one: the side that it uses.
bool saysSomething(const model::PortGroup& group) {
  model::PortGroup filed = group;
  const model::PortGroup usual;
  if (!group.ReadMode) {
    filed.HistogramCode = usual.HistogramCode;
    filed.Table = usual.Table;
  }
  for (model::Port& port : filed.ports) {
    if (group.ReadMode)
      port = {port.Include, 0, port.BinaryMask, {}};
    else
      port.BinaryMask = 0;
  }
  return !(filed == usual);
}

/// The sections in their order. Each function writes one.
class SectionWriter {
 public:
  SectionWriter(const model::Project& project, const LineStyle& style)
      : project_(project), totals_(model::channelPlan(project).totals), out_(style) {}

  std::string all(const SaveMarks& marks);

 private:
  void version(const SaveMarks& marks);
  void configuration();
  void scan();
  void tables();
  void table(std::size_t number, const model::OutputTable& table);
  void triggers(std::size_t number, const model::OutputTable& table, int trigger,
                std::string_view prefix);
  void writeIfs(std::size_t number, const model::OutputTable& table);
  void powerOut();
  void reference(std::string_view header, const model::ReferenceTemperature& reference,
                 bool withCodes);
  void blocks(BlockKind kind);
  void kindSettings(BlockKind kind);
  void filterSlots();
  void block(BlockKind kind, std::size_t number);
  void processing(const model::TableProcessing& processing, std::string_view prefix,
                  std::size_t first, std::size_t table);
  void levels(const Row<double>& row, const std::vector<double>& levels, std::int16_t count,
              std::string_view prefix, std::size_t first, std::size_t table);
  void ports();
  void outputPorts(std::size_t number, const model::PortGroup& group);
  void inputPorts(std::size_t number, const model::PortGroup& group);
  void flags();
  void excitation();
  void excitationChannel(std::size_t number, const model::ExcitationChannel& channel);
  void can();
  void canItem(std::size_t number, const model::CanItem& item);
  void calculators();
  template <class Rows, class Inputs>
  void calculator(std::string_view header, const Rows& rows, const Inputs& inputs);
  void calculatedFields();
  void fieldDefinitions();

  const model::Project& project_;
  model::ChannelTotals totals_;
  LineWriter out_;
};

/// Growing the text costs more than writing it, so that its size is guessed first.
std::size_t likelySize(const model::Project& project) {
  constexpr std::size_t bytesPerElement = 280, bytesPerBlock = 3000, others = 32UL * 1024;
  std::size_t size = others;
  for (const BlockKind kind : model::allBlockKinds)
    for (std::size_t b = 1; b <= model::blockCount(project, kind); ++b)
      size += bytesPerBlock + bytesPerElement * project.block(kind, b).elements.size();
  return size;
}

std::string SectionWriter::all(const SaveMarks& marks) {
  out_.reserve(likelySize(project_));
  version(marks);
  configuration();
  scan();
  tables();
  powerOut();
  const auto has = [this](BlockKind kind) { return model::blockCount(project_, kind) > 0; };
  if (has(BlockKind::tcmux)) reference(tcmuxReferenceHeader, project_.tcmuxReference, true);
  blocks(BlockKind::tcmux);
  // Codes of the thermocouple reference are written only when they say something.
  const model::ReferenceTemperature usual;
  const auto& reference7121 = project_.tcReference;
  if (has(BlockKind::thermocouple))
    reference(tcReferenceHeader, reference7121,
              reference7121.HistogramCode != usual.HistogramCode ||
                  reference7121.RainCode != usual.RainCode);
  blocks(BlockKind::thermocouple);
  blocks(BlockKind::voltage);
  blocks(BlockKind::highVoltage);
  if (has(BlockKind::isolated)) reference(isoReferenceHeader, project_.isoReference, true);
  for (const BlockKind kind :
       {BlockKind::isolated, BlockKind::bridge, BlockKind::pulse, BlockKind::filter})
    blocks(kind);
  ports();
  flags();
  excitation();
  can();
  calculators();
  calculatedFields();
  return out_.take();
}

void SectionWriter::version(const SaveMarks& marks) {
  out_.header(versionHeader);
  model::LoggerConfiguration shown;
  shown.Version = filedVersion(project_.configuration);
  shown.VersionLastSaved = marks.VersionLastSaved;
  shown.PCTime = marks.PCTime;
  out_.lines(versionRows, shown);
  out_.emptyLine();
}

void SectionWriter::configuration() {
  const model::LoggerConfiguration& configuration = project_.configuration;
  out_.header(configurationHeader);
  out_.lines(identityRows, configuration);
  eachNumbered(configuration.ModuleQty, [&](std::size_t n, std::int16_t quantity) {
    if (quantity != 0) out_.lines(quantityRow, quantity, indexText({n}));
  });
  out_.lines(extraModuleRows, configuration);
  eachNumbered(configuration.MonitorPower,
               [&](std::size_t n, bool on) { out_.lines(monitorRow, on, indexText({n - 1})); });
  eachNumbered(configuration.TcConfigOpts, [&](std::size_t n, std::int16_t option) {
    out_.lines(optionRow, option, indexText({n - 1}));
  });
  out_.lines(powerRows, configuration);
  eachNumbered(configuration.Status, sizeFrom(configuration.StatusMonCount),
               [&](std::size_t i, const model::StatusLine& line) {
                 eachNumbered(line, [&](std::size_t j, const std::string& text) {
                   out_.lines(statusRow, text, indexText({i, j}));
                 });
               });
  out_.emptyLine();
}

void SectionWriter::scan() {
  out_.header(scanHeader);
  out_.lines(scanRows, project_.scan);
  out_.lines(totalRows, totals_);
  out_.lines(scanEndRows, project_.scan);
  out_.emptyLine();
}

void SectionWriter::tables() {
  out_.header(tableHeader);
  out_.lines(displayRow, project_);
  eachNumbered(project_.tables,
               [this](std::size_t i, const model::OutputTable& t) { table(i, t); });
  out_.emptyLine();
}

void SectionWriter::table(std::size_t number, const model::OutputTable& table) {
  const std::string index = indexText({number});
  out_.lines(tableRows, table, index);
  triggers(number, table, 0, "Start");
  model::OutputTable counts;  // a stop count that is negative stands for the start count
  counts.TrigTabStop = table.TrigTabStop < 0 ? table.TrigTable : table.TrigTabStop;
  out_.lines(stopCountRow, counts, index);
  triggers(number, table, 1, "Stop");
  const std::string open = index.substr(0, index.size() - 1);
  out_.lines(startTextRow, table, open + " Start)");
  out_.lines(stopTextRow, table, open + " Stop)");
  out_.lines(tableEventRows, table, index);
  writeIfs(number, table);
  out_.lines(tableEndRows, table, index);
}

void SectionWriter::triggers(std::size_t number, const model::OutputTable& table, int trigger,
                             std::string_view prefix) {
  const bool asStart = trigger == 0 || table.TrigTabStop < 0;
  const std::size_t count = sizeFrom(asStart ? table.TrigTable : table.TrigTabStop);
  for (std::size_t c = 1; c <= std::min(count, model::maxConditions); ++c) {
    const int condition = static_cast<int>(c);
    const auto& conditions = table.conditions;
    // The condition number follows the table number without a break, from the second one on.
    const std::string index = c == 1 ? indexText({number}) : indexText({number, c}, "");
    out_.lines(triggerRows, conditions.trigger(trigger, condition), index, prefix);
    out_.lines(logicRow, conditions.TriggerLogic(trigger, condition), index, prefix);
    out_.lines(triggerExpressionRow, conditions.trigger(trigger, condition), index, prefix);
  }
}

void SectionWriter::writeIfs(std::size_t number, const model::OutputTable& table) {
  const std::size_t count = std::min(sizeFrom(table.WriteIf), model::maxConditions);
  for (std::size_t c = 1; c <= count; ++c)
    out_.lines(writeIfRows, table.conditions.writeIf(static_cast<int>(c)),
               count == 1 ? indexText({number}) : indexText({number, c}, ", "));
}

void SectionWriter::powerOut() {
  const model::PowerOutTables& power = project_.powerOut;
  out_.header(powerOutHeader);
  eachNumbered(power.sets, [this](std::size_t n, const model::PowerOutSet& set) {
    out_.lines(powerSetRows, set, n == 1 ? "1" : "2");
  });
  for (std::size_t t = 1; t <= model::maxTables; ++t) {
    if (!project_.tables[t - 1].TableOn) continue;
    eachNumbered(power.sets, [&](std::size_t n, const model::PowerOutSet& set) {
      out_.lines(maskRow, set.Table[t - 1], indexText({n, t}));
    });
  }
  for (std::size_t t = 1; t <= model::maxTables; ++t) {
    out_.lines(histogramRow, power.HistogramCode[t - 1], indexText({t}));
    out_.lines(rainHistogramRow, power.RainHistoCode[t - 1], indexText({t}));
  }
  out_.emptyLine();
}

void SectionWriter::reference(std::string_view header, const model::ReferenceTemperature& reference,
                              bool withCodes) {
  out_.header(header);
  out_.lines(referenceRows, reference);
  eachNumbered(reference.Table, [this](std::size_t t, std::uint8_t mask) {
    out_.lines(maskRow, mask, indexText({t}));
  });
  for (std::size_t t = 1; withCodes && t <= model::maxTables; ++t) {
    out_.lines(histogramRow, reference.HistogramCode[t - 1], indexText({t}));
    out_.lines(rainRow, reference.RainCode[t - 1], indexText({t}));
  }
  out_.emptyLine();
}

void SectionWriter::blocks(BlockKind kind) {
  const std::size_t count = model::blockCount(project_, kind);
  if (count == 0) return;
  out_.header(model::infoOf(kind).section);
  kindSettings(kind);
  for (std::size_t b = 1; b <= count; ++b) block(kind, b);
  out_.emptyLine();
}

void SectionWriter::kindSettings(BlockKind kind) {
  if (kind == BlockKind::filter) return filterSlots();
  model::BlockSet counted;
  counted.BlockCount = static_cast<std::int16_t>(model::blockCount(project_, kind));
  out_.lines(blockCountRow, counted);
  const std::int32_t singleEnded = totals_.SEChannelCount[static_cast<std::size_t>(kind)];
  if (countsSingleEnded(kind)) out_.lines(singleEndedRow, singleEnded);
  if (kind == BlockKind::bridge) out_.lines(bridgeTotalRows, totals_);
  if (kind == BlockKind::isolated) out_.lines(isolatedRows, project_.isolated);
}

void SectionWriter::filterSlots() {
  const int modules = project_.configuration.quantity(model::ModuleKindIndex::filter7125);
  std::size_t last = modules > 0 ? static_cast<std::size_t>(modules) : 0;
  eachNumbered(project_.filterSlots, [&last](std::size_t s, const model::FilterSlot& slot) {
    if (slot.BlockCount > 0) last = std::max(last, s);
  });
  eachNumbered(project_.filterSlots, last, [this](std::size_t s, const model::FilterSlot& slot) {
    out_.lines(slotCountRow, slot, indexText({s}));
    out_.lines(slotRows, slot, indexText({s}));
  });
}

void SectionWriter::block(BlockKind kind, std::size_t number) {
  const model::MeasurementBlock& block = project_.block(kind, number);
  out_.lines(settingsOf(kind), block, indexText({number}));
  eachNumbered(block.processing, [&](std::size_t t, const model::TableProcessing& table) {
    processing(table, model::infoOf(kind).levelPrefix, number, t);
  });
  for (std::size_t t = 1; t <= model::maxTables; ++t)
    out_.maskLines(maskRow[0].key, number, t, block.elements);
  out_.elementLines(aliasesOf(kind), number, block.elements);
}

void SectionWriter::processing(const model::TableProcessing& processing, std::string_view prefix,
                               std::size_t first, std::size_t table) {
  const std::string index = indexText({first, table});
  out_.lines(processingRows, processing, index);
  out_.lines(levelRows, processing, index, prefix);
  levels(firstLevelRow[0], processing.LevelVarOne, processing.LevNumLevels, prefix, first, table);
  out_.lines(testCountRow, processing, index, prefix);
  levels(secondLevelRow[0], processing.LevelVarTwo, processing.LevNumTests, prefix, first, table);
  out_.lines(dimensionRow, processing, index, prefix);
}

void SectionWriter::levels(const Row<double>& row, const std::vector<double>& levels,
                           std::int16_t count, std::string_view prefix, std::size_t first,
                           std::size_t table) {
  eachNumbered(levels, sizeFrom(count), [&](std::size_t k, double level) {
    out_.line(row, level, indexText({first, table, k}), prefix);
  });
}

/// Optional sections are written when they say more than a new project does.
void SectionWriter::ports() {
  const model::PortSetup& ports = project_.ports;
  const bool usual = std::none_of(ports.groups.begin(), ports.groups.end(), saysSomething);
  if (usual && ports.CodeType == model::PortSetup{}.CodeType) return;
  out_.header(portHeader);
  out_.lines(portSetupRows, ports);
  eachNumbered(ports.groups, [this](std::size_t p, const model::PortGroup& group) {
    out_.lines(portGroupRows, group, indexText({p}));
    group.ReadMode ? inputPorts(p, group) : outputPorts(p, group);
  });
  out_.emptyLine();
}

void SectionWriter::outputPorts(std::size_t number, const model::PortGroup& group) {
  eachNumbered(group.ports, [&](std::size_t n, const model::Port& port) {
    out_.lines(portIncludeRow, port, indexText({number, n}));
    out_.lines(portPolarityRow, port, indexText({number, n}));
    eachNumbered(port.conditions, [&](std::size_t c, const model::Condition& condition) {
      out_.lines(portConditionRows, condition, indexText({number, n, c}));
    });
  });
}

void SectionWriter::inputPorts(std::size_t number, const model::PortGroup& group) {
  eachNumbered(group.ports, [&](std::size_t n, const model::Port& port) {
    out_.lines(portIncludeRow, port, indexText({number, n}));
    out_.lines(portWeightRow, port, indexText({number, n, 1}));
  });
  out_.lines(histogramRow, group.HistogramCode, indexText({number, 1, 1}));
  eachNumbered(group.Table, [&](std::size_t t, std::uint8_t mask) {
    out_.lines(maskRow, mask, indexText({number, 1, 1, t}));
  });
}

void SectionWriter::flags() {
  if (allAre(project_.flags, model::FlagControl{})) return;
  out_.header(flagHeader);
  eachNumbered(project_.flags, [this](std::size_t f, const model::FlagControl& flag) {
    out_.lines(flagRows, flag, indexText({f}));
    out_.lines(flagConditionRows, flag.states[0], indexText({f}), "State1");
    out_.lines(flagConditionRows, flag.states[1], indexText({f}), "State2");
  });
  out_.emptyLine();
}

void SectionWriter::excitation() {
  out_.header(excitationHeader);
  out_.lines(excitationRows, project_.excitation);
  eachNumbered(project_.excitation.channels,
               [this](std::size_t n, const model::ExcitationChannel& channel) {
                 excitationChannel(n, channel);
               });
  out_.emptyLine();
}

void SectionWriter::excitationChannel(std::size_t number, const model::ExcitationChannel& channel) {
  const std::string index = indexText({number});
  out_.lines(excitationChannelRows, channel, index);
  for (const Row<model::Condition>& row : excitationConditionRows) {  // the two states by turns
    out_.line(row, channel.conditions[0], index, "Excite1");
    out_.line(row, channel.conditions[1], index, "Excite2");
  }
}

void SectionWriter::can() {
  const model::CanSetup& can = project_.can;
  if (can == model::CanSetup{}) return;
  out_.header(canHeader);
  out_.lines(canRows, can);
  eachNumbered(can.items, sizeFrom(can.CanCount),
               [this](std::size_t k, const model::CanItem& item) { canItem(k, item); });
  out_.emptyLine();
}

void SectionWriter::canItem(std::size_t number, const model::CanItem& item) {
  out_.lines(canItemRows, item, indexText({number}));
  const std::size_t count = sizeFrom(item.NumVals);
  eachNumbered(item.processing, [&](std::size_t t, const model::TableProcessing& table) {
    processing(table, canLevelPrefix, number, t);
    eachNumbered(item.values, count, [&](std::size_t v, const model::Element& value) {
      out_.lines(maskRow, value.Table[t - 1], indexText({number, v, t}));
    });
  });
  const std::span<const model::Element> values = item.values;
  out_.elementLines(elementRows, number, values.first(std::min(count, values.size())));
}

template <class Rows, class Inputs>
void SectionWriter::calculator(std::string_view header, const Rows& rows, const Inputs& inputs) {
  out_.header(header);
  out_.lines(rows, inputs);
  out_.emptyLine();
}

void SectionWriter::calculators() {
  const model::CalculatorInputs& inputs = project_.calculators;
  out_.header(speedHeader);
  out_.lines(speedRows, inputs.speed);
  eachNumbered(inputs.speed.GearRatio, model::maxGears,
               [this](std::size_t n, const std::string& ratio) {
                 out_.lines(gearRow, ratio, indexText({n}));
               });
  out_.emptyLine();
  calculator(multOffHeader, twoPointRows, inputs.multOff);
  calculator(mvPerVoltHeader, sensitivityRows, inputs.mvPerVolt);
  calculator(potHeader, twoPointRows, inputs.pot);
  calculator(rsHeader, resistanceRows, inputs.rs);
  calculator(rpmHeader, rpmRows, inputs.rpm);
  calculator(moreSpeedHeader, moreSpeedRows, inputs.moreSpeed);
  calculator(flowHeader, flowRows, inputs.flow);
}

void SectionWriter::calculatedFields() {
  const model::CalculatedFields& calculated = project_.calculated;
  out_.header(fieldHeader);
  out_.lines(fieldCountRow, calculated);
  const std::size_t count = sizeFrom(calculated.CalcFieldCount);
  eachNumbered(calculated.fields, count, [this](std::size_t f, const auto& field) {
    out_.lines(fieldRows, field, indexText({f}));
    eachNumbered(field.CalcField, [&](std::size_t t, std::uint8_t mask) {
      out_.lines(fieldMaskRow, mask, indexText({f, t}));
    });
  });
  fieldDefinitions();
  out_.emptyLine();
}

/// Older readers skip these keys; they stand last and only where there is a definition.
void SectionWriter::fieldDefinitions() {
  const model::CalculatedFields& calculated = project_.calculated;
  const auto undefined = [](const model::CalculatedField& field) {
    return field.CalcName.empty() && field.CalcType == 0 && field.CalcExpress.empty() &&
           field.CalcUnits.empty() && field.CalcAvg == 0;
  };
  eachNumbered(calculated.fields, sizeFrom(calculated.CalcFieldCount),
               [&](std::size_t f, const model::CalculatedField& field) {
                 if (!undefined(field)) out_.lines(fieldDefinitionRows, field, indexText({f}));
               });
}

}  // namespace

std::string filedVersion(const model::LoggerConfiguration& configuration) {
  const bool hasOldOrder = text::readNumber(configuration.Version) < text::readNumber(todaysOrder);
  return hasOldOrder ? std::string(todaysOrder) : configuration.Version;
}

std::string sectionsText(const model::Project& project, const SaveMarks& marks,
                         const LineStyle& style) {
  return SectionWriter(project, style).all(marks);
}

}  // namespace projectfile
