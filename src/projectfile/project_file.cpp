#include "projectfile/project_file.h"

#include "projectfile/file_input.h"
#include "projectfile/project_reader.h"
#include "projectfile/project_writer.h"
#include "projectfile/rows.h"
#include "text/strings.h"

namespace KGEN_GENFILE {
namespace {

using projectfile::ProjectReader;
using text::concat;

constexpr std::string_view extension = ".GN7";
constexpr std::string_view backupExtension = "._EN";

/// The extension is added to a file name without any point; folders do not count.
std::string withExtension(const std::string& path) {
  if (path == "-") return path;
  const std::size_t separator = path.find_last_of("/\\");
  const std::size_t name = separator == std::string::npos ? 0 : separator + 1;
  const bool hasPoint = path.find('.', name) != std::string::npos;
  return hasPoint ? path : concat(path, extension);
}

LoadReport refused(std::string reason) {
  LoadReport report;
  report.error = std::move(reason);
  return report;
}

LoadReport concluded(ProjectReader& reader, std::string_view name) {
  std::optional<std::string> reason = reader.failure();
  if (!reason && !reader.finish()) reason = "no section and no version line in it is known";
  if (reason)
    return refused(concat(name, ": is not a project file: ", *reason,
                          "; choose a file that the generator saved"));
  return std::move(reader.report());
}

projectfile::SaveMarks marksFrom(const model::DocumentStamp& stamp) {
  return {std::string(model::generatorVersion),
          concat(model::dateText(stamp.now), " ", model::timeText(stamp.now))};
}

[[noreturn]] void failSave(const std::string& file, std::string_view reason,
                           std::string_view state) {
  throw ports::FileError(concat(file, ": ", state, " (", reason, ")"));
}

/// Half a project beside the backup of a save that failed: that backup is the last good version.
bool isLeftByFailedSave(const ports::FileStore& files, const std::string& file,
                        const std::string& backup) {
  return files.exists(backup) && isCutShort(files.read(file)) && !isCutShort(files.read(backup));
}

}  // namespace

LoadReport loadInPlace(const std::string& path, model::Project& project,
                       const LoadOptions& options) {
  const std::string file = withExtension(path);
  ProjectReader reader(project, options);
  if (std::string reason = projectfile::readFile(file, reader); !reason.empty())
    return refused(std::move(reason));
  return concluded(reader, file == "-" ? "standard input" : file);
}

LoadReport load(const std::string& path, model::Project& project, const LoadOptions& options) {
  model::Project next = project;
  LoadReport report = loadInPlace(path, next, options);
  if (!report.error) project = std::move(next);
  return report;
}

LoadReport loadText(std::string_view content, model::Project& project, const LoadOptions& options) {
  model::Project next = project;
  ProjectReader reader(next, options);
  reader.take(content, true);
  LoadReport report = concluded(reader, "text");
  if (!report.error) project = std::move(next);
  return report;
}

std::string fileText(const model::Project& project, const model::DocumentStamp& stamp) {
  return projectfile::sectionsText(project, marksFrom(stamp), projectfile::fileStyle);
}

std::string save(ports::FileStore& files, const std::string& base, const model::Project& project,
                 const model::DocumentStamp& stamp, bool flush) {
  const std::string text = fileText(project, stamp);
  const std::string file = concat(base, extension);
  const std::string backup = backupOf(base);
  std::string state =
      concat("not saved; it and ", backup, " are as they were: check the folder's access rights");
  try {
    if (files.exists(file) && !isLeftByFailedSave(files, file, backup)) {
      files.remove(backup);
      files.rename(file, backup);
    }
    state = concat("not saved completely; the version before it, if there was one, is ", backup,
                   ": free space or choose another folder, then save again");
    files.write(file, text, flush);
  } catch (const ports::FileError& error) {
    failSave(file, error.what(), state);
  }
  try {
    files.remove(backup);
  } catch (const ports::FileError& error) {
    return concat(file, ": saved, but its backup ", backup, " could not be deleted: delete it (",
                  error.what(), ")");
  }
  return {};
}

std::string backupOf(const std::string& base) { return concat(base, backupExtension); }

bool isCutShort(std::string_view content) {
  const bool hasEnd = content.ends_with("\r\n\r\n") || content.ends_with("\n\n");
  return !hasEnd || content.rfind(projectfile::fieldHeader) == std::string_view::npos;
}

void prepareForSave(model::Project& project, const model::DocumentStamp& stamp) {
  projectfile::SaveMarks marks = marksFrom(stamp);
  project.configuration.Version = projectfile::filedVersion(project.configuration);
  project.configuration.VersionLastSaved = std::move(marks.VersionLastSaved);
  project.configuration.PCTime = std::move(marks.PCTime);
  for (model::OutputTable& table : project.tables)
    if (table.TrigTabStop < 0) table.TrigTabStop = table.TrigTable;
  projectfile::settleRangeCodes(project);
}

}  // namespace KGEN_GENFILE
