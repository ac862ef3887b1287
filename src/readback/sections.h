#pragma once

#include <string>
#include <string_view>

#include "readback/outline.h"

/// The sections of the expected program, in the order of expectedProgram().
namespace readback {

Expectation expectedProgram(const Outline& outline);

void expectConstants(Expectation& out, const Outline& outline);
void expectVariables(Expectation& out, const Outline& outline);
void expectTables(Expectation& out, const Outline& outline);
void expectInitialisation(Expectation& out, const Outline& outline);
void expectControls(Expectation& out, const Outline& outline);  // flags, ports, excitation
void expectMeasurements(Expectation& out, const Outline& outline);
void expectZeroSub(Expectation& out, const Outline& outline);
void expectTableLogic(Expectation& out, const Outline& outline);
void expectCanSetup(Expectation& out, const Outline& outline);
void expectCanReception(Expectation& out, const Outline& outline);
void expectLowPriority(Expectation& out, const Outline& outline);

/// A constant of a source as an argument, with the key of its value.
Part constantOf(const Source& source, std::string_view suffix);

/// Items that the low-priority sequence sends.
std::vector<const Source*> transmittingItems(const Outline& outline);
void expectCanExchangeSetup(Expectation& out, const Outline& outline);
void expectCanExchange(Expectation& out, const Outline& outline);

/// Fills the sources of level crossings for the tables inside or outside the filter subscan.
void expectCrossingSources(Expectation& out, const Outline& outline, bool inSubscan);
void expectTableCall(Expectation& out, const Table& table);

/// Scans of the zero subroutine, and measurements in its filter subscans.
struct ZeroCounts {
  std::int64_t scans = 0, filter = 0;
};
ZeroCounts zeroCounts(const Outline& outline);

std::int64_t bufferedScans(const model::Project& project);

}  // namespace readback
