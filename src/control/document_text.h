#pragma once

#include <string>

#include "model/document_stamp.h"
#include "model/project.h"

namespace control {

/// What is made of a project beside its file.
enum class Document { program, tables, wiring };

/// The text of a document as a save would write it; for a program that gets too long, why there is
/// none.
std::string documentText(Document document, const model::Project& project,
                         const model::DocumentStamp& stamp);

}  // namespace control
