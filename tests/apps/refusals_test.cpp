#include <gtest/gtest.h>

#include "apps/workbench.h"

/// Every way to fail has its exit code and a message that says where, what, and what to do.
namespace apps_test {
namespace {

struct Refusal {
  std::string arguments;
  int code;
  std::string message;  // part of standard error
};

void expectRefusal(const Workbench& bench, const Refusal& refusal) {
  SCOPED_TRACE(refusal.arguments);
  const Outcome run = bench.kgen(refusal.arguments);
  EXPECT_EQ(run.code, refusal.code) << run.err;
  EXPECT_EQ(run.err.rfind("kgen: ", 0), 0U) << run.err;
  EXPECT_NE(run.err.find(refusal.message), std::string::npos) << run.err;
}

TEST(Refusals, WrongUsage) {
  const Workbench bench;
  bench.write("p.GN7", smallProject());
  const std::pair<const char*, const char*> cases[] = {
      {"", "kgen --help"},
      {"frobnicate", "'frobnicate' is no command"},
      {"can dance", "can: 'dance' is no command"},
      {"show", "kgen: show: FILE is required"},
      {"show p.GN7 --colour", "kgen show --help"},
      {"show p.GN7 --format xml", "--format"},
      {"new", "BASE is required"},
      {"new q --cpu 3", "--cpu"},
      {"new q --module 9999=1", "--module 9999=1: no such module"},
      {"new q --module 7121", "write NAME=N"},
      {"new q --module 7121=x", "write NAME=N"},
      {"new q --module 7121=99999999999", "write NAME=N"},
      {"new q --module 7121=13", "Total module count is limited to 12."},
      {"new q --module 7121=7 --module 7131=6", "Total module count is limited to 12."},
      {"new q --module CANIF=2", "CANIF=1"},
      {"new q --module TCMUX=1", "Please Add 7131 Modules!"},
      {"generate - < p.GN7", "-o BASE"},
      {"generate p.GN7 -o -", "--only"},
      {"generate p.GN7 --only wires", "--only"},
      {"can", "kgen can --help"},
      {"can id 12z", "'12z'"},
      {"can id 5 --bits 12", "--bits"},
      {"can baud fast", "'fast': no code"},
      {"can j1939 1 --set tone=1", "'tone=1': no such field"},
      {"can j1939 1 --set priority", "write FIELD=VALUE"},
      {"calc rpm --pulses many", "--pulses: 'many' is no number"},
      {"calc speed --pulses 1 --wheel 2 --gear x", "--gear: 'x' is no number"},
      {"calc flow --factor 2 --per gallon --out liter", "--time is required"},
      {"calc multoff --xmin 0 --xmax 1 --ymin 0", "--ymax is required"},
      {"calc pot --xmin 0 --xmax 1 --ymin 0 --ymax 1 --x 1 --y 1", "give one of them"},
      {"calc mvperv --capacity 1 --full-scale 2 --solve E --u 1", "--solve E needs --v"},
      {"channels import p.GN7", "--csv is required"},
      {"channels import - --csv x", "must be a file"},
      {"completion tcsh", "SHELL"},
  };
  for (const auto& [arguments, message] : cases) expectRefusal(bench, {arguments, 2, message});
  EXPECT_EQ(bench.files(), std::vector<std::string>{"p.GN7"});
  EXPECT_EQ(bench.kgen("new q", "SOURCE_DATE_EPOCH=soon").code, 2);
}

TEST(Refusals, InputThatIsNoProject) {
  const Workbench bench;
  std::filesystem::create_directory(bench.path("folder.GN7"));
  bench.write("empty.GN7", "");
  bench.write("nul.GN7", std::string(1000, '\0'));
  bench.write("long.GN7", std::string(3'000'000, 'x'));
  for (const char* file : {"missing.GN7", "folder.GN7", "empty.GN7", "nul.GN7", "long.GN7"}) {
    for (const char* command : {"show ", "summary ", "generate ", "channels export "})
      expectRefusal(bench, {std::string(command) + file, 3, file});
    expectRefusal(bench, {std::string("convert ") + file + " out", 3, file});
  }
  bench.write("p.GN7", smallProject());
  expectRefusal(bench, {"channels import p.GN7 --csv missing.csv", 3, "missing.csv: "});
  expectRefusal(bench, {"channels import p.GN7 --csv folder.GN7", 3, "folder.GN7: "});
}

TEST(Refusals, OutputThatCannotBeWritten) {
  const Workbench bench;
  bench.write("p.GN7", smallProject());
  bench.write("p.TI7", "old tables");
  std::filesystem::create_directory(bench.path("taken.KX7"));
  const char* cases[] = {
      "new missing/q",
      "show p.GN7 > /dev/full",
      "show p.GN7 --format json > /dev/full",
      "convert p.GN7 missing/q",
      "convert p.GN7 - > /dev/full",
      "convert p.GN7 /dev/full",
      "generate p.GN7 -o missing/q",
      "generate p.GN7 -o taken",
      "generate p.GN7 --only program -o - > /dev/full",
      "channels export p.GN7 > /dev/full",
      "channels export p.GN7 --csv /dev/full",
      "can baud 1 > /dev/full",
      "man > /dev/full",
      "completion bash > /dev/full",
      "--help > /dev/full",
  };
  for (const char* arguments : cases) expectRefusal(bench, {arguments, 4, "; "});
  EXPECT_EQ(bench.files(), (std::vector<std::string>{"p.GN7", "p.TI7", "taken.KX7"}));
  EXPECT_TRUE(bench.read("p.TI7") == "old tables");
}

}  // namespace
}  // namespace apps_test
