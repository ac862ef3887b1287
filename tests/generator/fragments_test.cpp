#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "generator/program_writer.h"
#include "support/demo_project.h"
#include "support/program_reader.h"

namespace {

using model::BlockKind;
using model::Condition;
using model::ModuleKindIndex;

constexpr int less = 0;
constexpr int greater = 2;
constexpr int equal = 4;

Condition compared(const std::string& variable, int code, double value) {
  Condition condition;
  condition.MeasVar = variable;
  condition.Compare = static_cast<std::int16_t>(code);
  condition.Value = value;
  return condition;
}

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

/// The program is correct and has the lines of the fragment in their order, others between them.
void expectLines(const model::Project& project, const std::string& fragment) {
  const std::string program = SAVEDLD::generate(project, support::demoStamp()).text;
  EXPECT_EQ(support::faultList(program, support::readProgram(program).faults), "");
  const std::vector<std::string> lines = linesOf(program);
  auto from = lines.begin();
  for (const std::string& line : linesOf(fragment.substr(1))) {
    const auto found = std::find(from, lines.end(), line);
    if (found == lines.end()) {
      ADD_FAILURE() << "missing or out of order: " << line << "\n" << program;
      return;
    }
    from = found + 1;
  }
}

/// A 7151 in slot 4 and a 7121 in slot 5, with two thermocouples and two voltages.
model::Project measuringProject() {
  model::Project project =
      support::projectWith(2, {ModuleKindIndex::adaptor7151, ModuleKindIndex::analog7121});
  support::addBlock(project, BlockKind::thermocouple, 1, 2);
  support::addBlock(project, BlockKind::voltage, 1, 2).MeasType = "SE";
  return project;
}

TEST(Fragments, LowPriorityWithEverythingOn) {
  model::Project project = measuringProject();
  model::LoggerConfiguration& c = project.configuration;
  c.MonitorPower = {false, false, true, true, true, true};
  c.BattTripVolts = 12;
  c.RetryInterval = 10;
  c.BattRetryMins = true;
  c.EnablePowerOff = c.EnableTime = c.EnableOnTime = true;
  c.PowerOffMeasVar = "VBlk1(2)";
  c.PowerOffCompare = greater;
  c.PowerOffValue = 80;
  c.PowerOffPOTime = 2;
  c.TimeOffHourShow = c.TimeOffMinShow = true;
  c.TimeOffHour = 18;
  c.TimeOffMin = 30;
  c.TimeOnYear = 2026;
  c.TimeOnMonth = 7;
  c.TimeOnDay = 5;
  c.TimeOnHour = 6;
  c.StatusMonCount = 1;
  c.Status = {{"BattVolt", " <", "11.8", "Flag(4) = True"}};
  expectLines(project, R"(
'BackgroundSequence
SlowSequence                                                     'Used for slow measurements
Dim CountSlow                                                    'Dimension CountSlow
Dim TripVolt                                                     'Dimension TripVolt
Dim CountAvg                                                     'Dimension CountAvg
Dim StopTime(9)                                                  'Dimension StopTime
Dim StartTime(6)                                                 'Dimension StartTime
StartTime(1) = 2026                                              'Year
StartTime(2) = 7                                                 'Month
StartTime(3) = 5                                                 'Day
StartTime(4) = 6                                                 'Hour
StartTime(5) = 0                                                 'Minute
StartTime(6) = 0                                                 'Second
   Scan(30,Sec,0,0)                                              'Slow scan once every 30.00 Secs
      CountSlow = CountSlow + 1                                  'Count the slow scans
      Battery(TripVolt,0)                                        'Battery voltage for battery saver
      If TripVolt <12 Then CountAvg = CountAvg + 1               'Below the trip level
      If TripVolt >=12 Then CountAvg = 0                         'Above the trip level
      If CountAvg >=5 Then PowerOff (0,10,Min)                   'Battery saver
      If VBlk1(2) >80 Then PowerOff (StartTime(),2,Hr)           'Conditional power off
      RealTime(StopTime())                                       'Current time
      If StopTime(4) = 18 And StopTime(5) = 30 Then PowerOff (StartTime(),0,0) 'Time power off
      If CountSlow Mod 10 = 0 Then Calibrate()                   'Self calibration
 If BattVolt <11.8 Then
       Flag(4) = True
  End If
   Next Scan)");
}

TEST(Fragments, CanItemsThatReceiveAndThatAskFirst) {
  model::Project project = measuringProject();
  project.configuration.CanBusQty = 1;
  project.can.CanCount = 2;
  project.can.CanDataIDType = 1;
  project.can.items.resize(2);
  model::CanItem& receives = project.can.items[0];
  receives.DataId = "&H18FEEE00";
  receives.ItemMessageType = 3;
  receives.NumBits = 16;
  receives.NumVals = 2;
  receives.Public = true;
  model::CanItem& asks = project.can.items[1];
  asks.DataStyle = 2;
  asks.TxDataId = "2015";
  asks.TxDataFrame = "&H0201000000000000";
  asks.DataId = "2024";
  asks.RxDataMatch = "&HXX41XXXXXXXXXXXX";
  asks.ItemMessageType = 1;
  asks.StartBit = 25;
  asks.NumBits = 8;
  fitLists(project);
  expectLines(project, R"(
Const CREP1 = 2                                                  'Block1 repetitions
Public CBlk1(CREP1)                                              'Block1 dimensioned source
      CANBus(CBlk1(),CanAddress,CanQuanta,CanSeg1,CanSeg2,419360256,3,1,16,2,CMULT1,COSET1)
Dim idx                                                          'Index for looping through Rx Retries
Dim NumRxReads(1)                                                'Number of Rx Reads to perform for each CAN item
Public ByteTx(8),ByteRx(8)                                       'Intermediate Transmit and Receive placeholders
Const CANDelay = 10                                              'Delay in mSec for each CAN TxRx Loop : 
NumRxReads(1) = 10                                               'Execute 10 Rx reads for Tx #1
   Do                                                            'With CANBUS TxRx, we need multiple,repeating scans
      ByteTx(1) = 2
      ByteTx(2) = 1
      CANBus(ByteTx(1),CanAddress,CanQuanta,CanSeg1,CanSeg2,2015,7,1,8,8,1.0,0.0)
      For idx = 1 To NumRxReads(1)
         CANBus(ByteRx(1),CanAddress,CanQuanta,CanSeg1,CanSeg2,2024,1,1,8,8,1.0,0.0)
         If ByteRx(2) = 65 Then CANBus(CBlk2(),CanAddress,CanQuanta,CanSeg1,CanSeg2,2024,1,25,8,1,CMULT2,COSET2)
         Delay(CANDelay,mSec)
      Next idx
   Loop)");
}

TEST(Fragments, PortsAndAnalogOutputs) {
  model::Project project = support::projectWith(
      2, {ModuleKindIndex::adaptor7151, ModuleKindIndex::analog7121, ModuleKindIndex::analog7121,
          ModuleKindIndex::excitation7131, ModuleKindIndex::counter7141});
  support::addBlock(project, BlockKind::voltage, 1, 1);
  model::Port& written = project.ports.groups[0].ports[1];
  written.Include = true;
  written.conditions[0] = compared("VBlk1(1)", greater, 50);
  project.ports.groups[0].Public = true;
  model::PortGroup& read = project.ports.groups[1];
  read.ReadMode = read.Public = true;
  for (model::Port& port : read.ports) port.Include = true;
  model::ExcitationChannel& twoStates = project.excitation.channels[0];
  twoStates = {true, 1, 2500, 0, 500, {}};
  twoStates.conditions = {compared("VBlk1(1)", greater, 50), compared("VBlk1(1)", less, 10)};
  project.excitation.channels[1].Include = true;
  project.excitation.channels[1].State1 = 5000;
  expectLines(project, R"(
Public WritPortL                                                 'Declare WritPort (1-8) variable
Dim Excite_7_1                                                   'Declare Excitation variable
      WritPortL = 0
      If VBlk1(1) > 50 Then WritPortL = WritPortL + 2
      WriteIO(7,1,2,WritPortL)
      ReadIO(ReadPortL,8,1,255)
      If VBlk1(1) > 50 Then                                      'Test State 1 expression
      Excite_7_1 = 2500                                          'Set value
      ElseIf VBlk1(1) < 10 Then                                  'Test State 2 expression
      Excite_7_1 = 0                                             'Set value
      End If                                                     'End test
      Excite(7,1,1,Excite_7_1,500)                               'Set excitation channel
      Excite(7,2,1,5000))");
  expectLines(project, R"(
Public ReadPortL                                                 'Declare ReadPort (1-8) variable)");
}

TEST(Fragments, BurstOnAMeasurement) {
  model::Project project = measuringProject();
  project.scan.ScanMode = 1;
  project.scan.BurstTrigger = 1;
  project.scan.ScanBufferSize = 100;
  project.scan.PostTriggerScans = 400;
  project.scan.TriggerMeasVar = "VBlk1(1)";
  project.scan.TriggerCompare = greater;
  project.scan.TriggerValue = 5;
  expectLines(project, R"(
'      _________________________ Burst Trigger _________________________
      BeginBurstTrigger(VBlk1(1) > 5)                            'Begin burst scan
      VoltSE(VBlk1(1),1,VRNG1,5,5,VSETL1,VINT1,VMULT1,VOSET1)
      VoltSE(VBlk1(2),1,VRNG1,5,6,VSETL1,VINT1,VMULT1,VOSET1)
      EndBurstTrigger(100,400)                                   'Stop scan 400 scans after trigger)");
}

model::OutputTable& triggeredTable(model::Project& project, std::size_t number) {
  model::OutputTable& table = project.tables[number - 1];
  table.TableOn = true;
  table.TrigTable = 2;
  table.TrigTabStop = 1;
  table.WriteIf = 1;
  table.PreTriggerScans = 10;
  table.AftTriggerScans = 50;
  table.conditions.trigger(0, 1) = compared("TBlk1(1)", greater, 90);
  table.conditions.TriggerLogic(0, 1, "Or");
  table.conditions.trigger(0, 2) = compared("Flag(5)", equal, -1);
  table.conditions.trigger(1, 1) = compared("TBlk1(1)", less, 80);
  table.conditions.writeIf(1) = compared("VBlk1(1)", greater, 2);
  return table;
}

TEST(Fragments, TriggeredTableOnTheCard) {
  constexpr std::uint8_t average = 8;
  constexpr std::uint8_t histogramAndLevels = 32 + 128;
  model::Project project = measuringProject();
  model::OutputTable& table = triggeredTable(project, 2);
  table.TableName = "Event";
  table.OutIntUnits = 2;
  table.FlagTable = 3;
  table.TableLocation = 3;
  table.PamCard = 1;
  table.AutoSize = false;
  table.Buffer = 5000;
  model::MeasurementBlock& block = project.block(BlockKind::voltage, 1);
  block.elements[0].Table[1] = histogramAndLevels;
  block.elements[1].Table[1] = average;
  block.processing[1].LevelCode = "10,5,0,0";
  block.processing[1].LevelMeasName = "TBlk1(1)";
  block.processing[1].LevNumLevels = 10;
  block.processing[1].LevNumTests = 5;
  block.processing[1].NumDims = 2;
  fitLists(project);
  expectLines(project, R"(
DataTable(Event,True,-1)                                         'Trigger, auto size
   DataInterval(0,PERIOD,P_UNITS,10)                             '1.00 Secs interval, 10 lapses
   DataEvent(10,bStartTrigger,bStopTrigger,50)                   'PreTrigger,Start,Stop,PostTrigger
   PamOut(4,1,0,5000)                                            'PAM card A, size 5000
   Average(1,VBlk1(2),FP2,MeasDisable)                           ' Reps,Source,Res
   Histogram(VBlk1(1),FP2,MeasDisable,10,0,0,100)                ' Reps,Source,Res
   LevelCrossing(LCVBlk1_1(),FP2,MeasDisable,10,5,VBlk1LC1(),VBlk1LC2(),0,0) ' Reps,Source,Res
EndTable
Sub TriggerCallEvent
   bStartTrigger = (TBlk1(1) > 90 Or Flag(5) = True)
   bStopTrigger = (TBlk1(1) < 80)
   bWriteIfCall = (VBlk1(1) > 2)
End Sub
      LCVBlk1_1(1) = VBlk1(1)                                    '1st source dimension for LCVBlk
      LCVBlk1_1(2) = TBlk1(1)
      Call TriggerCallEvent
      If bWriteIfCall And Flag(3) Then CallTable Event)");
}

TEST(Fragments, TableAtTheRateOfTheFilter) {
  model::Project project =
      support::projectWith(2, {ModuleKindIndex::adaptor7151, ModuleKindIndex::analog7121,
                               ModuleKindIndex::analog7121, ModuleKindIndex::excitation7131,
                               ModuleKindIndex::highVoltage7127, ModuleKindIndex::filter7125});
  support::addBlock(project, BlockKind::thermocouple, 1, 1);
  support::addBlock(project, BlockKind::voltage, 1, 1);
  support::addBlock(project, BlockKind::filter, 1, 2);
  project.filterSlots[0].BlockCount = 1;
  project.filterSlots[0].FiltFreqNum = 100;
  model::OutputTable& table = triggeredTable(project, 3);
  table.TableName = "VFilt3";
  table.OutInt = "VFilt";
  expectLines(project, R"(
      SubScan (10000,uSec,100)                                         'VoltFilt SubScan
      MeasDisable = 0
      VoltFilt(FVBlk1(),FREP1,FRNG1,9,1,FOPT1,FEXCIT1,FMULT1,FOSET1)
         Call TriggerCallVFilt3
         If bWriteIfCall Then
            CallTable VFilt3
            MeasDisable = 1
         EndIf
      NextSubScan)");
}

TEST(Fragments, CalculatedFields) {
  model::Project project = measuringProject();
  project.calculated.CalcFieldCount = 2;
  project.calculated.fields.resize(2);
  model::CalculatedField& power = project.calculated.fields[0];
  power.Public = true;
  power.CalcName = "Power";
  power.CalcExpress = "VBlk1(1)*VBlk1(2)/1000";
  model::CalculatedField& average = project.calculated.fields[1];
  average.CalcName = "TAvg";
  average.CalcType = 1;
  average.CalcExpress = "TBlk1(1)";
  average.CalcAvg = 20;
  expectLines(project, R"(
Dim RunAvg(1)                                                    'Dimension running averages
Alias RunAvg(1) = TAvg                                           'Alias for RunAvg Calculation 1
      Power = VBlk1(1)*VBlk1(2)/1000
      AvgRun(RunAvg(1), 1,TBlk1(1),20))");
  expectLines(project, R"(
Public Power                                                     'Calculated field 1)");
}

}  // namespace
