#include "logscript/program.h"

namespace logscript {

std::string_view wordOf(StatementKind kind) {
  switch (kind) {
    case StatementKind::data:
      return "Data";
    case StatementKind::read:
      return "Read";
    case StatementKind::dataTable:
      return "DataTable";
    case StatementKind::sub:
      return "Sub";
    case StatementKind::beginProg:
      return "BeginProg";
    case StatementKind::slowSequence:
      return "SlowSequence";
    case StatementKind::scan:
      return "Scan";
    case StatementKind::subScan:
      return "SubScan";
    case StatementKind::burst:
      return "BeginBurstTrigger";
    case StatementKind::doLoop:
      return "Do";
    case StatementKind::whileLoop:
      return "While";
    case StatementKind::forLoop:
      return "For";
    case StatementKind::ifThen:
      return "If";
    case StatementKind::elseIf:
      return "ElseIf";
    case StatementKind::otherwise:
      return "Else";
    case StatementKind::select:
      return "Select Case";
    case StatementKind::caseOf:
      return "Case";
    case StatementKind::exitBlock:
      return "Exit";
    default:
      return "=";
  }
}

std::size_t Program::lines() const {
  const bool lastIsEmpty = lineStarts.back() == text.size();
  return lineStarts.size() - (lastIsEmpty ? 1 : 0);
}

}  // namespace logscript
