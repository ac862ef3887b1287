#pragma once

#include <array>
#include <span>
#include <stdexcept>

#include "model/channel_plan.h"
#include "model/limits.h"
#include "model/project.h"
#include "projectfile/row.h"

/// Every key of the project file, once, in the order of the file. Families with indexes are
/// named without them; what a list of rows hangs on is the type of its owner.
namespace projectfile {

constexpr Limits upTo(std::size_t high) { return {0, static_cast<std::int32_t>(high)}; }

// Section headers; those of blocks are named by model::infoOf.

inline constexpr std::string_view versionHeader = "[GN7 VERSION]";
inline constexpr std::string_view configurationHeader = "[CONFIGURATION]";
inline constexpr std::string_view scanHeader = "[SCAN SETUP]";
inline constexpr std::string_view tableHeader = "[TABLE SETUP]";
inline constexpr std::string_view powerOutHeader = "[POWEROUT TABLES]";
inline constexpr std::string_view tcmuxReferenceHeader = "[TCMUX REF TABLES]";
inline constexpr std::string_view tcReferenceHeader = "[TC REF TABLES]";
inline constexpr std::string_view isoReferenceHeader = "[ISO REF TABLES]";
inline constexpr std::string_view portHeader = "[PORT SETUP]";
inline constexpr std::string_view flagHeader = "[FLAG CONTROL]";
inline constexpr std::string_view excitationHeader = "[EXCITATION]";
inline constexpr std::string_view canHeader = "[CANBUS ITEMS]";
inline constexpr std::string_view speedHeader = "[SPEED CALCULATOR]";
inline constexpr std::string_view multOffHeader = "[MULTOFF CALCULATOR]";
inline constexpr std::string_view mvPerVoltHeader = "[MVPERVOLT CALCULATOR]";
inline constexpr std::string_view potHeader = "[POT CALCULATOR]";
inline constexpr std::string_view rsHeader = "[RS CALCULATOR]";
inline constexpr std::string_view rpmHeader = "[RPM CALCULATOR]";
inline constexpr std::string_view moreSpeedHeader = "[MORESPEED CALCULATOR]";
inline constexpr std::string_view flowHeader = "[FLOW CALCULATOR]";
inline constexpr std::string_view fieldHeader = "[CALCULATED FIELDS]";

// Version and configuration.

inline constexpr std::string_view todaysOrder = "1.5";  // of module quantities, since this version
inline constexpr std::array versionRows = {
    row<&model::LoggerConfiguration::Version>("Version"),
    row<&model::LoggerConfiguration::VersionLastSaved>("VersionLastSaved"),
    row<&model::LoggerConfiguration::PCTime>("PCTime"),
};
inline constexpr std::array identityRows = {
    row<&model::LoggerConfiguration::Operator>("Operator"),
    row<&model::LoggerConfiguration::IDNumber>("IDNumber"),
};
inline constexpr std::array quantityRow = {valueRow<std::int16_t>("ModuleQty")};
inline constexpr std::array extraModuleRows = {
    row<&model::LoggerConfiguration::TCMUXQty>("TCMUXQty"),
    row<&model::LoggerConfiguration::CanBusQty>("CanBusQty"),
    row<&model::LoggerConfiguration::SizeCardA>("SizeCardA"),
};
inline constexpr std::array monitorRow = {valueRow<bool>("MonitorPower")};
inline constexpr std::array optionRow = {valueRow<std::int16_t>("TcConfigOpts")};
inline constexpr std::array powerRows = {
    row<&model::LoggerConfiguration::RemainOff>("RemainOff"),
    row<&model::LoggerConfiguration::RemainPOOff>("RemainPOOff"),
    row<&model::LoggerConfiguration::PowerOffMeasVar>("PowerOffMeasVar"),
    row<&model::LoggerConfiguration::PowerOffCompare>("PowerOffCompare"),
    row<&model::LoggerConfiguration::PowerOffValue>("PowerOffValue"),
    row<&model::LoggerConfiguration::PowerOffTime>("PowerOffTime"),
    row<&model::LoggerConfiguration::PowerOffPOTime>("PowerOffPOTime"),
    row<&model::LoggerConfiguration::PowerOffMins>("PowerOffMins"),
    row<&model::LoggerConfiguration::PowerOnMins>("PowerOnMins"),
    row<&model::LoggerConfiguration::PowerOffLine>("PowerOffLine"),
    row<&model::LoggerConfiguration::AutoChan>("AutoChan"),
    row<&model::LoggerConfiguration::DefaultBattVolt>("DefaultBattVolt"),
    row<&model::LoggerConfiguration::BattTripVolts>("BattTripVolts"),
    row<&model::LoggerConfiguration::LowBattRetry>("LowBattRetry"),
    row<&model::LoggerConfiguration::RetryInterval>("RetryInterval"),
    row<&model::LoggerConfiguration::BattRetryMins>("BattRetryMins"),
    row<&model::LoggerConfiguration::StatusMonCount>("StatusMonCount", upTo(model::maxStatusLines)),
    row<&model::LoggerConfiguration::StatusFlag>("StatusFlag"),
    row<&model::LoggerConfiguration::StatTrueFalse>("StatTrueFalse"),
    row<&model::LoggerConfiguration::TimeOffYearShow>("TimeOffYearShow"),
    row<&model::LoggerConfiguration::TimeOffMonthShow>("TimeOffMonthShow"),
    row<&model::LoggerConfiguration::TimeOffDayShow>("TimeOffDayShow"),
    row<&model::LoggerConfiguration::TimeOffHourShow>("TimeOffHourShow"),
    row<&model::LoggerConfiguration::TimeOffMinShow>("TimeOffMinShow"),
    row<&model::LoggerConfiguration::TimeOffSecShow>("TimeOffSecShow"),
    row<&model::LoggerConfiguration::TimeOffWkDayShow>("TimeOffWkDayShow"),
    row<&model::LoggerConfiguration::TimeOffYear>("TimeOffYear"),
    row<&model::LoggerConfiguration::TimeOffMonth>("TimeOffMonth"),
    row<&model::LoggerConfiguration::TimeOffDay>("TimeOffDay"),
    row<&model::LoggerConfiguration::TimeOffHour>("TimeOffHour"),
    row<&model::LoggerConfiguration::TimeOffMin>("TimeOffMin"),
    row<&model::LoggerConfiguration::TimeOffSec>("TimeOffSec"),
    row<&model::LoggerConfiguration::TimeOffWkDay>("TimeOffWkDay"),
    row<&model::LoggerConfiguration::TimeOnYear>("TimeOnYear"),
    row<&model::LoggerConfiguration::TimeOnMonth>("TimeOnMonth"),
    row<&model::LoggerConfiguration::TimeOnDay>("TimeOnDay"),
    row<&model::LoggerConfiguration::TimeOnHour>("TimeOnHour"),
    row<&model::LoggerConfiguration::TimeOnMin>("TimeOnMin"),
    row<&model::LoggerConfiguration::TimeOnSec>("TimeOnSec"),
    row<&model::LoggerConfiguration::PowerOffString>("PowerOffString"),
    row<&model::LoggerConfiguration::PowerOnString>("PowerOnString"),
    row<&model::LoggerConfiguration::EnablePowerOff>("EnablePowerOff"),
    row<&model::LoggerConfiguration::EnableTime>("EnableTime"),
    row<&model::LoggerConfiguration::EnableOnTime>("EnableOnTime"),
    row<&model::LoggerConfiguration::TypeIII>("TypeIII"),
};
inline constexpr std::array statusRow = {valueRow<std::string>("Status")};

// Scan. The totals are worked out from the project: written, and known but not kept on reading.

inline constexpr std::array scanRows = {
    row<&model::ScanSetup::ExecutionTime>("ExecutionTime"),
    row<&model::ScanSetup::ExecTimeUnits>("ExecTimeUnits"),
    row<&model::ScanSetup::ScanMode>("ScanMode"),
    row<&model::ScanSetup::ScanBuffer>("ScanBuffer"),
    row<&model::ScanSetup::BurstTrigger>("BurstTrigger"),
    row<&model::ScanSetup::ScanBufferSize>("ScanBufferSize"),
    row<&model::ScanSetup::PamBuffer>("PamBuffer"),
    row<&model::ScanSetup::PostTriggerScans>("PostTriggerScans"),
    row<&model::ScanSetup::TriggerMeasVar>("TriggerMeasVar"),
    row<&model::ScanSetup::TriggerCompare>("TriggerCompare"),
    row<&model::ScanSetup::TriggerValue>("TriggerValue"),
    row<&model::ScanSetup::TrigExpression>("TrigExpression"),
};
inline constexpr std::array totalRows = {
    row<&model::ChannelTotals::TotAnalogChans>("TotAnalogChans"),
    row<&model::ChannelTotals::TotExcitChans>("TotExcitChans"),
    row<&model::ChannelTotals::TotCAOChans>("TotCAOChans"),
    row<&model::ChannelTotals::TotHVChans>("TotHVChans"),
    row<&model::ChannelTotals::TotIsoChans>("TotIsoChans"),
    row<&model::ChannelTotals::TotFiltChans>("TotFiltChans"),
};
inline constexpr std::array scanEndRows = {
    row<&model::ScanSetup::BufferScans>("BufferScans"),
    row<&model::ScanSetup::FlagScan>("FlagScan"),
};

// Output tables.

inline constexpr std::array displayRow = {row<&model::Project::QV40>("QV40")};
inline constexpr std::array tableRows = {
    row<&model::OutputTable::TableOn>("TableOn"),
    row<&model::OutputTable::OutInt>("OutInt"),
    row<&model::OutputTable::OutIntUnits>("OutIntUnits"),
    row<&model::OutputTable::TableName>("TableName"),
    row<&model::OutputTable::Buffer>("Buffer"),
    row<&model::OutputTable::SyncTable>("SyncTable"),
    row<&model::OutputTable::FillStop>("FillStop"),
    row<&model::OutputTable::PamCard>("PamCard"),
    row<&model::OutputTable::AutoSize>("AutoSize"),
    row<&model::OutputTable::TableLocation>("TableLocation"),
    row<&model::OutputTable::CalcTime>("CalcTime"),
    row<&model::OutputTable::TrigTable>("TrigTable", upTo(model::maxConditions)),
};
inline constexpr std::array stopCountRow = {row<&model::OutputTable::TrigTabStop>(
    "TrigTabStop", {-32768, static_cast<std::int32_t>(model::maxConditions)})};
inline constexpr std::array startTextRow = {
    row<&model::OutputTable::DataEventStart>("DataEventCode")};
inline constexpr std::array stopTextRow = {
    row<&model::OutputTable::DataEventStop>("DataEventCode")};
inline constexpr std::array tableEventRows = {
    row<&model::OutputTable::DataEventCode>("DataEventCode"),
    row<&model::OutputTable::PreTriggerScans>("PreTriggerScans"),
    row<&model::OutputTable::AftTriggerScans>("AftTriggerScans"),
    row<&model::OutputTable::FlagTable>("FlagTable"),
    row<&model::OutputTable::FlagMark>("FlagMark"),
    row<&model::OutputTable::FlagFull>("FlagFull"),
    row<&model::OutputTable::SingleTrigger>("SingleTrigger"),
    row<&model::OutputTable::DisableTrigger>("DisableTrigger"),
    row<&model::OutputTable::WriteIf>("WriteIf",
                                      {-32768, static_cast<std::int32_t>(model::maxConditions)}),
};
inline constexpr std::array tableEndRows = {
    row<&model::OutputTable::DisableWriteIf>("DisableWriteIf"),
    row<&model::OutputTable::GroupWriteIf>("GroupWriteIf"),
};

// Conditions. Those of triggers stand behind "Start" or "Stop", of flags behind "State1" or
// "State2", of excitation channels behind "Excite1" or "Excite2".

inline constexpr std::array triggerRows = {
    row<&model::Condition::MeasVar>("MeasVar"),   row<&model::Condition::Compare>("Compare"),
    row<&model::Condition::VarIdx>("TrigVarIdx"), row<&model::Condition::Value>("TrigValue"),
    row<&model::Condition::Varb>("TrigVarb"),
};
inline constexpr std::array logicRow = {valueRow<std::string>("TrigLogic")};
inline constexpr std::array triggerExpressionRow = {
    row<&model::Condition::Expression>("TrigIndvExpress")};
inline constexpr std::array writeIfRows = {
    row<&model::Condition::MeasVar>("MeasureVar"), row<&model::Condition::Compare>("Compare"),
    row<&model::Condition::VarIdx>("VarIdx"),      row<&model::Condition::Value>("Value"),
    row<&model::Condition::Varb>("Varb"),          row<&model::Condition::Expression>("Expression"),
};
inline constexpr std::array portConditionRows = {
    row<&model::Condition::MeasVar>("MeasureVar"),
    row<&model::Condition::Compare>("Compare"),
    row<&model::Condition::Value>("Value"),
    row<&model::Condition::Expression>("Expression"),
};
inline constexpr std::array flagConditionRows = {
    row<&model::Condition::MeasVar>("FlagVar"),
    row<&model::Condition::Compare>("FlagCompare"),
    row<&model::Condition::Value>("FlagValue"),
    row<&model::Condition::Expression>("FlagExpression"),
};
inline constexpr std::array excitationConditionRows = {
    row<&model::Condition::MeasVar>("MeasVar"),
    row<&model::Condition::Compare>("Compare"),
    row<&model::Condition::Value>("Value"),
    row<&model::Condition::Expression>("Expression"),
};

// Families that several sections have.

inline constexpr std::array maskRow = {valueRow<std::uint8_t>("Table")};
inline constexpr std::array histogramRow = {valueRow<std::string>("HistogramCode")};
inline constexpr std::array rainHistogramRow = {valueRow<std::string>("RainHistoCode")};
inline constexpr std::array rainRow = {valueRow<std::string>("RainCode")};
inline constexpr std::array processingRows = {
    row<&model::TableProcessing::HistogramCode>("HistogramCode"),
    row<&model::TableProcessing::RainHistoCode>("RainHistoCode"),
};
// Behind the two or three letters of the kind:
inline constexpr std::array levelRows = {
    row<&model::TableProcessing::LevelCode>("LevelCode"),
    row<&model::TableProcessing::LevelMeas>("LevelMeas"),
    row<&model::TableProcessing::LevelMeasName>("LevelMeasName"),
    row<&model::TableProcessing::LevNumLevels>("LevNumLevels", upTo(model::maxLevels)),
};
inline constexpr std::array firstLevelRow = {valueRow<double>("LevelVarOne")};
inline constexpr std::array testCountRow = {
    row<&model::TableProcessing::LevNumTests>("LevNumTests", upTo(model::maxLevels))};
inline constexpr std::array secondLevelRow = {valueRow<double>("LevelVarTwo")};
inline constexpr std::array dimensionRow = {row<&model::TableProcessing::NumDims>("NumDims")};
inline constexpr std::string_view offsetKey = "AliasOffset";
inline constexpr std::array elementRows = {
    row<&model::Element::AliasName>("AliasName"),
    row<&model::Element::AliasUnits>("AliasUnits"),
    row<&model::Element::AliasMult>("AliasMult"),
    row<&model::Element::AliasOffset>(offsetKey),
    row<&model::Element::AliasExcept>("AliasExcept"),
};
inline constexpr std::array bridgeElementRows = {
    row<&model::Element::AliasName>("AliasName"),
    row<&model::Element::AliasUnits>("AliasUnits"),
    row<&model::Element::AliasMult>("AliasMult"),
    row<&model::Element::AliasGFactor>("AliasGFactor"),
    row<&model::Element::AliasExcept>("AliasExcept"),
};

// Battery measurements and reference temperatures.

inline constexpr std::array powerSetRows = {
    row<&model::PowerOutSet::DataResolution>("DataResolution"),
    row<&model::PowerOutSet::Public>("Public"),
};
inline constexpr std::array referenceRows = {
    row<&model::ReferenceTemperature::DataResolution>("DataResolution"),
    row<&model::ReferenceTemperature::Public>("Public"),
};

// Measurement blocks: what a whole kind has, and then the settings of a block.

inline constexpr std::array blockCountRow = {
    row<&model::BlockSet::BlockCount>("BlockCount", upTo(model::maxBlocks))};
inline constexpr std::array pulseCountRow = {
    row<&model::BlockSet::BlockCount>("BlockCount", upTo(model::maxPulseBlocks))};
inline constexpr std::array singleEndedRow = {valueRow<std::int32_t>("SEChannelCount")};
inline constexpr std::array bridgeTotalRows = {
    row<&model::ChannelTotals::ExciteSwitched>("ExciteSwitched"),
    row<&model::ChannelTotals::ExciteCAO>("ExciteCAO"),
};
inline constexpr std::array isolatedRows = {
    row<&model::IsolatedSetup::Integration>("Integration"),
    row<&model::IsolatedSetup::IntegrationRange>("IntegrationRange"),
    row<&model::IsolatedSetup::ReverseMes>("ReverseMes"),
    row<&model::IsolatedSetup::ScansPerSubScan>("ScansPerSubScan"),
};
inline constexpr std::array slotCountRow = {
    row<&model::FilterSlot::BlockCount>("BlockCount", upTo(model::maxBlocks))};
inline constexpr std::array slotRows = {
    row<&model::FilterSlot::OverSample>("OverSample"),
    row<&model::FilterSlot::FiltFreqNum>("FiltFreqNum"),
    row<&model::FilterSlot::FiltFFTSampleRate>("FiltFFTSampleRate"),
    row<&model::FilterSlot::FiltNoSubscan>("FiltNoSubscan"),
    row<&model::FilterSlot::FFTType>("FFTType"),
    row<&model::FilterSlot::FFTLength>("FFTLength"),
    row<&model::FilterSlot::FFTModule>("FFTModule"),
};

/// All settings of all kinds; some fields have another key in some sections.
inline constexpr std::array blockCatalogue = {
    row<&model::MeasurementBlock::Reps>("Reps", upTo(model::maxElements)),
    row<&model::MeasurementBlock::Public>("Public"),
    row<&model::MeasurementBlock::MeasType>("MeasType"),
    row<&model::MeasurementBlock::MeasType>("MeasureType"),
    row<&model::MeasurementBlock::Range>("Range"),
    row<&model::MeasurementBlock::RangeNo>("RangeNo"),
    row<&model::MeasurementBlock::Integration>("Integration"),
    row<&model::MeasurementBlock::IntegrationRange>("IntegrationRange"),
    row<&model::MeasurementBlock::SettleTime>("SettleTime"),
    row<&model::MeasurementBlock::DataResolution>("DataResolution"),
    row<&model::MeasurementBlock::DataResolution>("DataType"),
    row<&model::MeasurementBlock::Units>("Units"),
    row<&model::MeasurementBlock::Units>("LongUnits"),
    row<&model::MeasurementBlock::DefaultMult>("DefaultMult"),
    row<&model::MeasurementBlock::DefaultOffset>("DefaultOffset"),
    row<&model::MeasurementBlock::ReverseMes>("ReverseMes"),
    row<&model::MeasurementBlock::OpenSensDetect>("OpenSensDetect"),
    row<&model::MeasurementBlock::OpenSensDetect>("OpenSens"),
    row<&model::MeasurementBlock::ZeroFlag>("ZeroFlag"),
    row<&model::MeasurementBlock::CalOnSite>("CalOnSite"),
    row<&model::MeasurementBlock::CalOnSite>("SiteCal"),
    row<&model::MeasurementBlock::BlockTime>("BlockTime", {}, true),
    row<&model::MeasurementBlock::TypeNo>("TypeNo"),
    row<&model::MeasurementBlock::ExciteReps>("ExciteReps"),
    row<&model::MeasurementBlock::Excite>("Excite"),
    row<&model::MeasurementBlock::Style>("Style"),
    row<&model::MeasurementBlock::Type>("Type"),
    row<&model::MeasurementBlock::CheckCAO>("CheckCAO"),
    row<&model::MeasurementBlock::RevExcite>("RevExcite"),
    row<&model::MeasurementBlock::RevOutput>("RevOutput"),
    row<&model::MeasurementBlock::GageFactor>("GageFactor"),
    row<&model::MeasurementBlock::GageCode>("GageCode"),
    row<&model::MeasurementBlock::InputType>("InputType"),
    row<&model::MeasurementBlock::TCType>("TCType"),
    row<&model::MeasurementBlock::Opt>("Opt"),
    row<&model::MeasurementBlock::Meas>("Meas"),
    row<&model::MeasurementBlock::TSWindow>("TSWindow"),
    row<&model::MeasurementBlock::SpectOption>("SpectOption"),
    row<&model::MeasurementBlock::FRef>("FRef"),
    row<&model::MeasurementBlock::SBin>("SBin"),
    row<&model::MeasurementBlock::ILow>("ILow"),
    row<&model::MeasurementBlock::IHigh>("IHigh"),
    row<&model::MeasurementBlock::TCMUXVolts>("TCMUXVolts"),
};

consteval Row<model::MeasurementBlock> blockRow(std::string_view key) {
  for (const Row<model::MeasurementBlock>& entry : blockCatalogue)
    if (entry.key == key) return entry;
  throw std::logic_error("no setting of a block has this key");  // stops the build
}

template <class... Keys>
consteval auto blockRows(Keys... keys) {
  return std::array{blockRow(keys)...};
}

inline constexpr auto tcmuxRows = blockRows(
    "TCMUXVolts", "Public", "Reps", "LongUnits", "TypeNo", "Range", "RangeNo", "Integration",
    "DataResolution", "IntegrationRange", "CalOnSite", "ReverseMes", "SettleTime", "BlockTime",
    "DefaultMult", "DefaultOffset", "ZeroFlag", "OpenSensDetect");
inline constexpr auto thermocoupleRows =
    blockRows("Public", "Reps", "MeasType", "TypeNo", "Range", "RangeNo", "Integration",
              "DataResolution", "IntegrationRange", "Units", "ReverseMes", "SettleTime",
              "BlockTime", "DefaultMult", "DefaultOffset", "OpenSensDetect");
inline constexpr auto voltageRows =
    blockRows("Public", "Reps", "MeasType", "DefaultMult", "DefaultOffset", "Range", "RangeNo",
              "Integration", "DataResolution", "IntegrationRange", "CalOnSite", "Units",
              "ReverseMes", "SettleTime", "BlockTime", "ZeroFlag", "OpenSensDetect");
inline constexpr auto highVoltageRows =
    blockRows("Public", "Reps", "MeasType", "DefaultMult", "DefaultOffset", "Range", "RangeNo",
              "Integration", "DataResolution", "IntegrationRange", "CalOnSite", "Units",
              "ReverseMes", "SettleTime", "BlockTime", "ZeroFlag");
inline constexpr auto isolatedBlockRows = blockRows(
    "Public", "Reps", "DefaultMult", "DefaultOffset", "DataType", "SiteCal", "Units", "InputType",
    "MeasureType", "OpenSens", "TCType", "Range", "RangeNo", "BlockTime", "ZeroFlag");
inline constexpr auto bridgeRows =
    blockRows("Public", "Reps", "ExciteReps", "MeasType", "Excite", "DefaultMult", "DefaultOffset",
              "Range", "RangeNo", "Integration", "DataResolution", "IntegrationRange", "CalOnSite",
              "Units", "ReverseMes", "SettleTime", "BlockTime", "ZeroFlag", "Style", "Type",
              "CheckCAO", "RevExcite", "GageFactor", "GageCode", "RevOutput", "OpenSensDetect");
inline constexpr auto pulseRows = blockRows("Public", "Reps", "Opt", "DefaultMult", "DefaultOffset",
                                            "Meas", "DataType", "SiteCal", "Units", "BlockTime");
inline constexpr auto filterRows =
    blockRows("Public", "Reps", "DefaultMult", "DefaultOffset", "Range", "RangeNo",
              "DataResolution", "TSWindow", "SpectOption", "FRef", "SBin", "ILow", "IHigh",
              "CalOnSite", "ZeroFlag", "Excite", "Units");

constexpr std::span<const Row<model::MeasurementBlock>> settingsOf(model::BlockKind kind) {
  switch (kind) {
    case model::BlockKind::thermocouple:
      return thermocoupleRows;
    case model::BlockKind::voltage:
      return voltageRows;
    case model::BlockKind::highVoltage:
      return highVoltageRows;
    case model::BlockKind::isolated:
      return isolatedBlockRows;
    case model::BlockKind::bridge:
      return bridgeRows;
    case model::BlockKind::pulse:
      return pulseRows;
    case model::BlockKind::filter:
      return filterRows;
    case model::BlockKind::tcmux:
      return tcmuxRows;
  }
  return {};
}

constexpr std::span<const Row<model::Element>> aliasesOf(model::BlockKind kind) {
  if (kind == model::BlockKind::bridge) return bridgeElementRows;
  return elementRows;
}

/// Thermocouple, voltage and bridge blocks count the single-ended channels that they take.
constexpr bool countsSingleEnded(model::BlockKind kind) {
  return kind == model::BlockKind::thermocouple || kind == model::BlockKind::voltage ||
         kind == model::BlockKind::bridge;
}

// Ports, flags, excitation.

inline constexpr std::array portSetupRows = {row<&model::PortSetup::CodeType>("CodeType")};
inline constexpr std::array portGroupRows = {
    row<&model::PortGroup::Public>("Public"),
    row<&model::PortGroup::DataResolution>("DataResolution"),
    row<&model::PortGroup::ByteMode>("ByteMode"),
    row<&model::PortGroup::ReadMode>("ReadMode"),
};
inline constexpr std::array portIncludeRow = {row<&model::Port::Include>("Include")};
inline constexpr std::array portPolarityRow = {row<&model::Port::Polarity>("Polarity")};
inline constexpr std::array portWeightRow = {row<&model::Port::BinaryMask>("BinaryMask")};
inline constexpr std::array flagRows = {
    row<&model::FlagControl::FlagInclude>("FlagInclude"),
    row<&model::FlagControl::FlagOn>("FlagOn"),
};
inline constexpr std::array excitationRows = {
    row<&model::ExcitationSetup::ExcitePublic>("ExcitePublic")};
inline constexpr std::array excitationChannelRows = {
    row<&model::ExcitationChannel::Include>("Include"),
    row<&model::ExcitationChannel::DynamicStatic>("DynamicStatic"),
    row<&model::ExcitationChannel::State1>("State1"),
    row<&model::ExcitationChannel::State2>("State2"),
    row<&model::ExcitationChannel::Delay>("Delay"),
};

// CAN.

inline constexpr std::array canRows = {
    row<&model::CanSetup::CanAddress>("CanAddress"),
    row<&model::CanSetup::CanBaud>("CanBaud"),
    row<&model::CanSetup::CanQuanta>("CanQuanta"),
    row<&model::CanSetup::CanSeg1>("CanSeg1"),
    row<&model::CanSetup::CanSeg2>("CanSeg2"),
    row<&model::CanSetup::CanDataIDType>("CanDataIDType"),
    row<&model::CanSetup::CanMessageType>("CanMessageType"),
    row<&model::CanSetup::CanEnableTransmit>("CanEnableTransmit"),
    row<&model::CanSetup::CanNaNOldData>("CanNaNOldData"),
    row<&model::CanSetup::CanGetOSVerSig>("CanGetOSVerSig"),
    row<&model::CanSetup::CanCount>("CanCount", upTo(model::maxCanItems)),
    row<&model::CanSetup::CanPickDataFormat>("CanPickDataFormat"),
    row<&model::CanSetup::CanAutoSaveLists>("CanAutoSaveLists"),
    row<&model::CanSetup::CanBusEnabled>("CanBusEnabled"),
};
inline constexpr std::array canItemRows = {
    row<&model::CanItem::Name>("Name"),
    row<&model::CanItem::DataStyle>("DataStyle"),
    row<&model::CanItem::Enabled>("Enabled"),
    row<&model::CanItem::StartBit>("StartBit"),
    row<&model::CanItem::NumBits>("NumBits"),
    row<&model::CanItem::NumVals>("NumVals", Limits{1, model::maxCanValues}),
    row<&model::CanItem::DataId>("DataId"),
    row<&model::CanItem::TxDataId>("TxDataId"),
    row<&model::CanItem::TxDataFrame>("TxDataFrame"),
    row<&model::CanItem::RxDataMatch>("RxDataMatch"),
    row<&model::CanItem::RxDataMask>("RxDataMask"),
    row<&model::CanItem::RxTimeout>("RxTimeout"),
    row<&model::CanItem::ItemMessageType>("ItemMessageType"),
    row<&model::CanItem::Mult>("Mult"),
    row<&model::CanItem::Offset>("Offset"),
    row<&model::CanItem::Units>("Units"),
    row<&model::CanItem::DataType>("DataType"),
    row<&model::CanItem::Public>("Public"),
    row<&model::CanItem::Description>("Description"),
};
inline constexpr std::string_view canLevelPrefix = "Ca";

// Calculators and calculated fields.

inline constexpr std::array speedRows = {
    row<&model::SpeedInputs::MKSSpd>("MKSSpd"),
    row<&model::SpeedInputs::RevSpeed>("RevSpeed"),
    row<&model::SpeedInputs::WheelSize>("WheelSize"),
    row<&model::SpeedInputs::PulsesSec>("PulsesSec"),
    row<&model::SpeedInputs::SizeOption>("SizeOption"),
    row<&model::SpeedInputs::LengthOption>("LengthOption"),
    row<&model::SpeedInputs::UseMins>("UseMins"),
};
inline constexpr std::array gearRow = {valueRow<std::string>("GearRatio")};
inline constexpr std::array twoPointRows = {
    row<&model::TwoPointInputs::YMax>("YMax"), row<&model::TwoPointInputs::YMin>("YMin"),
    row<&model::TwoPointInputs::YOut>("YOut"), row<&model::TwoPointInputs::XMax>("XMax"),
    row<&model::TwoPointInputs::XMin>("XMin"), row<&model::TwoPointInputs::Units>("Units"),
};
inline constexpr std::array sensitivityRows = {
    row<&model::SensitivityInputs::mVPerV>("mVPerV"),
    row<&model::SensitivityInputs::FullScale>("FullScale"),
    row<&model::SensitivityInputs::Units>("Units"),
    row<&model::SensitivityInputs::mVOut>("mVOut"),
};
inline constexpr std::array resistanceRows = {
    row<&model::ResistanceInputs::RsOhms>("RsOhms"),
    row<&model::ResistanceInputs::Units>("Units"),
};
inline constexpr std::array rpmRows = {
    row<&model::RpmInputs::Pulses>("Pulses"),
    row<&model::RpmInputs::WhatIf>("WhatIf"),
};
inline constexpr std::array moreSpeedRows = {
    row<&model::MoreSpeedInputs::InSystem>("InSystem"),
    row<&model::MoreSpeedInputs::InUnits>("InUnits"),
    row<&model::MoreSpeedInputs::OutSystem>("OutSystem"),
    row<&model::MoreSpeedInputs::OutUnits>("OutUnits"),
    row<&model::MoreSpeedInputs::UseMins>("UseMins"),
    row<&model::MoreSpeedInputs::InPulses>("InPulses"),
    row<&model::MoreSpeedInputs::WhatIf>("WhatIf"),
};
inline constexpr std::array flowRows = {
    row<&model::FlowInputs::CalFactor>("CalFactor"), row<&model::FlowInputs::Pulses>("Pulses"),
    row<&model::FlowInputs::OutSystem>("OutSystem"), row<&model::FlowInputs::OutUnits>("OutUnits"),
    row<&model::FlowInputs::WhatIf>("WhatIf"),
};
inline constexpr std::array fieldCountRow = {row<&model::CalculatedFields::CalcFieldCount>(
    "CalcFieldCount", upTo(model::maxCalculatedFields))};
inline constexpr std::array fieldRows = {
    row<&model::CalculatedField::Public>("Public"),
    row<&model::CalculatedField::DataResolution>("DataResolution"),
};
inline constexpr std::array fieldMaskRow = {valueRow<std::uint8_t>("CalcField")};
inline constexpr std::array fieldDefinitionRows = {
    row<&model::CalculatedField::CalcName>("CalcName"),
    row<&model::CalculatedField::CalcType>("CalcType"),
    row<&model::CalculatedField::CalcExpress>("CalcExpress"),
    row<&model::CalculatedField::CalcUnits>("CalcUnits"),
    row<&model::CalculatedField::CalcAvg>("CalcAvg"),
};

}  // namespace projectfile
