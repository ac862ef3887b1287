#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/document_stamp.h"
#include "model/project.h"
#include "ports/file_store.h"

/// The project file (.GN7): reading and writing.
namespace KGEN_GENFILE {

/// A remark about one line of the file, counted from 1.
struct LineNote {
  std::size_t line = 0;
  std::string text;
  bool operator==(const LineNote&) const = default;
};

struct LoadOptions {
  bool dunmoreHost = false;  // forces the K700X
  bool listIgnored = false;  // fill LoadReport::ignored
};

struct LoadReport {
  std::optional<std::string> error;  // the file could not be read; the project is untouched
  std::vector<LineNote> notes;       // values that were clamped, odd but usable content
  std::size_t ignoredLines = 0;      // lines with "=" that no known key took
  std::vector<LineNote> ignored;     // those lines, when asked for
  bool modelForced = false;          // the Dunmore host made it a K700X: the project has changed
};

/// Reads a project file into the project. Keys that the file lacks keep their values; a file that
/// can't be read whole leaves the project as it was. "-" reads standard input.
LoadReport load(const std::string& path, model::Project& project, const LoadOptions& options = {});
/// The same for a project that nobody needs when the reading fails: it may then be half filled.
LoadReport loadInPlace(const std::string& path, model::Project& project,
                       const LoadOptions& options = {});
/// Like load, from text in memory.
LoadReport loadText(std::string_view content, model::Project& project,
                    const LoadOptions& options = {});

/// The whole file in the current layout; VersionLastSaved and PCTime are taken from the stamp.
std::string fileText(const model::Project& project, const model::DocumentStamp& stamp);

/// Writes base + ".GN7". The old file is kept as base + "._EN" until the new one is complete and
/// (with flush) on the disk. Throws ports::FileError, whose text names both files. The answer is a
/// remark when only the backup could not be deleted, otherwise empty.
[[nodiscard]] std::string save(ports::FileStore& files, const std::string& base,
                               const model::Project& project, const model::DocumentStamp& stamp,
                               bool flush = true);

/// The name under which a save keeps the old file.
std::string backupOf(const std::string& base);

/// True for a project file in the current layout whose end is missing.
bool isCutShort(std::string_view content);

/// What a save keeps in the model: sets VersionLastSaved and PCTime, settles negative stop counts
/// and the codes of ranges.
void prepareForSave(model::Project& project, const model::DocumentStamp& stamp);

}  // namespace KGEN_GENFILE
