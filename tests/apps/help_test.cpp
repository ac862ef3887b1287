#include <gtest/gtest.h>

#include <set>

#include "apps/workbench.h"

namespace apps_test {
namespace {

const std::vector<std::string> commands = {
    "",          "new",          "show",           "summary",     "convert",         "check",
    "generate",  "compile",      "explain",        "channels",    "channels export", "plan",
    "calc",      "calc multoff", "calc pot",       "calc mvperv", "calc rs",         "calc rpm",
    "calc flow", "calc speed",   "calc morespeed", "can",         "channels import", "completion",
    "man",       "can id",       "can baud",       "can j1939"};

void addLongOptions(const std::string& text, std::set<std::string>& words) {
  for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at + 2))
    words.insert(text.substr(at, text.find_first_not_of("abcdefghijklmnopqrstuvwxyz-", at) - at));
}

/// A "-" has a backslash before it in a manual page.
std::string withoutEscapes(std::string page) {
  std::erase(page, '\\');
  return page;
}

/// Long options and commands that the help of all commands names.
std::set<std::string> wordsOfHelp(const Workbench& bench) {
  std::set<std::string> words;
  for (const std::string& command : commands) {
    const Outcome run = bench.kgen(command + " --help");
    EXPECT_EQ(run.code, 0) << command;
    addLongOptions(run.out, words);
    if (!command.empty()) words.insert(command.substr(command.rfind(' ') + 1));
  }
  return words;
}

TEST(Help, ManualAndCompletionsNameEveryCommandAndOption) {
  const Workbench bench;
  const std::set<std::string> words = wordsOfHelp(bench);
  EXPECT_TRUE(words.contains("--dry-run") && words.contains("--version"));
  const std::string man = withoutEscapes(bench.kgen("man").out);
  const std::string bash = bench.kgen("completion bash").out;
  const std::string zsh = bench.kgen("completion zsh").out;
  const std::string fish = bench.kgen("completion fish").out;
  for (const std::string& word : words) {
    SCOPED_TRACE(word);
    const bool option = word.starts_with("--");
    EXPECT_NE(man.find(word), std::string::npos);
    EXPECT_NE(bash.find(word), std::string::npos);
    EXPECT_NE(zsh.find(word), std::string::npos);
    EXPECT_NE(fish.find(option ? "-l " + word.substr(2) : "-a " + word), std::string::npos);
  }
}

TEST(Help, BashCompletesCommandsOptionsAndValues) {
  const std::pair<const char*, const char*> lines[] = {
      {"kgen gen", "generate"},
      {"kgen channels im", "import"},
      {"kgen channels import x --dr", "--dry-run"},
      {"kgen show x --format js", "json"},
      {"kgen new x --cpu 2 --fo", "--force"},
      {"kgen completion z", "zsh"},
  };
  const Workbench bench;
  for (const auto& [line, completed] : lines) {
    SCOPED_TRACE(line);
    bench.write("try.sh", std::string("source <($KGEN completion bash)\nCOMP_WORDS=(") + line +
                              ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_kgen\n"
                              "echo \"${COMPREPLY[@]}\"\n");
    const Outcome run = bench.shell("bash try.sh");
    EXPECT_EQ(run.out, std::string(completed) + "\n") << run.err;
  }
}

}  // namespace
}  // namespace apps_test
