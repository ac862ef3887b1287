#include <cstdio>
#include <span>
#include <string>
#include <vector>

#include "logscript/check.h"
#include "logscript/scan_times.h"
#include "platform/disk_files.h"
#include "text/strings.h"

/// The pre-compiler: one call writes a report on itself, the other on a program.
namespace {

using text::concat;

constexpr std::string_view version = K7COMP_VERSION;
constexpr std::string_view versionDate = KGEN_BUILD_DATE;
constexpr std::string_view usage =
    "k7comp -d REPORT           writes version and date of this pre-compiler\n"
    "k7comp -t PROGRAM REPORT   compiles a program and writes the result\n";

enum ExitCode : int { done = 0, wrongUsage = 2, inputUnreadable = 3, outputUnwritable = 4 };

std::string versionReport() {
  return concat("[Version]\r\nVERSION: ", version, "\r\nDATE: ", versionDate, "\r\n");
}

std::string timing(const logscript::Program& program) {
  std::string lines;
  for (const logscript::ScanTimes& scan : logscript::scanTimes(program)) {
    lines += "Scan:\r\n";
    if (scan.inSubroutine) lines += "(Subroutine)\r\n";
    for (const logscript::InstructionTime& instruction : scan.instructions)
      lines += concat(instruction.name, ": ", instruction.micros, "\r\n");
  }
  return lines;
}

std::string faults(const std::vector<logscript::Finding>& findings) {
  std::string lines;
  for (const logscript::Finding& finding : findings) {
    const logscript::CodeInfo& info = logscript::infoOf(finding.code);
    if (info.severity != logscript::Severity::error) continue;
    lines += concat("Line ", finding.line, ", column ", finding.column, ": ", finding.text, " [",
                    info.name, "]\r\n");
  }
  return lines;
}

std::string compileReport(std::string_view text) {
  const logscript::Program program = logscript::parse(text);
  const std::vector<logscript::Finding> findings = logscript::check(program);
  const bool faulty = logscript::hasErrors(findings);
  return concat("[Compile Results]\r\n",
                faulty ? faults(findings) : concat("Compiled OK\r\n", timing(program)));
}

int complain(const char* message, ExitCode code) {
  std::fprintf(stderr, "k7comp: %s\n", message);
  return code;
}

int write(const std::string& path, const std::string& report) {
  try {
    platform::DiskFiles().write(path, report, false);
    return done;
  } catch (const ports::FileError& error) {
    return complain(error.what(), outputUnwritable);
  }
}

int compile(const std::string& program, const std::string& report) {
  std::string text;
  try {
    text = platform::readAll(program);
  } catch (const ports::FileError& error) {
    return complain(error.what(), inputUnreadable);
  }
  return write(report, compileReport(text));
}

int run(const std::vector<std::string>& arguments) {
  if (arguments.size() == 2 && arguments[0] == "-d") return write(arguments[1], versionReport());
  if (arguments.size() == 3 && arguments[0] == "-t") return compile(arguments[1], arguments[2]);
  const bool help = arguments.size() == 1 && arguments[0] == "--help";
  std::fputs(usage.data(), help ? stdout : stderr);
  return help ? done : wrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  return run({words.begin() + (argc > 0 ? 1 : 0), words.end()});
}
