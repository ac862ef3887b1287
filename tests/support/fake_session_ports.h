#pragma once

#include <map>
#include <stdexcept>

#include "control/session.h"
#include "platform/disk_files.h"
#include "recorded_ports.h"

namespace support {

/// The files of the disk; the n-th operation that changes something fails.
class FailingDisk final : public ports::FileStore {
 public:
  int failAt = 0;  // 0: never
  int changes = 0;

  [[nodiscard]] bool exists(const std::string& path) const override { return disk_.exists(path); }
  [[nodiscard]] std::string read(const std::string& path) const override {
    return disk_.read(path);
  }
  void write(const std::string& path, std::string_view content, bool) override {
    const bool fails = nextFails();
    disk_.write(path, content.substr(0, fails ? content.size() / 2 : content.size()), false);
    if (fails) throw ports::FileError(path + ": disk full");
  }
  void rename(const std::string& from, const std::string& to) override {
    if (nextFails()) throw ports::FileError(from + ": no access");
    disk_.rename(from, to);
  }
  void remove(const std::string& path) override {
    if (disk_.exists(path) && nextFails()) throw ports::FileError(path + ": no access");
    disk_.remove(path);
  }
  void createFolder(const std::string& path) override { disk_.createFolder(path); }
  void replace(const std::string& path, std::string_view content, bool) override {
    if (nextFails()) throw ports::FileError(path + ": disk full");
    disk_.replace(path, content, false);
  }

 private:
  bool nextFails() { return ++changes == failAt; }
  platform::DiskFiles disk_;
};

class FixedClock final : public ports::Clock {
 public:
  [[nodiscard]] ports::Moment now() const override { return {2026, 7, 4, 13, 5, 9}; }
};

class MemorySettings final : public ports::SettingsStore {
 public:
  std::map<std::string, std::string, std::less<>> values;  // by "application/section/key"

  [[nodiscard]] std::optional<std::string> read(std::string_view application,
                                                std::string_view section,
                                                std::string_view key) const override {
    const auto found = values.find(text::concat(application, "/", section, "/", key));
    if (found == values.end()) return std::nullopt;
    return found->second;
  }
  void write(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override {
    values[text::concat(application, "/", section, "/", key)] = value;
  }
};

class FakeMachine final : public ports::MachineRegistry {
 public:
  std::string folder;  // of work directory, documents and compilers
  bool hasCompilers = false;

  [[nodiscard]] std::optional<std::string> read(std::string_view key,
                                                std::string_view value) const override {
    if (key == R"(SOFTWARE\Tervane\ProgGen)" && value == "WorkDir") return folder + "/work";
    if (key == R"(SOFTWARE\Tervane)" && value == "Compilers" && hasCompilers) return folder;
    return std::nullopt;
  }
  [[nodiscard]] std::string programFolder() const override { return folder + "/bin"; }
  [[nodiscard]] std::string applicationData() const override { return folder + "/data"; }
  [[nodiscard]] std::string documents() const override { return folder; }
};

/// A pre-compiler: writes its reports, or behaves badly.
class FakeProcesses final : public ports::ProcessRunner {
 public:
  ports::ProcessEnd::How how = ports::ProcessEnd::How::exited;
  std::string report = "[Compile Results]\r\nCompiled OK\r\nScan:\r\nTCDIFF: 120\r\n";
  std::vector<std::vector<std::string>> runs;
  std::string program;  // that was to be compiled

  ports::ProcessEnd run(const std::string& file, const std::vector<std::string>& arguments,
                        std::chrono::milliseconds) override {
    runs.push_back(arguments);
    runs.back().insert(runs.back().begin(), file);
    if (arguments[0] == "-t") program = disk_.read(arguments[1]);
    if (how != ports::ProcessEnd::How::exited) return {how, 11, "no such file"};
    if (arguments[0] == "-d")
      disk_.write(arguments[1], "[Version]\r\nVERSION: 4.2\r\nDATE: 05-15-08\r\n", false);
    else if (!report.empty())
      disk_.write(arguments[2], report, false);
    return {};
  }

 private:
  platform::DiskFiles disk_;
};

class RecordedHost final : public ports::Host {
 public:
  std::vector<std::string> events;
  std::vector<std::string> notes;
  std::optional<std::string> chosenPath;
  bool toolbarServer = true;
  bool windowsEnd = true;

  void fileOpened(const std::string& project) override { add("opened ", project); }
  void downloadRequested(const std::string& program) override { add("download ", program); }
  bool handToDunmore(const std::string& program) override {
    add("dunmore ", program);
    return toolbarServer;
  }
  void printRequested() override { events.emplace_back("print"); }
  void helpRequested(const std::string&, int contextId) override {
    events.push_back(text::concat("help ", contextId));
  }
  void optionsRequested() override { events.emplace_back("options"); }
  void closeWindows() override { events.emplace_back("close windows"); }
  bool finishWindows(bool ask) override { return windowsEnd || !ask; }
  void refresh() override {}
  std::optional<std::string> choosePath(const ports::FileQuestion& question) override {
    events.push_back("choose " + question.title);
    return chosenPath;
  }
  void note(std::string_view line) override { notes.emplace_back(line); }

 private:
  void add(const char* event, const std::string& path) {
    events.push_back(event + path.substr(path.rfind('/') + 1));
  }
};

}  // namespace support
