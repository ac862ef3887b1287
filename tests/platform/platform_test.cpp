#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/disk_files.h"
#include "platform/processes.h"
#include "platform/settings_file.h"

namespace {

namespace fs = std::filesystem;
using How = ports::ProcessEnd::How;

class PlatformTest : public testing::Test {
 protected:
  PlatformTest() {
    std::string name = fs::temp_directory_path() / "kgen_platform.XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder = name;
    ::setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
    ::setenv("XDG_CONFIG_DIRS", ("/nowhere:" + folder).c_str(), 1);
    ::setenv("XDG_DATA_HOME", (folder + "/share").c_str(), 1);
    ::setenv("HOME", folder.c_str(), 1);
  }
  ~PlatformTest() override { fs::remove_all(folder); }
  void write(const std::string& name, const std::string& content) {
    fs::create_directories((fs::path(folder) / name).parent_path());
    std::ofstream(fs::path(folder) / name) << content;
  }

  std::string folder;
  std::vector<std::string> complaints;
  platform::Complain complain = [this](const std::string& line) { complaints.push_back(line); };
};

TEST_F(PlatformTest, SettingsOutliveTheProcessAndNonsenseIsTold) {
  {
    platform::SettingsFile settings(complain);
    EXPECT_EQ(settings.read("host/../x", "Colors", "Panel Text"), std::nullopt);
    settings.write("host/../x", "Colors", "Panel Text", "a=[b]\r\nc");
    settings.write("host/../x", "Settings", "GenPath", "/data");
  }
  const platform::SettingsFile settings(complain);
  EXPECT_EQ(settings.read("host/../x", "Colors", "Panel Text"), "a=[b]  c");
  EXPECT_EQ(settings.read("host/../x", "Settings", "GenPath"), "/data");
  EXPECT_EQ(settings.read("other", "Settings", "GenPath"), std::nullopt);
  EXPECT_TRUE(complaints.empty());
  write("config/odd/settings.ini", "before=1\n[Settings]\nGenPath = /x \n???\n; fine\n");
  EXPECT_EQ(settings.read("odd", "Settings", "GenPath"), "/x");
  ASSERT_EQ(complaints.size(), 1U);
  EXPECT_NE(complaints[0].find("settings.ini:1: "), std::string::npos);
}

TEST_F(PlatformTest, MachineValuesAndPlacesFollowTheSystem) {
  write("kgen/machine.ini", "[SOFTWARE\\Tervane]\nCompilers=/opt/k7\n");
  const platform::MachineFile machine(complain);
  EXPECT_EQ(machine.read("SOFTWARE\\Tervane", "Compilers"), "/opt/k7");
  EXPECT_EQ(machine.read("SOFTWARE\\Tervane\\ProgGen", "WorkDir"), std::nullopt);
  EXPECT_EQ(machine.applicationData(), folder + "/share/kgen");
  EXPECT_EQ(machine.documents(), folder);
  write("config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Texte\"\n");
  fs::create_directories(folder + "/Texte");
  EXPECT_EQ(machine.documents(), folder + "/Texte");
}

TEST_F(PlatformTest, ProgramsEndOrAreEnded) {
  platform::Processes processes;
  const auto run = [&](const std::string& line, int milliseconds) {
    return processes.run("/bin/sh", {"-c", line}, std::chrono::milliseconds(milliseconds));
  };
  EXPECT_EQ(run("exit 3", 10'000).code, 3);
  EXPECT_EQ(run("kill -SEGV $$", 10'000).how, How::crashed);
  EXPECT_EQ(processes.run("/no/such", {}, std::chrono::seconds(1)).how, How::notStarted);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(run("sleep 60 & sleep 60; wait", 50).how, How::tookTooLong);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

TEST_F(PlatformTest, FilesAreReplacedWholeAndLinksKept) {
  platform::DiskFiles files;
  files.createFolder(folder + "/a b/ä.d");
  const std::string path = folder + "/a b/ä.d/x.txt";
  files.write(path, "one", true);
  fs::create_symlink(path, folder + "/link");
  files.replace(folder + "/link", "two", false);
  EXPECT_EQ(files.read(path), "two");
  EXPECT_TRUE(fs::is_symlink(folder + "/link"));
  EXPECT_THROW((void)files.read(folder), ports::FileError);
  EXPECT_THROW(files.createFolder(path + "/below"), ports::FileError);
}

}  // namespace
