#include "control/document_text.h"

#include "companion/table_information.h"
#include "companion/wiring_diagram.h"
#include "generator/program_writer.h"

namespace control {

std::string documentText(Document document, const model::Project& project,
                         const model::DocumentStamp& stamp) {
  if (document == Document::tables) return companion::tableInformation(project, stamp);
  if (document == Document::wiring) return MAKEWIRE::wiringText(project, stamp);
  try {
    return SAVEDLD::generate(project, stamp).text;
  } catch (const SAVEDLD::ProgramTooLong& tooLong) {
    return tooLong.what();
  }
}

}  // namespace control
