#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "model/document_stamp.h"
#include "model/project.h"
#include "projectfile/project_file.h"

namespace kgen {

class Parser;

/// A project as it was read, with the path that was opened.
struct OpenedProject {
  std::string path;
  model::Project project = KGEN_COMMON::newProject();
  KGEN_GENFILE::LoadReport report;
};

/// Reads a project on top of the defaults; what the reader noticed goes to standard error. A name
/// without "." gets ".GN7", "-" is standard input. Throws Failure when it can't be read.
std::unique_ptr<OpenedProject> openProject(const std::string& path,
                                           const KGEN_GENFILE::LoadOptions& options = {});

/// Writes base + ".GN7", or the file that it is a link to; a backup that could not be deleted is
/// said. Throws ports::FileError.
void saveProject(const std::string& base, const model::Project& project,
                 const model::DocumentStamp& stamp, bool flush = true);

/// "-" as messages name it.
std::string shownName(const std::string& path);

/// The part of a path after its last "/".
std::string_view fileNameOf(std::string_view path);

/// The path up to the first "." of the file name: what program and table information are named by.
std::string baseOf(std::string_view path);

/// The path without the extension of a project file; other dots belong to the name.
std::string withoutProjectExtension(std::string_view path);

/// What a document that is saved under this base path now says about its making.
model::DocumentStamp stampFor(std::string_view base, bool dunmoreHost = false);

/// Adds --host. True once it names the Dunmore host, in any case of letters.
void addHostOption(Parser& parser, std::string& host);
bool isDunmore(const std::string& host);

}  // namespace kgen
