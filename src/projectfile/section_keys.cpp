#include "projectfile/section_keys.h"

#include <algorithm>

#include "projectfile/rows.h"

namespace projectfile {
namespace {

using model::BlockKind;

bool within(std::size_t index, std::size_t limit) { return index - 1 < limit; }

template <class T, std::size_t N>
T* memberOf(std::array<T, N>& list, std::size_t index) {
  return within(index, N) ? &list[index - 1] : nullptr;
}

/// Lists grow with the indexes that the file names; at the end they take the length of their count.
template <class T>
T* memberOf(std::vector<T>& list, std::size_t index, std::size_t limit) {
  if (!within(index, limit)) return nullptr;
  if (index > list.size()) list.resize(index);
  return &list[index - 1];
}

template <auto Member>
auto* part(Target& target, const Indexes&) {
  return &(target.project.*Member);
}

// Configuration

std::int16_t* moduleQuantity(Target& target, const Indexes& i) {
  std::int16_t* const quantity = memberOf(target.project.configuration.ModuleQty, i[0]);
  if (quantity) target.quantitiesRead = true;
  return quantity;
}

bool* monitor(Target& target, const Indexes& i) {
  return memberOf(target.project.configuration.MonitorPower, i[0] + 1);  // filed from 0
}

std::int16_t* option(Target& target, const Indexes& i) {
  return memberOf(target.project.configuration.TcConfigOpts, i[0] + 1);  // filed from 0
}

std::string* statusText(Target& target, const Indexes& i) {
  if (!within(i[1], std::tuple_size_v<model::StatusLine>)) return nullptr;
  auto* const line = memberOf(target.project.configuration.Status, i[0], model::maxStatusLines);
  return line ? &(*line)[i[1] - 1] : nullptr;
}

void describeConfiguration(SectionKeys& keys, BlockKind) {
  constexpr auto configuration = part<&model::Project::configuration>;
  keys.add<configuration>(Form::none, identityRows);
  keys.add<moduleQuantity>(Form::one, quantityRow);
  keys.add<configuration>(Form::none, extraModuleRows);
  keys.add<monitor>(Form::one, monitorRow);
  keys.add<option>(Form::one, optionRow);
  keys.add<configuration>(Form::none, powerRows);
  keys.add<statusText>(Form::two, statusRow);
}

void describeVersion(SectionKeys& keys, BlockKind) {
  keys.add<part<&model::Project::configuration>>(Form::none, versionRows);
}

model::ChannelTotals* totals(Target& target, const Indexes&) { return &target.totals; }
std::int32_t* singleEnded(Target& target, const Indexes&) { return &target.totals.ExciteCAO; }

void describeScan(SectionKeys& keys, BlockKind) {
  constexpr auto scan = part<&model::Project::scan>;
  keys.add<scan>(Form::none, scanRows);
  keys.add<totals>(Form::none, totalRows);
  keys.add<scan>(Form::none, scanEndRows);
}

// Output tables

model::Project* whole(Target& target, const Indexes&) { return &target.project; }

model::OutputTable* table(Target& target, const Indexes& i) {
  return memberOf(target.project.tables, i[0]);
}

template <std::size_t trigger>
model::OutputTable* eventText(Target& target, const Indexes& i) {
  if (within(i[0], model::maxTables)) target.eventTextRead[i[0] - 1][trigger] = true;
  return table(target, i);
}

/// Trigger keys run the condition number into the table number: 3 is condition 1 of table 3, 32
/// its condition 2 and 310 its condition 10.
struct TriggerPlace {
  std::size_t table = 0, condition = 0;
};
TriggerPlace triggerPlace(std::size_t index) {
  if (index < 10) return {index, 1};
  if (index < 100) return {index / 10, index % 10 == 1 ? 0 : index % 10};
  return {index / 100, index % 100 == 10 ? std::size_t{10} : 0};
}

template <int trigger>
model::Condition* triggerCondition(Target& target, const Indexes& i) {
  const auto [number, condition] = triggerPlace(i[0]);
  if (!within(number, model::maxTables) || condition == 0) return nullptr;
  return &target.project.tables[number - 1].conditions.trigger(trigger,
                                                               static_cast<int>(condition));
}

template <int trigger>
std::string* triggerLogic(Target& target, const Indexes& i) {
  const auto [number, condition] = triggerPlace(i[0]);
  if (!within(number, model::maxTables) || condition == 0) return nullptr;
  return &target.project.tables[number - 1].conditions.logic(trigger, static_cast<int>(condition));
}

model::Condition* singleWriteIf(Target& target, const Indexes& i) {
  WriteIfForms* const forms = memberOf(target.writeIf, i[0]);
  return forms ? &forms->single : nullptr;
}

model::Condition* listedWriteIf(Target& target, const Indexes& i) {
  WriteIfForms* const forms = memberOf(target.writeIf, i[0]);
  return forms ? memberOf(forms->listed, i[1]) : nullptr;
}

template <int trigger>
void describeTrigger(SectionKeys& keys, std::string_view prefix) {
  keys.add<triggerCondition<trigger>>(Form::one, triggerRows, prefix);
  keys.add<triggerLogic<trigger>>(Form::one, logicRow, prefix);
  keys.add<triggerCondition<trigger>>(Form::one, triggerExpressionRow, prefix);
}

void describeTables(SectionKeys& keys, BlockKind) {
  keys.add<whole>(Form::none, displayRow);
  keys.add<table>(Form::one, tableRows);
  describeTrigger<0>(keys, "Start");
  keys.add<table>(Form::one, stopCountRow);
  describeTrigger<1>(keys, "Stop");
  keys.add<eventText<0>>(Form::start, startTextRow);
  keys.add<eventText<1>>(Form::stop, stopTextRow);
  keys.add<table>(Form::one, tableEventRows);
  keys.add<singleWriteIf>(Form::one, writeIfRows);
  keys.add<listedWriteIf>(Form::spaced, writeIfRows);
  keys.add<table>(Form::one, tableEndRows);
}

// Battery measurements and reference temperatures

template <std::size_t set>
model::PowerOutSet* powerSet(Target& target, const Indexes&) {
  return &target.project.powerOut.sets[set];
}

std::uint8_t* powerMask(Target& target, const Indexes& i) {
  model::PowerOutSet* const set = memberOf(target.project.powerOut.sets, i[0]);
  return set ? memberOf(set->Table, i[1]) : nullptr;
}

template <auto Member>
std::string* powerText(Target& target, const Indexes& i) {
  return memberOf(target.project.powerOut.*Member, i[0]);
}

void describePowerOut(SectionKeys& keys, BlockKind) {
  keys.add<powerSet<0>>(Form::none, powerSetRows, "", "1");
  keys.add<powerSet<1>>(Form::none, powerSetRows, "", "2");
  keys.add<powerMask>(Form::two, maskRow);
  keys.add<powerText<&model::PowerOutTables::HistogramCode>>(Form::one, histogramRow);
  keys.add<powerText<&model::PowerOutTables::RainHistoCode>>(Form::one, rainHistogramRow);
}

template <auto Reference, auto Member>
auto* referenceItem(Target& target, const Indexes& i) {
  return memberOf(target.project.*Reference.*Member, i[0]);
}

template <auto Reference>
void describeReference(SectionKeys& keys, BlockKind) {
  using model::ReferenceTemperature;
  keys.add<part<Reference>>(Form::none, referenceRows);
  keys.add<referenceItem<Reference, &ReferenceTemperature::Table>>(Form::one, maskRow);
  keys.add<referenceItem<Reference, &ReferenceTemperature::HistogramCode>>(Form::one, histogramRow);
  keys.add<referenceItem<Reference, &ReferenceTemperature::RainCode>>(Form::one, rainRow);
}

// Measurement blocks

model::BlockSet* blockSet(Target& target, const Indexes&) {
  target.countRead[static_cast<std::size_t>(target.kind)] = true;
  return target.set;
}

model::MeasurementBlock* block(Target& target, const Indexes& i) {
  if (!within(i[0], target.blockLimit)) return nullptr;
  return &target.set->blocks[i[0] - 1];
}

model::TableProcessing* blockProcessing(Target& target, const Indexes& i) {
  model::MeasurementBlock* const owner = block(target, i);
  return owner ? memberOf(owner->processing, i[1]) : nullptr;
}

template <auto Member>
double* blockLevel(Target& target, const Indexes& i) {
  model::TableProcessing* const owner = blockProcessing(target, i);
  return owner ? memberOf(owner->*Member, i[2], model::maxLevels) : nullptr;
}

/// Kept out of the way of the usual case, in which the element is there.
[[gnu::noinline]] void growElements(model::MeasurementBlock& block, std::size_t size,
                                    const model::Element& fresh) {
  const std::size_t reps = block.Reps > 0 ? static_cast<std::size_t>(block.Reps) : 0;
  if (reps > block.elements.capacity()) block.elements.reserve(reps);
  block.elements.resize(size, fresh);
}

model::Element* elementOf(Target& target, const Indexes& i, std::size_t number) {
  model::MeasurementBlock* const owner = block(target, i);
  if (!owner || !within(number, model::maxElements)) return nullptr;
  if (number > owner->elements.size()) growElements(*owner, number, target.freshElement);
  return &owner->elements[number - 1];
}

model::Element* element(Target& target, const Indexes& i) { return elementOf(target, i, i[1]); }

std::uint8_t* elementMask(Target& target, const Indexes& i) {
  if (!within(i[1], model::maxTables)) return nullptr;
  model::Element* const owner = elementOf(target, i, i[2]);
  return owner ? &owner->Table[i[1] - 1] : nullptr;
}

model::FilterSlot* filterSlot(Target& target, const Indexes& i) {
  return memberOf(target.project.filterSlots, i[0]);
}

model::FilterSlot* filterCount(Target& target, const Indexes& i) {
  target.countRead[static_cast<std::size_t>(BlockKind::filter)] = true;
  if (within(i[0], model::maxUserModules)) target.filterCountLines[i[0] - 1] = target.line;
  return filterSlot(target, i);
}

void describeKind(SectionKeys& keys, BlockKind kind) {
  if (kind == BlockKind::filter) {
    keys.add<filterCount>(Form::one, slotCountRow);
    keys.add<filterSlot>(Form::one, slotRows);
    return;
  }
  const bool pulse = kind == BlockKind::pulse;
  keys.add<blockSet>(Form::none, pulse ? pulseCountRow : blockCountRow);
  if (countsSingleEnded(kind)) keys.add<singleEnded>(Form::none, singleEndedRow);
  if (kind == BlockKind::bridge) keys.add<totals>(Form::none, bridgeTotalRows);
  if (kind == BlockKind::isolated)
    keys.add<part<&model::Project::isolated>>(Form::none, isolatedRows);
}

void describeBlocks(SectionKeys& keys, BlockKind kind) {
  const std::string_view prefix = model::infoOf(kind).levelPrefix;
  describeKind(keys, kind);
  keys.add<block>(Form::one, settingsOf(kind));
  keys.add<blockProcessing>(Form::two, processingRows);
  keys.add<blockProcessing>(Form::two, levelRows, prefix);
  keys.add<blockLevel<&model::TableProcessing::LevelVarOne>>(Form::three, firstLevelRow, prefix);
  keys.add<blockProcessing>(Form::two, testCountRow, prefix);
  keys.add<blockLevel<&model::TableProcessing::LevelVarTwo>>(Form::three, secondLevelRow, prefix);
  keys.add<blockProcessing>(Form::two, dimensionRow, prefix);
  keys.add<elementMask>(Form::three, maskRow);
  keys.add<element>(Form::two, aliasesOf(kind));
}

// Ports, flags, excitation

model::PortGroup* portGroup(Target& target, const Indexes& i) {
  return memberOf(target.project.ports.groups, i[0], model::maxPortGroups);
}

model::Port* port(Target& target, const Indexes& i) {
  model::PortGroup* const group = portGroup(target, i);
  return group ? memberOf(group->ports, i[1]) : nullptr;
}

model::Port* portWeight(Target& target, const Indexes& i) {
  return i[2] == 1 ? port(target, i) : nullptr;
}

model::Condition* portCondition(Target& target, const Indexes& i) {
  model::Port* const owner = port(target, i);
  return owner ? memberOf(owner->conditions, i[2]) : nullptr;
}

/// A group is stored as one value, filed as that of its first port.
model::PortGroup* storedGroup(Target& target, const Indexes& i) {
  return i[1] == 1 && i[2] == 1 ? portGroup(target, i) : nullptr;
}

std::string* portHistogram(Target& target, const Indexes& i) {
  model::PortGroup* const group = storedGroup(target, i);
  return group ? &group->HistogramCode : nullptr;
}

std::uint8_t* portMask(Target& target, const Indexes& i) {
  model::PortGroup* const group = storedGroup(target, i);
  return group ? memberOf(group->Table, i[3]) : nullptr;
}

void describePorts(SectionKeys& keys, BlockKind) {
  keys.add<part<&model::Project::ports>>(Form::none, portSetupRows);
  keys.add<portGroup>(Form::one, portGroupRows);
  keys.add<port>(Form::two, portIncludeRow);
  keys.add<port>(Form::two, portPolarityRow);
  keys.add<portCondition>(Form::three, portConditionRows);
  keys.add<portWeight>(Form::three, portWeightRow);
  keys.add<portHistogram>(Form::three, histogramRow);
  keys.add<portMask>(Form::four, maskRow);
}

model::FlagControl* flag(Target& target, const Indexes& i) {
  return memberOf(target.project.flags, i[0]);
}

template <std::size_t state>
model::Condition* flagCondition(Target& target, const Indexes& i) {
  model::FlagControl* const owner = flag(target, i);
  return owner ? &owner->states[state] : nullptr;
}

void describeFlags(SectionKeys& keys, BlockKind) {
  keys.add<flag>(Form::one, flagRows);
  keys.add<flagCondition<0>>(Form::one, flagConditionRows, "State1");
  keys.add<flagCondition<1>>(Form::one, flagConditionRows, "State2");
}

model::ExcitationChannel* excitationChannel(Target& target, const Indexes& i) {
  return memberOf(target.project.excitation.channels, i[0], model::maxExcitationChannels);
}

template <std::size_t state>
model::Condition* excitationCondition(Target& target, const Indexes& i) {
  model::ExcitationChannel* const channel = excitationChannel(target, i);
  return channel ? &channel->conditions[state] : nullptr;
}

void describeExcitation(SectionKeys& keys, BlockKind) {
  keys.add<part<&model::Project::excitation>>(Form::none, excitationRows);
  keys.add<excitationChannel>(Form::one, excitationChannelRows);
  keys.add<excitationCondition<0>>(Form::one, excitationConditionRows, "Excite1");
  keys.add<excitationCondition<1>>(Form::one, excitationConditionRows, "Excite2");
}

// CAN

model::CanItem* canItem(Target& target, const Indexes& i) {
  return memberOf(target.project.can.items, i[0], model::maxCanItems);
}

model::TableProcessing* canProcessing(Target& target, const Indexes& i) {
  model::CanItem* const item = canItem(target, i);
  return item ? memberOf(item->processing, i[1]) : nullptr;
}

template <auto Member>
double* canLevel(Target& target, const Indexes& i) {
  model::TableProcessing* const owner = canProcessing(target, i);
  return owner ? memberOf(owner->*Member, i[2], model::maxLevels) : nullptr;
}

model::Element* canValue(Target& target, const Indexes& i) {
  model::CanItem* const item = canItem(target, i);
  return item ? memberOf(item->values, i[1], model::maxCanValues) : nullptr;
}

std::uint8_t* canMask(Target& target, const Indexes& i) {  // the table comes last here
  model::Element* const value = canValue(target, i);
  return value ? memberOf(value->Table, i[2]) : nullptr;
}

void describeCan(SectionKeys& keys, BlockKind) {
  keys.add<part<&model::Project::can>>(Form::none, canRows);
  keys.add<canItem>(Form::one, canItemRows);
  keys.add<canProcessing>(Form::two, processingRows);
  keys.add<canProcessing>(Form::two, levelRows, canLevelPrefix);
  keys.add<canLevel<&model::TableProcessing::LevelVarOne>>(Form::three, firstLevelRow,
                                                           canLevelPrefix);
  keys.add<canProcessing>(Form::two, testCountRow, canLevelPrefix);
  keys.add<canLevel<&model::TableProcessing::LevelVarTwo>>(Form::three, secondLevelRow,
                                                           canLevelPrefix);
  keys.add<canProcessing>(Form::two, dimensionRow, canLevelPrefix);
  keys.add<canMask>(Form::three, maskRow);
  keys.add<canValue>(Form::two, elementRows);
}

// Calculators and calculated fields

template <auto Member>
auto* calculator(Target& target, const Indexes&) {
  return &(target.project.calculators.*Member);
}

std::string* gear(Target& target, const Indexes& i) {
  return memberOf(target.project.calculators.speed.GearRatio, i[0], model::maxGears);
}

void describeSpeed(SectionKeys& keys, BlockKind) {
  keys.add<calculator<&model::CalculatorInputs::speed>>(Form::none, speedRows);
  keys.add<gear>(Form::one, gearRow);
}

template <auto Member, const auto& rows>
void describeCalculator(SectionKeys& keys, BlockKind) {
  keys.add<calculator<Member>>(Form::none, rows);
}

model::CalculatedField* field(Target& target, const Indexes& i) {
  return memberOf(target.project.calculated.fields, i[0], model::maxCalculatedFields);
}

std::uint8_t* fieldMask(Target& target, const Indexes& i) {
  model::CalculatedField* const owner = field(target, i);
  return owner ? memberOf(owner->CalcField, i[1]) : nullptr;
}

void describeFields(SectionKeys& keys, BlockKind) {
  keys.add<part<&model::Project::calculated>>(Form::none, fieldCountRow);
  keys.add<field>(Form::one, fieldRows);
  keys.add<fieldMask>(Form::two, fieldMaskRow);
  keys.add<field>(Form::one, fieldDefinitionRows);
}

using Inputs = model::CalculatorInputs;
constexpr BlockKind noKind = BlockKind::thermocouple;

// The headers of blocks are those of their kind.
constexpr std::array sections = {
    SectionInfo{versionHeader, noKind, describeVersion},
    SectionInfo{configurationHeader, noKind, describeConfiguration},
    SectionInfo{scanHeader, noKind, describeScan},
    SectionInfo{tableHeader, noKind, describeTables},
    SectionInfo{powerOutHeader, noKind, describePowerOut},
    SectionInfo{tcmuxReferenceHeader, noKind, describeReference<&model::Project::tcmuxReference>},
    SectionInfo{"", BlockKind::tcmux, describeBlocks},
    SectionInfo{tcReferenceHeader, noKind, describeReference<&model::Project::tcReference>},
    SectionInfo{"", BlockKind::thermocouple, describeBlocks},
    SectionInfo{"", BlockKind::voltage, describeBlocks},
    SectionInfo{"", BlockKind::highVoltage, describeBlocks},
    SectionInfo{isoReferenceHeader, noKind, describeReference<&model::Project::isoReference>},
    SectionInfo{"", BlockKind::isolated, describeBlocks},
    SectionInfo{"", BlockKind::bridge, describeBlocks},
    SectionInfo{"", BlockKind::pulse, describeBlocks},
    SectionInfo{"", BlockKind::filter, describeBlocks},
    SectionInfo{portHeader, noKind, describePorts},
    SectionInfo{flagHeader, noKind, describeFlags},
    SectionInfo{excitationHeader, noKind, describeExcitation},
    SectionInfo{canHeader, noKind, describeCan},
    SectionInfo{speedHeader, noKind, describeSpeed},
    SectionInfo{multOffHeader, noKind, describeCalculator<&Inputs::multOff, twoPointRows>},
    SectionInfo{mvPerVoltHeader, noKind, describeCalculator<&Inputs::mvPerVolt, sensitivityRows>},
    SectionInfo{potHeader, noKind, describeCalculator<&Inputs::pot, twoPointRows>},
    SectionInfo{rsHeader, noKind, describeCalculator<&Inputs::rs, resistanceRows>},
    SectionInfo{rpmHeader, noKind, describeCalculator<&Inputs::rpm, rpmRows>},
    SectionInfo{moreSpeedHeader, noKind, describeCalculator<&Inputs::moreSpeed, moreSpeedRows>},
    SectionInfo{flowHeader, noKind, describeCalculator<&Inputs::flow, flowRows>},
    SectionInfo{fieldHeader, noKind, describeFields},
};

std::uint32_t hashOf(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return hash;
}

}  // namespace

std::span<const SectionInfo> knownSections() { return sections; }

std::string_view headerOf(const SectionInfo& section) {
  return section.header.empty() ? model::infoOf(section.kind).section : section.header;
}

Target::Target(model::Project& start) : project(start) {
  for (std::size_t t = 0; t < model::maxTables; ++t) {
    const model::cOutputTable& conditions = project.tables[t].conditions;
    writeIf[t].single = conditions.writeIf(1);
    for (std::size_t c = 0; c < model::maxConditions; ++c)
      writeIf[t].listed[c] = conditions.writeIf(static_cast<int>(c + 1));
  }
}

void Target::enterKind(model::BlockKind blockKind) {
  kind = blockKind;
  set = &project.set(kind);
  blockLimit = model::infoOf(kind).blockLimit;
  freshElement = model::defaultElement(kind);
}

void SectionKeys::append(Entry entry) {
  const auto number = static_cast<std::uint32_t>(entries_.size());
  if (number > 0) entries_.back().next = number;  // until a file shows another order
  hashes_.push_back(hashOf(entry.name));
  entries_.push_back(std::move(entry));
}

std::uint32_t SectionKeys::find(std::string_view name, Form form) const {
  const std::uint32_t wanted = hashOf(name);
  for (std::uint32_t i = 0; i < hashes_.size(); ++i)
    if (hashes_[i] == wanted && entries_[i].form == form && entries_[i].name == name) return i;
  return none;
}

}  // namespace projectfile
