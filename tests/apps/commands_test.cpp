#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/workbench.h"

namespace apps_test {
namespace {

using Names = std::vector<std::string>;
using nlohmann::json;

TEST(New, CountsModulesUnderAllTheirNames) {
  const Workbench bench;
  const Outcome run = bench.kgen(
      "new demo --cpu 2 --module 7121=1 --module 7122=2 --module 7131=1 --module 7141/42=2 "
      "--module tcmux=3 --module CANIF=1");
  ASSERT_EQ(run.code, 0) << run.err;
  const model::Project project = bench.project("demo.GN7");
  EXPECT_EQ(project.configuration.ModuleQty,
            (std::array<std::int16_t, 10>{0, 2, 0, 0, 3, 1, 2, 0, 0, 0}));
  EXPECT_EQ(project.configuration.TCMUXQty, 3);
  EXPECT_EQ(project.configuration.CanBusQty, 1);
  EXPECT_EQ(project.configuration.PCTime, "01-02-1970 00:00:00");
  EXPECT_EQ(bench.files(), Names{"demo.GN7"});
}

TEST(New, ReplacesAProjectOnlyWhenForced) {
  const Workbench bench;
  bench.write("demo.GN7", "precious");
  EXPECT_EQ(bench.kgen("new demo").code, 4);
  EXPECT_TRUE(bench.read("demo.GN7") == "precious");
  EXPECT_EQ(bench.kgen("new demo.gn7 --force").code, 0);
  EXPECT_NE(bench.read("demo.GN7"), "precious");
}

TEST(Show, GivesTheSameForAFileAndStandardInput) {
  const Workbench bench;
  bench.write("small.GN7", smallProject());
  const Outcome named = bench.kgen("show small --format json");
  ASSERT_EQ(named.code, 0) << named.err;
  EXPECT_TRUE(json::parse(named.out).is_object());
  EXPECT_EQ(bench.kgen("show - --format json < small.GN7").out, named.out);
  EXPECT_NE(bench.kgen("show small.GN7").out, named.out);
}

TEST(Convert, LosesNothingAndNotesWhatItClamps) {
  const Workbench bench;
  bench.write("small.GN7", smallProject());
  for (const char* arguments : {"small small2", "small.GN7 small2.GN7 --no-sync",
                                "small.GN7 - > small2.GN7", "- small2 < small.GN7"}) {
    SCOPED_TRACE(arguments);
    const Outcome run = bench.kgen(std::string("convert ") + arguments);
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    model::Project converted = bench.project("small2.GN7");
    converted.configuration.VersionLastSaved =
        bench.project("small.GN7").configuration.VersionLastSaved;
    converted.configuration.PCTime = bench.project("small.GN7").configuration.PCTime;
    EXPECT_TRUE(converted == bench.project("small.GN7"));
  }
  bench.write("odd.GN7", "[VOLTAGE BLOCKS]\r\nBlockCount=9\r\nColour=red\r\n");
  const Outcome odd = bench.kgen("convert odd.GN7 even -v");
  EXPECT_EQ(odd.code, 0);
  EXPECT_NE(odd.err.find("odd.GN7:2: "), std::string::npos) << odd.err;
  EXPECT_NE(odd.err.find("odd.GN7:3: "), std::string::npos) << odd.err;
}

TEST(Generate, WritesWhatIsAskedForUnderItsName) {
  const struct {
    const char* arguments;
    Names newFiles;
  } cases[] = {
      {"small.v2.GN7", {"small.KX7", "small.TI7", "small.WR7"}},
      {"small.v2.GN7 -o other", {"other.KX7", "other.TI7", "other.WR7"}},
      {"small.v2.GN7 --only tables", {"small.TI7"}},
      {"- -o piped --only program < small.v2.GN7", {"piped.KX7"}},
      {"small.v2.GN7 -o - --only program", {}},
  };
  for (const auto& [arguments, newFiles] : cases) {
    SCOPED_TRACE(arguments);
    const Workbench bench;
    bench.write("small.v2.GN7", smallProject());
    const Outcome run = bench.kgen(std::string("generate ") + arguments);
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out.empty(), !newFiles.empty());
    Names expected = newFiles;
    expected.emplace_back("small.v2.GN7");
    EXPECT_EQ(bench.files(), expected);
  }
}

TEST(Generate, RepeatsItsBytesAndFollowsALink) {
  const Workbench bench;
  bench.write("small.GN7", smallProject());
  bench.write("elsewhere", "old");
  std::filesystem::create_symlink("elsewhere", bench.path("small.KX7"));
  EXPECT_EQ(bench.kgen("generate small").code, 0);
  const std::string first = bench.read("elsewhere");
  EXPECT_EQ(bench.kgen("generate small").code, 0);
  EXPECT_TRUE(bench.read("elsewhere") == first);
  EXPECT_TRUE(std::filesystem::is_symlink(bench.path("small.KX7")));
  EXPECT_NE(first.find("EndProg"), std::string::npos);
}

TEST(Generate, WritesNothingWhenAProblemIsFoundUnlessForced) {
  const Workbench bench;
  model::Project twice = smallProject();
  for (const auto kind : {model::BlockKind::thermocouple, model::BlockKind::voltage})
    twice.block(kind, 1).elements[0].AliasName = "Twice";
  bench.write("twice.GN7", twice);
  const Outcome refused = bench.kgen("generate twice --answer yes");
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.err.find("DUPLICATION FOUND"), std::string::npos) << refused.err;
  EXPECT_NE(refused.err.find("twice.GN7: nothing is written"), std::string::npos) << refused.err;
  EXPECT_EQ(bench.files(), Names{"twice.GN7"});
  EXPECT_EQ(bench.kgen("generate twice --force").code, 0);
  EXPECT_EQ(bench.files(), (Names{"twice.GN7", "twice.KX7", "twice.TI7", "twice.WR7"}));
}

