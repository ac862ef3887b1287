#pragma once

#include <string>
#include <vector>

#include "generator/program_plan.h"
#include "generator/program_text.h"

/// The sections of a program, each a function that appends its lines. Their order is that of
/// SAVEDLD::generate.
namespace generator {

void emitHeader(ProgramText& out, const ProgramPlan& plan);
void emitConfiguration(ProgramText& out, const ProgramPlan& plan);
void emitSlotConfigure(ProgramText& out, const ProgramPlan& plan);
void emitConstants(ProgramText& out, const ProgramPlan& plan);
void emitDeclarations(ProgramText& out, const ProgramPlan& plan);
void emitOutputSection(ProgramText& out, const ProgramPlan& plan);
void emitSubroutines(ProgramText& out, const ProgramPlan& plan);
void emitProgramBody(ProgramText& out, const ProgramPlan& plan);

// Parts of the constants section.
void emitFilterConstants(ProgramText& out, const ProgramPlan& plan);
void emitCanDeclarations(ProgramText& out, const ProgramPlan& plan);
/// Value, multiplier and offset arrays, units, zero, calibration and level-crossing variables.
void emitBlockArrays(ProgramText& out, const SourceBlock& block);
void emitCrossingArrays(ProgramText& out, const SourceBlock& block);

// Parts of the program body.
void emitInitialisation(ProgramText& out, const ProgramPlan& plan);
void emitCanPreliminaries(ProgramText& out, const ProgramPlan& plan);
void emitCalibrationSetup(ProgramText& out, const ProgramPlan& plan);
void emitControls(ProgramText& out, const ProgramPlan& plan);  // flags, ports, excitation
void emitMeasurements(ProgramText& out, const ProgramPlan& plan);
void emitFilterMeasurements(ProgramText& out, const ProgramPlan& plan);
void emitCanReception(ProgramText& out, const ProgramPlan& plan);
void emitFieldCalibration(ProgramText& out, const ProgramPlan& plan);
/// Fills the sources of the level crossings that the given tables store.
void emitCrossingSources(ProgramText& out, const ProgramPlan& plan, bool inSubscan);
void emitTableLogic(ProgramText& out, const ProgramPlan& plan);
void emitTableCall(ProgramText& out, const PlannedTable& table);
void emitLowPriority(ProgramText& out, const ProgramPlan& plan);
/// Variables, and the lines of the loop, that send CAN frames and read the replies.
bool exchangesCanFrames(const ProgramPlan& plan);
void emitCanExchangeDeclarations(ProgramText& out, const ProgramPlan& plan);
void emitCanExchange(ProgramText& out, const ProgramPlan& plan);

/// The measurement instruction of a whole block, without indent.
std::string instruction(const ProgramPlan& plan, const SourceBlock& block);
/// Of one multiplexer of a TCMUX block.
std::string multiplexerInstruction(const SourceBlock& block,
                                   const model::MultiplexerPlace& multiplexer);
/// The same measurement into the zero variable with offset 0, for the zero subroutine.
std::string zeroForm(const SourceBlock& block, const std::string& instruction);

/// How long the zero subroutine measures: main scans, and measurements of its filter subscans.
struct ZeroTiming {
  std::int64_t scans = 0;
  std::int64_t filterCounts = 0;
  double seconds = 0;
};
ZeroTiming zeroTiming(const ProgramPlan& plan);

/// "True" or "False".
std::string_view word(bool value);
/// "Public " or "Dim ".
std::string_view scope(bool isPublic);

/// " Secs" and so on for a time-unit code.
std::string_view commentUnits(int unitCode);

}  // namespace generator
