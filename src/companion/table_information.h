#pragma once

#include <string>

#include "model/document_stamp.h"
#include "model/project.h"
#include "model/stored_outputs.h"

/// Documents written beside the program.
namespace companion {

/// The text of the table information file (.TI7); lines end in CR LF.
std::string tableInformation(const model::Project& project, const model::DocumentStamp& stamp);

/// " Voltage Block 2 ": what heads the fields of a group.
std::string titleOf(const model::StoredGroup& group);

}  // namespace companion
