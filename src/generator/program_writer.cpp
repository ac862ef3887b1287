#include "generator/program_writer.h"

#include "generator/emitters.h"
#include "model/repair.h"

namespace SAVEDLD {

Program generate(const model::Project& given, const model::DocumentStamp& stamp) {
  std::vector<std::string> notes;
  const std::optional<model::Project> mended = model::repaired(given, notes);
  const model::Project& project = mended ? *mended : given;
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
  notes.insert(notes.end(), plan.notes.begin(), plan.notes.end());
  return {out.take(), lines, std::move(notes)};
}

}  // namespace SAVEDLD
