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

void save(ports::FileStore& files) {
  KGEN_GENFILE::save(files, "dir/site", project, support::demoStamp());
}

TEST(Save, ReplacesTheFileAndLeavesNoBackup) {
  for (const bool leftOver : {false, true}) {
    FailingFiles files(0);
    files.files["dir/site.GN7"] = "old";
    if (leftOver) files.files["dir/site._EN"] = "older";
    save(files);
    EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"dir/site.GN7", newText}}));
    EXPECT_TRUE(files.flushed);
  }
}

TEST(Save, KeepsAnOldVersionWhateverFails) {
  const std::pair<int, const char*> steps[] = {
      {1, "not saved; it and dir/site._EN are as they were"},
      {2, "not saved; it and dir/site._EN are as they were"},
      {3, "not saved completely; the version before it"},
      {4, "saved, but its backup dir/site._EN"}};
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

}  // namespace
