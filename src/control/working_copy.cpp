#include "control/working_copy.h"

#include "projectfile/project_file.h"
#include "text/strings.h"

namespace control {
namespace {

using text::concat;

// A section that readers of project files skip.
constexpr std::string_view originHeader = "[WORKING COPY]\r\nPath=";

}  // namespace

WorkingCopy::WorkingCopy(ports::FileStore& files, const std::string& workDirectory)
    : files_(files), folder_(workDirectory), path_(concat(workDirectory, "/EditTemp.GN7")) {}

void WorkingCopy::write(const model::Project& project, const std::string& projectPath,
                        const model::DocumentStamp& stamp) {
  const std::string next = concat(folder_, "/EditTemp.new");
  files_.createFolder(folder_);
  files_.write(next,
               concat(KGEN_GENFILE::fileText(project, stamp), originHeader, projectPath, "\r\n"),
               false);
  files_.rename(next, path_);  // a crash meanwhile leaves the copy before this one
}

void WorkingCopy::remove() { files_.remove(path_); }

bool WorkingCopy::isLeftOver() const { return files_.exists(path_); }

std::string WorkingCopy::origin() const {
  const std::string content = files_.read(path_);
  const std::size_t header = content.rfind(originHeader);
  if (header == std::string::npos) return {};
  const std::size_t begin = header + originHeader.size();
  return content.substr(begin, content.find('\r', begin) - begin);
}

}  // namespace control
