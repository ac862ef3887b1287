#include <gtest/gtest.h>

#include <map>

#include "projectfile/project_file.h"
#include "support/demo_project.h"
#include "text/strings.h"

namespace {

/// Files in memory; the n-th operation that changes something fails.
class FailingFiles : public ports::FileStore {
 public:
  explicit FailingFiles(int failAt) : failAt_(failAt) {}

  [[nodiscard]] bool exists(const std::string& path) const override { return files.contains(path); }
  [[nodiscard]] std::string read(const std::string& path) const override { return files.at(path); }
  void createFolder(const std::string&) override {}
  void replace(const std::string& path, std::string_view content, bool flush) override {
    write(path, content, flush);
  }
  void write(const std::string& path, std::string_view content, bool flush) override {
    flushed = flush;
    const bool fails = nextFails();
    files[path] = fails ? content.substr(0, content.size() / 2) : content;
    if (fails) throw ports::FileError("disk full");
  }
  void rename(const std::string& from, const std::string& to) override {
    if (nextFails()) throw ports::FileError("no access");
    files[to] = files.at(from);
    files.erase(from);
  }
  void remove(const std::string& path) override {
    if (nextFails()) throw ports::FileError("no access");
    files.erase(path);
  }

  std::map<std::string, std::string> files;
  bool flushed = false;

 private:
  bool nextFails() { return --failAt_ == 0; }
  int failAt_;
};

const model::Project project = support::demoProject();
const std::string newText = KGEN_GENFILE::fileText(project, support::demoStamp());

std::string save(ports::FileStore& files) {
  return KGEN_GENFILE::save(files, "dir/site", project, support::demoStamp());
}

TEST(Save, ReplacesTheFileAndLeavesNoBackup) {
  for (const bool leftOver : {false, true}) {
    FailingFiles files(0);
    files.files["dir/site.GN7"] = "old";
    if (leftOver) files.files["dir/site._EN"] = "older";
    EXPECT_EQ(save(files), "");
    EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"dir/site.GN7", newText}}));
    EXPECT_TRUE(files.flushed);
  }
}

TEST(Save, KeepsAnOldVersionWhateverFails) {
  const std::pair<int, const char*> steps[] = {
      {1, "not saved; it and dir/site._EN are as they were"},
      {2, "not saved; it and dir/site._EN are as they were"},
      {3, "not saved completely; the version before it"}};
  for (const auto& [failAt, what] : steps) {
    SCOPED_TRACE(failAt);
    FailingFiles files(failAt);
    files.files["dir/site.GN7"] = "old";
    try {
      save(files);
      ADD_FAILURE() << "no error";
    } catch (const ports::FileError& error) {
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with("dir/site.GN7: ")) << message;
      EXPECT_NE(message.find(what), std::string::npos) << message;
    }
    EXPECT_EQ(files.files.contains("dir/site._EN") ? files.files["dir/site._EN"]
                                                   : files.files["dir/site.GN7"],
              "old");
  }
}

TEST(Save, OfANewFileThatFailsKeepsAnOlderBackup) {
  FailingFiles files(1);
  files.files["dir/site._EN"] = "older";
  EXPECT_THROW(save(files), ports::FileError);
  EXPECT_EQ(files.files["dir/site._EN"], "older");
}

TEST(Save, SaysThatOnlyTheBackupIsLeft) {
  FailingFiles files(4);
  files.files["dir/site.GN7"] = "old";
  EXPECT_TRUE(save(files).starts_with("dir/site.GN7: saved, but its backup dir/site._EN"));
  EXPECT_EQ(files.files["dir/site.GN7"], newText);
}

TEST(Save, AfterOneThatFailedKeepsTheLastGoodVersion) {
  for (const int failAt : {0, 1}) {
    FailingFiles files(failAt);
    files.files["dir/site._EN"] = newText;
    files.files["dir/site.GN7"] = newText.substr(0, newText.size() / 2);
    if (failAt == 0)
      EXPECT_EQ(save(files), "");
    else
      EXPECT_THROW(save(files), ports::FileError);
    EXPECT_EQ(files.files[failAt == 0 ? "dir/site.GN7" : "dir/site._EN"], newText);
  }
}

}  // namespace
