#include <gtest/gtest.h>

#include "projectfile/project_file.h"
#include "support/demo_project.h"

namespace {

using model::BlockKind;
using model::ModuleKindIndex;

std::string textOf(const model::Project& project) {
  return KGEN_GENFILE::fileText(project, support::demoStamp());
}

/// Lines as a person types them; the file ends them with CR LF.
std::string asFile(std::string_view lines) {
  std::string out;
  for (const char c : lines) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return out;
}

TEST(FileText, IsTheReviewedFileOfTheDemoProject) {
  model::Project project = support::demoProject();
  KGEN_GENFILE::prepareForSave(project, support::demoStamp());
  EXPECT_EQ(textOf(project), support::wholeFile(KGEN_GOLDEN_DIR "/demo.GN7"));
}

TEST(FileText, LeavesOutSectionsThatSayNothing) {
  const std::string text =
      textOf(support::projectWith(2, {ModuleKindIndex::excitation7131, ModuleKindIndex::counter7141,
                                      ModuleKindIndex::filter7125}));
  for (const char* absent : {"BLOCKS]", "REF TABLES]", "[PORT", "[FLAG", "[CANBUS"})
    EXPECT_EQ(text.find(absent), std::string::npos) << absent;
  EXPECT_NE(text.find("\r\n\r\n[EXCITATION]\r\nExcitePublic= 0\r\nInclude(1)= 0\r\n"),
            std::string::npos);
  EXPECT_TRUE(text.ends_with("[CALCULATED FIELDS]\r\nCalcFieldCount= 0\r\n\r\n"));
}

void putConditions(model::OutputTable& table) {
  table.TrigTable = 2;
  table.conditions.TriggerMeasVar(0, 1, "VBlk1");
  table.conditions.TriggerVarIdx(0, 1, 3);
  table.conditions.TriggerValue(0, 1, 0.1);
  table.conditions.TriggerLogic(0, 1, "Or");
  table.conditions.TriggerIndvExpress(0, 2, "Flag(2)");
  table.TrigTabStop = 10;
  table.conditions.TriggerVarb(1, 10, "Limit");
  table.DataEventStart = "VBlk1(3) > 0.1";
}

struct Fragment {
  const char* name;
  void (*change)(model::Project&);
  const char* lines;
};

constexpr Fragment fragments[] = {
    {"quantities are shifted by one and left out when zero",
     [](model::Project& p) { p.configuration.ModuleQty = {0, 2, 0, 0, 0, 0, 0, 0, 0, 5}; },
     "\nModuleQty(2)= 2\nModuleQty(10)= 5\nTCMUXQty= 0\nCanBusQty= 0\nSizeCardA= 0\n"
     "MonitorPower(0)= 0\n"},
    {"conditions run into the table number", [](model::Project& p) { putConditions(p.tables[2]); },
     "\nTrigTable(3)= 2\nStartMeasVar(3)=VBlk1\nStartCompare(3)= 2\nStartTrigVarIdx(3)= 3\n"
     "StartTrigValue(3)= 0.1\nStartTrigVarb(3)=\nStartTrigLogic(3)=Or\nStartTrigIndvExpress(3)=\n"
     "StartMeasVar(32)=\nStartCompare(32)= 2\nStartTrigVarIdx(32)= 0\nStartTrigValue(32)= 0\n"
     "StartTrigVarb(32)=\nStartTrigLogic(32)=And\nStartTrigIndvExpress(32)=Flag(2)\n"
     "TrigTabStop(3)= 10\nStopMeasVar(3)=\n"},
    {"the tenth condition has three digits", [](model::Project& p) { putConditions(p.tables[2]); },
     "\nStopTrigVarb(310)=Limit\nStopTrigLogic(310)=And\nStopTrigIndvExpress(310)=\n"
     "DataEventCode(3 Start)=VBlk1(3) > 0.1\nDataEventCode(3 Stop)=\nDataEventCode(3)= 0\n"},
    {"a negative stop count is the start count",
     [](model::Project& p) {
       p.tables[0].TrigTable = 1;
       p.tables[0].TrigTabStop = -1;
     },
     "\nTrigTabStop(1)= 1\nStopMeasVar(1)=\n"},
    {"one write-if has one index",
     [](model::Project& p) {
       p.tables[1].WriteIf = 1;
       p.tables[1].conditions.WriteIfVarb(1, "x");
     },
     "\nWriteIf(2)= 1\nMeasureVar(2)=\nCompare(2)= 2\nVarIdx(2)= 0\nValue(2)= 0\nVarb(2)=x\n"
     "Expression(2)=\nDisableWriteIf(2)= 0\n"},
    {"several write-ifs have two", [](model::Project& p) { p.tables[1].WriteIf = 2; },
     "\nWriteIf(2)= 2\nMeasureVar(2, 1)=\nCompare(2, 1)= 2\nVarIdx(2, 1)= 0\nValue(2, 1)= 0\n"
     "Varb(2, 1)=\nExpression(2, 1)=\nMeasureVar(2, 2)=\n"},
    {"battery values are filed for tables that are on",
     [](model::Project& p) {
       p.tables[1].TableOn = true;
       p.powerOut.sets[1].Table = {1, 2, 4};
     },
     "\n[POWEROUT TABLES]\nDataResolution1=FP2\nPublic1= 0\nDataResolution2=FP2\nPublic2= 0\n"
     "Table(1,2)= 0\nTable(2,2)= 2\nHistogramCode(1)=10,0,100,0\nRainHistoCode(1)="},
    {"offsets of their own, and bare ones",
     [](model::Project& p) {
       auto& block = support::addBlock(p, BlockKind::voltage, 1, 3);
       block.elements[1].AliasExcept = true;
       block.elements[2].AliasOffset = 0.5;
     },
     "\nAliasOffset(1,1)=0\nAliasExcept(1,1)= 0\nAliasName(1,2)=\nAliasUnits(1,2)=\n"
     "AliasMult(1,2)= 1\nAliasOffset(1,2)= 0\nAliasExcept(1,2)=-1\nAliasName(1,3)=\n"
     "AliasUnits(1,3)=\nAliasMult(1,3)= 1\nAliasOffset(1,3)= 0.5\n"},
    {"levels stand within their table; tables come before elements",
     [](model::Project& p) {
       auto& block = support::addBlock(p, BlockKind::isolated, 1, 1);
       block.processing[7].LevNumLevels = 2;
       block.processing[7].LevelVarOne = {1, 2.5};
       block.elements[0].Table = {128};
     },
     "\nHistogramCode(1,8)=10,0,100,0\nRainHistoCode(1,8)=10,10,0,100,1,0\n"
     "IsoLevelCode(1,8)=10,1,0,0\nIsoLevelMeas(1,8)= 0\nIsoLevelMeasName(1,8)=\n"
     "IsoLevNumLevels(1,8)= 2\nIsoLevelVarOne(1,8,1)= 1\nIsoLevelVarOne(1,8,2)= 2.5\n"
     "IsoLevNumTests(1,8)= 0\nIsoNumDims(1,8)= 0\nTable(1,1,1)= 128\nTable(1,2,1)= 0\n"},
    {"bridges file gauge factors",
     [](model::Project& p) { support::addBlock(p, BlockKind::bridge, 1, 1); },
     "\nAliasMult(1,1)= 1\nAliasGFactor(1,1)= 2\nAliasExcept(1,1)= 0\n\n[EXCITATION]\n"},
    {"filter slots come before the blocks, blocks in a gap included",
     [](model::Project& p) {
       p.filterSlots[1].BlockCount = 2;
       p.block(BlockKind::filter, 2).Reps = 1;
       fitLists(p);
     },
     "\n[FILTER BLOCKS]\nBlockCount(1)= 0\nOverSample(1)= 0\nFiltFreqNum(1)= 100\n"
     "FiltFFTSampleRate(1)= 10000\nFiltNoSubscan(1)= 0\nFFTType(1)= 0\nFFTLength(1)= 1024\n"
     "FFTModule(1)= 0\nBlockCount(2)= 2\nOverSample(2)= 0\nFiltFreqNum(2)= 100\n"
     "FiltFFTSampleRate(2)= 10000\nFiltNoSubscan(2)= 0\nFFTType(2)= 0\nFFTLength(2)= 1024\n"
     "FFTModule(2)= 0\nPublic(1)= 0\nReps(1)= 0\n"},
    {"a written port group",
     [](model::Project& p) {
       p.ports.groups.resize(1);
       p.ports.groups[0].ports[0].Include = true;
     },
     "\n[PORT SETUP]\nCodeType= 1\nPublic(1)= 0\nDataResolution(1)=IEEE4\nByteMode(1)= 0\n"
     "ReadMode(1)= 0\nInclude(1,1)=-1\nPolarity(1,1)= 0\nMeasureVar(1,1,1)=\n"
     "Compare(1,1,1)= 2\nValue(1,1,1)= 0\nExpression(1,1,1)=\nMeasureVar(1,1,2)=\n"},
    {"a read port group",
     [](model::Project& p) {
       p.ports.groups.resize(1);
       p.ports.groups[0].ReadMode = true;
       p.ports.groups[0].Table = {1, 0, 0, 0, 0, 0, 0, 32};
     },
     "\nReadMode(1)=-1\nInclude(1,1)= 0\nBinaryMask(1,1,1)= 0\nInclude(1,2)= 0\n"
     "BinaryMask(1,2,1)= 0\nInclude(1,3)= 0\nBinaryMask(1,3,1)= 0\nInclude(1,4)= 0\n"
     "BinaryMask(1,4,1)= 0\nInclude(1,5)= 0\nBinaryMask(1,5,1)= 0\nInclude(1,6)= 0\n"
     "BinaryMask(1,6,1)= 0\nInclude(1,7)= 0\nBinaryMask(1,7,1)= 0\nInclude(1,8)= 0\n"
     "BinaryMask(1,8,1)= 0\nHistogramCode(1,1,1)=10,0,100,0\nTable(1,1,1,1)= 1\n"},
    {"flag states are named before the word",
     [](model::Project& p) { p.flags[1].states[0].Expression = "TBlk1(1) > 5"; },
     "\nFlagInclude(2)= 0\nFlagOn(2)=-1\nState1FlagVar(2)=\nState1FlagCompare(2)= 2\n"
     "State1FlagValue(2)= 0\nState1FlagExpression(2)=TBlk1(1) > 5\nState2FlagVar(2)=\n"},
    {"the states of an excitation channel take turns",
     [](model::Project& p) {
       p.excitation.channels.resize(1);
       p.excitation.channels[0].State2 = -2500;
     },
     "\n[EXCITATION]\nExcitePublic= 0\nInclude(1)= 0\nDynamicStatic(1)= 0\nState1(1)= 0\n"
     "State2(1)=-2500\nDelay(1)= 0\nExcite1MeasVar(1)=\nExcite2MeasVar(1)=\n"
     "Excite1Compare(1)= 2\nExcite2Compare(1)= 2\nExcite1Value(1)= 0\nExcite2Value(1)= 0\n"
     "Excite1Expression(1)=\nExcite2Expression(1)=\n\n[SPEED CALCULATOR]\n"},
    {"a CAN value names its table last",
     [](model::Project& p) {
       p.can.CanCount = 1;
       fitLists(p);
       p.can.items[0].NumVals = 2;
       fitLists(p);
       p.can.items[0].values[1].Table = {0, 2};
     },
     "\nCaNumDims(1,2)= 0\nTable(1,1,2)= 0\nTable(1,2,2)= 2\nHistogramCode(1,3)=10,0,100,0\n"},
    {"definitions of fields stand last",
     [](model::Project& p) {
       p.calculated.CalcFieldCount = 2;
       fitLists(p);
       p.calculated.fields[1].CalcName = "Power";
     },
     "\nCalcField(2,8)= 0\nCalcName(2)=Power\nCalcType(2)= 0\nCalcExpress(2)=\nCalcUnits(2)=\n"
     "CalcAvg(2)= 0\n\n"},
    {"quantities are in the order of a version that does not move them",
     [](model::Project& p) { p.configuration.Version = "1.2"; }, "[GN7 VERSION]\nVersion=1.5\n"},
    {"no text can break a line or begin a section",
     [](model::Project& p) { p.configuration.Operator = "A[1]\r\nB=C"; },
     "\nOperator=A(1)  B=C\nIDNumber="},
};

TEST(FileText, WritesEveryFamilyInItsForm) {
  for (const Fragment& fragment : fragments) {
    SCOPED_TRACE(fragment.name);
    model::Project project;
    KGEN_COMMON::SetAllDefaults(project);
    fragment.change(project);
    const std::string text = textOf(project);
    EXPECT_NE(text.find(asFile(fragment.lines)), std::string::npos) << text;
  }
}

TEST(FileText, SavingKeepsStampAndStopCountInTheProject) {
  model::Project project = support::demoProject();
  project.tables[0].TrigTable = 4;
  project.tables[0].TrigTabStop = -1;
  KGEN_GENFILE::prepareForSave(project, support::demoStamp());
  EXPECT_EQ(project.tables[0].TrigTabStop, 4);
  EXPECT_EQ(project.configuration.PCTime, "07-04-2026 13:05:09");
  EXPECT_EQ(project.configuration.VersionLastSaved, "6.0.0001");
}

}  // namespace
