#include "control/pre_compiler.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "text/strings.h"

namespace control {
namespace {

using ports::ProcessEnd;
using text::concat;

constexpr std::string_view programFile = "/TEMP$$$$";
constexpr std::string_view versionFile = "/VERCOMP.TXT";
constexpr std::string_view reportFile = "/PRECOMP.TXT";
constexpr std::string_view resultsHeader = "[Compile Results]";
constexpr std::string_view success = "Compiled OK";

std::vector<std::string> linesOf(std::string_view content) {
  std::vector<std::string> lines;
  while (!content.empty()) {
    const std::size_t end = std::min(content.find('\n'), content.size());
    std::string_view line = content.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(text::asUtf8(text::trimmed(line)));
    content.remove_prefix(std::min(end + 1, content.size()));
  }
  return lines;
}

std::string valueAfter(std::string_view line, std::string_view word) {
  if (!text::equalsIgnoringCase(line.substr(0, word.size()), word)) return {};
  return std::string(text::trimmed(line.substr(word.size())));
}

/// "Scan:" opens the times of a scan, "TCDIFF: 120" and "(Subroutine)" are in it.
bool tellsTime(std::string_view line) {
  if (line.starts_with("Scan:") || line.starts_with("(Subroutine)")) return true;
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || colon == 0) return false;
  const std::string_view name = line.substr(0, colon);
  return name.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789") == std::string_view::npos &&
         text::isNumber(line.substr(colon + 1));
}

std::string howItEnded(const ProcessEnd& end) {
  switch (end.how) {
    case ProcessEnd::How::notStarted:
      return concat("could not be started (", end.reason, ")");
    case ProcessEnd::How::crashed:
      return concat("crashed (signal ", end.code, ")");
    case ProcessEnd::How::tookTooLong:
      return concat("did not end within ", PreCompiler::limit.count(), " seconds");
    case ProcessEnd::How::exited:
      break;
  }
  return concat("ended with code ", end.code, " and wrote no report");
}

/// The file of a folder whose name is the same but for the case of its letters.
std::string fileLike(const std::string& path, const ports::FileStore& files) {
  if (files.exists(path)) return path;
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::path wanted(path);
  for (const fs::directory_entry& entry : fs::directory_iterator(wanted.parent_path(), ignored))
    if (text::equalsIgnoringCase(entry.path().filename().string(), wanted.filename().string()))
      return entry.path().string();
  return {};
}

}  // namespace

std::string PreCompiler::in(std::string_view name) const { return concat(folder_, name); }

CompileResult PreCompiler::run(const std::string& compiler, std::string_view program) {
  CompileResult result;
  files_.createFolder(folder_);
  askVersion(compiler, result);
  compile(compiler, program, result);
  return result;
}

void PreCompiler::askVersion(const std::string& compiler, CompileResult& result) {
  const std::string report = in(versionFile);
  files_.remove(report);
  const ProcessEnd end = processes_.run(compiler, {"-d", report}, limit);
  if (end.how != ProcessEnd::How::exited || !files_.exists(report)) {
    result.notes.push_back(concat("Skipped version.", " The pre-compiler ", howItEnded(end), "."));
    return;
  }
  for (const std::string& line : linesOf(files_.read(report))) {
    if (result.version.empty()) result.version = valueAfter(line, "VERSION:");
    if (result.date.empty()) result.date = valueAfter(line, "DATE:");
  }
}

void PreCompiler::compile(const std::string& compiler, std::string_view program,
                          CompileResult& result) {
  const std::string source = in(programFile);
  files_.remove(source);
  files_.remove(in(reportFile));
  files_.write(source, program, false);
  const ProcessEnd end = processes_.run(compiler, {"-t", source, in(reportFile)}, limit);
  files_.remove(source);
  if (end.how == ProcessEnd::How::exited && files_.exists(in(reportFile)))
    return readReport(result);
  result.notes.push_back(
      concat("Skipped pre-compile.", " The pre-compiler ", howItEnded(end), "."));
}

void PreCompiler::readReport(CompileResult& result) {
  bool inResults = false;
  for (std::string& line : linesOf(files_.read(in(reportFile)))) {
    if (line.starts_with('[')) inResults = text::equalsIgnoringCase(line, resultsHeader);
    if (!inResults || line.empty() || line.starts_with('[')) continue;
    (tellsTime(line) ? result.timing : result.lines).push_back(std::move(line));
  }
  const bool compiled = std::any_of(result.lines.begin(), result.lines.end(),
                                    [](const auto& line) { return line.starts_with(success); });
  result.state = compiled               ? CompileResult::State::compiled
                 : result.lines.empty() ? CompileResult::State::skipped
                                        : CompileResult::State::faulty;
  if (result.lines.empty())
    result.notes.emplace_back("Skipped pre-compile. The report of the pre-compiler is empty.");
}

std::string findPreCompiler(const Settings& settings, const ports::MachineRegistry& machine,
                            const ports::FileStore& files) {
  if (!settings.LogCompPath.empty()) return fileLike(settings.LogCompPath, files);
  const auto folder = machine.read(R"(SOFTWARE\Tervane)", "Compilers");
  if (folder && !folder->empty()) return fileLike(concat(*folder, "/k7comp.exe"), files);
  const std::string ours = concat(machine.programFolder(), "/k7comp");
  return files.exists(ours) ? ours : std::string();
}

std::string searchPreCompiler(ports::MessageService& messages, ports::Host& host) {
  ports::Message question;
  question.title = "MISSING FILE";
  question.text = "Pre-Compiler was not found.\r\nWould you like to search for it?";
  question.icon = ports::Icon::critical;
  question.buttons = ports::Buttons::yesNo;
  question.defaultButton = ports::Answer::yes;
  if (messages.show(question) != ports::Answer::yes) return {};
  const std::string filter = "(K7Comp.EXE)|K7Comp.EXE|(All Files)|*.*";
  return host.choosePath({concat("FIND ", "K700", " COMPILER"), filter, false, ""}).value_or("");
}

}  // namespace control