TEST(Generate, ReadsTheHostWithoutRegardToCase) {
  const Workbench bench;
  EXPECT_EQ(bench.kgen("new plain").code, 0);
  EXPECT_EQ(bench.kgen("generate plain --host dunmore --only program").code, 0);
  EXPECT_EQ(bench.kgen("generate plain --host Other --only program").code, 0);
  EXPECT_EQ(bench.files(), (Names{"plain.GN7", "plain.KP7", "plain.KX7"}));
}

TEST(Generate, LeavesTheOldProgramWhenTheNewOneIsTooLong) {
  const Workbench bench;
  bench.write("endless.GN7", endlessProject());
  bench.write("endless.KX7", "old program");
  const Outcome run = bench.kgen("generate endless");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("endless.GN7: the program would need more than 3000 lines; "),
            std::string::npos)
      << run.err;
  EXPECT_TRUE(bench.read("endless.KX7") == "old program");
  EXPECT_EQ(bench.files(), (Names{"endless.GN7", "endless.KX7"}));
}

TEST(Can, AnswersInJson) {
  const struct {
    const char* arguments;
    const char* path;
    json expected;
  } cases[] = {
      {"id 4000", "/DataID", "2047"},
      {"id '&H1fffffff' --bits 29", "/DataID", "&H1FFFFFFF"},
      {"id '&H1fffffff' --bits 29", "/DataIDIsHex", true},
      {"baud 6", "/BaudRateText", "20 K"},
      {"baud 6", "/TimeQuanta", 40},
      {"baud 7", "/TSeg1", 0},
      {"j1939 0 --set priority=9", "/fields/0/J1939_FieldVal", 7},
      {"j1939 0 --set pduformat=240 --set pduSpecific=4", "/PGNVal", "61444"},
  };
  const Workbench bench;
  for (const auto& [arguments, path, expected] : cases) {
    SCOPED_TRACE(arguments);
    const Outcome run = bench.kgen(std::string("can ") + arguments);
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(json::parse(run.out).at(json::json_pointer(path)), expected);
  }
}

TEST(Calc, AnswersWithNumbersAndWhatTheWindowShows) {
  const struct {
    const char* arguments;
    const char* path;
    json expected;
  } cases[] = {
      {"multoff --xmin -5 --xmax 5 --ymin 0 --ymax 100 --x -9", "/x", -5},
      {"pot --xmin -.5 --xmax=1e3 --ymin 0 --ymax 100 --y 200", "/shown/x", "1000.0"},
      {"multoff --xmin 1 --xmax 1 --ymin 0 --ymax 1 --y 2", "/shown/multiplier", nullptr},
      {"mvperv --capacity 500 --full-scale 2 --excitation 5000 --solve V --u 125", "/V", 2.5},
      {"mvperv --capacity 500 --full-scale 2 --solve E --u 0 --v 2", "/shown/E", "ERROR"},
      {"mvperv --capacity 500 --full-scale 2 --solve E --u 0 --v 2", "/E", nullptr},
      {"mvperv --capacity 500 --full-scale 2 --solve E --u 500 --v 60", "/message/title",
       "VALUE TOO LARGE"},
      {"rs --ohms 1250 --units kOhms", "/multiplier", 1.25},
      {"rpm --pulses 0", "/multiplier", nullptr},
      {"rpm --pulses 60 --per-second 2.5", "/shown/rpm", "2.5"},
      {"flow --factor 2 --per liter --out liter --time hour", "/shown/multiplier", "1,800.0"},
      {"flow --factor 2 --per liter --out gallon --time min", "/units", "Gals/Min"},
      {"speed --pulses 5 --gear 2 --gear 2 --wheel 10 --as circumference --measure inch --out "
       "Ins/Sec",
       "/multiplier", 0.5},
      {"speed --pulses 1 --wheel 1 --as radius --measure cm --out M/Min", "/shown/cmPerPulse",
       "6.28318"},
      {"morespeed --pulses 1000 --per km --out K/Hour", "/multiplier", 3.6},
      {"morespeed --pulses 63360 --per mile --out Ins/Min", "/multiplier", 60},
  };
  const Workbench bench;
  for (const auto& [arguments, path, expected] : cases) {
    SCOPED_TRACE(arguments);
    const Outcome run = bench.kgen(std::string("calc ") + arguments);
    ASSERT_EQ(run.code, 0) << run.err;
    const json answer = json::parse(run.out);
    EXPECT_EQ(answer.at(json::json_pointer(path)), expected) << run.out;
    const bool nothing = answer.contains("multiplier") && answer["multiplier"].is_null();
    EXPECT_EQ(run.err.find("nothing can be computed") != std::string::npos, nothing) << run.err;
  }
}

TEST(Summary, GivesTheSameForAFileAndStandardInput) {
  const Workbench bench;
  bench.write("small.GN7", smallProject());
  const Outcome named = bench.kgen("summary small");
  ASSERT_EQ(named.code, 0) << named.err;
  EXPECT_EQ(named.out.find(" Program Name: small\n"), 0U) << named.out;
  const Outcome piped = bench.kgen("summary - < small.GN7");
  EXPECT_EQ(piped.out.substr(piped.out.find('\n')), named.out.substr(named.out.find('\n')));
}

}  // namespace
}  // namespace apps_test
