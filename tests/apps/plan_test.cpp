#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "apps/workbench.h"
#include "text/strings.h"

namespace apps_test {
namespace {

using nlohmann::json;

std::vector<json> documentsIn(const std::string& text) {
  std::vector<json> documents;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) documents.push_back(json::parse(line));
  return documents;
}

TEST(Plan, OneCallGivesEveryPropertyInOrder) {
  const Workbench bench;
  const Outcome run = bench.kgen("plan --scan 10000 --integration 1000");
  ASSERT_EQ(run.code, 0) << run.err;
  const auto plan = nlohmann::ordered_json::parse(run.out);
  EXPECT_EQ(plan["result"], 5);
  EXPECT_TRUE(plan["messages"].empty());
  std::vector<std::string> names;
  for (const auto& [name, value] : plan["properties"].items()) names.push_back(name);
  const std::vector<std::string> expected = {
      "ScanIntervalUSec", "IntegrationTimeUSec", "AltRoundIntgTimeUSec", "OpenTCCheck",
      "InputReversal",    "MeasTimeAvail",       "NumPreFiltAvg",        "RawFilterOrder",
      "FilterOrder",      "NumFilterCoeffs",     "NumOrd1FilterCoeffs",  "ForcedFilterOrder",
      "InputIntegTime",   "CalcIntegTime",       "InputFilterOrder",     "CalculatedFilterOrder",
      "CutoffFrequency",  "OverheadUsec",        "FirstZeroFrequency",   "FilterCutoffFactor",
      "ScansPerSubScan",  "RecScansPerSub"};
  EXPECT_EQ(names, expected);
  EXPECT_NE(run.out.find("\"RawFilterOrder\":9.935185,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"FilterCutoffFactor\":0.20385,"), std::string::npos);
  const json forced = json::parse(bench.kgen("plan --scan 20000 --order 3 --reversal").out);
  EXPECT_EQ(forced["result"], forced["properties"]["IntegrationTimeUSec"]);
  const json limited = json::parse(
      bench.kgen("plan --scan 1000000 --integration 960 --open-tc --scans-per-subscan 2000").out);
  EXPECT_EQ(limited["ScansPerSubScan"], 1800);
  EXPECT_EQ(limited["messages"][0]["title"], "Subscan Interval Too Long");
  EXPECT_EQ(limited["messages"][0]["lines"].size(), 5U);
  EXPECT_EQ(json::parse(bench.kgen("plan --scan 0 --integration -2").out)["faults"].size(), 1U);
}

TEST(Plan, ABatchHasOnePlannerALine) {
  const Workbench bench;
  const std::string small = R"({"ScanInterval":1400,"IntegTime":500})";
  const std::string good = R"({"ScanInterval":10000,"IntegTime":1000,"OpenTC":false,)"
                           R"("InputRev":false,"ScansPerSubScan":1})";
  bench.write("b.json", "{\"steps\":[" + small + "," + small + "," + good + "," + small + "]}\r\n" +
                            "\n{\"steps\":[]}\n{\"steps\":[" + small + "]}");
  const Outcome run = bench.kgen("plan --batch b.json");
  ASSERT_EQ(run.code, 0) << run.err;
  const auto lines = documentsIn(run.out);
  ASSERT_EQ(lines.size(), 3U);
  const std::pair<int, std::size_t> steps[] = {{-1, 1}, {-1, 0}, {5, 0}, {5, 1}};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(lines[0]["steps"][i]["result"], steps[i].first);
    EXPECT_EQ(lines[0]["steps"][i]["messages"].size(), steps[i].second);
  }
  EXPECT_EQ(lines[1]["steps"], json::array());
  EXPECT_EQ(lines[2]["steps"][0], lines[0]["steps"][0]);
  EXPECT_EQ(bench.kgen("plan --batch - < b.json").out, run.out);
}

TEST(Plan, ABadLineEndsTheBatchAfterTheGoodOnes) {
  const Workbench bench;
  const std::string good = R"({"steps":[{"ScanInterval":10000,"IntegTime":1000}]})";
  const std::pair<std::string, const char*> lines[] = {
      {"nonsense", "no JSON at column 2"},
      {R"({"steps":[)", "no JSON at column"},
      {"\xff", "no JSON at column"},
      {std::string(200'000, '['), "no JSON at column"},
      {"[]", "one object"},
      {R"({"steps":[],"more":1})", "one object"},
      {R"({"steps":[7]})", "step 1: an object is needed"},
      {R"({"steps":[{"IntegTime":1}]})", "step 1: ScanInterval is missing"},
      {R"({"steps":[{"ScanInterval":1e400,"IntegTime":1}]})", "out of range"},
      {R"({"steps":[{"ScanInterval":2147483648,"IntegTime":1}]})", "step 1: ScanInterval: a whole"},
      {R"({"steps":[{"ScanInterval":-2147483649,"IntegTime":1}]})", "step 1: ScanInterval: a"},
      {R"({"steps":[{"ScanInterval":1,"IntegTime":1.5}]})", "IntegTime: a whole number"},
      {R"({"steps":[{"ScanInterval":1,"IntegTime":1,"OpenTC":1}]})", "OpenTC: true or false"},
      {R"({"steps":[{"ScanInterval":1,"IntegTime":1,"ScansPerSubScan":40000}]})", "to 32767"},
      {R"({"steps":[{"ScanInterval":1,"IntegTime":1,"Scans":1}]})", "Scans: no such argument"},
  };
  for (const auto& [line, message] : lines) {
    SCOPED_TRACE(line.substr(0, 80));
    bench.write("b.json", text::concat(good, "\n", line, "\n", good, "\n"));
    const Outcome run = bench.kgen("plan --batch b.json");
    EXPECT_EQ(run.code, 3);
    EXPECT_EQ(documentsIn(run.out).size(), 1U);
    EXPECT_EQ(run.err.rfind("kgen: b.json:2: ", 0), 0U) << run.err;
    EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
  }
  EXPECT_EQ(bench.kgen("plan --batch missing.json").code, 3);
}

TEST(Plan, WrongUsage) {
  const Workbench bench;
  for (const char* arguments :
       {"", "--scan 1000", "--integration 5", "--scan 1000 --integration 5 --order 1",
        "--scan 1e3 --order 1", "--scan 3000000000 --order 1", "--scan 1000 --order -1",
        "--scan 1000 --order 1 --scans-per-subscan 40000", "--batch x --scan 1",
        "--batch x --reversal"}) {
    const Outcome run = bench.kgen(std::string("plan ") + arguments);
    EXPECT_EQ(run.code, 2) << arguments;
    EXPECT_EQ(run.err.rfind("kgen: ", 0), 0U) << run.err;
  }
}

}  // namespace
}  // namespace apps_test
