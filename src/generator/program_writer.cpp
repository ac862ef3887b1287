#include "generator/program_writer.h"

#include "generator/emitters.h"

namespace SAVEDLD {

Program generate(const model::Project& project, const model::DocumentStamp& stamp) {
  const generator::ProgramPlan plan(project, stamp);
  generator::ProgramText out;
  emitHeader(out, plan);
  emitConfiguration(out, plan);
  if (isK700X(project.configuration)) emitSlotConfigure(out, plan);
  emitConstants(out, plan);
  emitDeclarations(out, plan);
  emitOutputSection(out, plan);
  emitSubroutines(out, plan);
  emitProgramBody(out, plan);
  const int lines = out.lines();
  return {out.take(), lines, plan.notes};
}

}  // namespace SAVEDLD
