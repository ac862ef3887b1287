#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "control/settings.h"
#include "ports/file_store.h"
#include "ports/host.h"
#include "ports/machine_registry.h"
#include "ports/message_service.h"
#include "ports/process_runner.h"

namespace control {

/// What the logger's pre-compiler says of a program.
struct CompileResult {
  enum class State { compiled, faulty, skipped };
  State state = State::skipped;
  std::string version, date;        // of the pre-compiler; empty when it did not tell
  std::vector<std::string> lines;   // of the report: faults, or "Compiled OK"
  std::vector<std::string> timing;  // lines of the report that tell times
  std::vector<std::string> notes;   // what was skipped, and why
};

/// Runs the pre-compiler on the text of a program, by way of a file in the work directory that is
/// gone afterwards. Whatever the pre-compiler does, the project is not touched.
class PreCompiler {
 public:
  static constexpr std::chrono::seconds limit{60};

  PreCompiler(ports::FileStore& files, ports::ProcessRunner& processes, std::string workDirectory)
      : files_(files), processes_(processes), folder_(std::move(workDirectory)) {}

  /// Throws ports::FileError when the program can't be handed over.
  CompileResult run(const std::string& compiler, std::string_view program);

 private:
  [[nodiscard]] std::string in(std::string_view name) const;
  void askVersion(const std::string& compiler, CompileResult& result);
  void compile(const std::string& compiler, std::string_view program, CompileResult& result);
  void readReport(CompileResult& result);

  ports::FileStore& files_;
  ports::ProcessRunner& processes_;
  std::string folder_;
};

/// Where the pre-compiler is: as the user says, else where the machine keeps compilers, else the
/// one installed with the program; the case of its file name does not matter. Empty when it is not
/// there.
std::string findPreCompiler(const Settings& settings, const ports::MachineRegistry& machine,
                            const ports::FileStore& files);

/// Asks whether to search for a missing pre-compiler, and for its path. Empty: not found.
std::string searchPreCompiler(ports::MessageService& messages, ports::Host& host);

}  // namespace control
