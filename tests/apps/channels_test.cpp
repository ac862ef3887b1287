#include <gtest/gtest.h>

#include <algorithm>

#include "apps/workbench.h"
#include "text/numbers.h"

namespace apps_test {
namespace {

using model::BlockKind;

constexpr const char* header =
    "kind,block,element,alias,units,multiplier,offset,own scaling,table1";

struct ChannelsTest : testing::Test {
  ChannelsTest() { bench.write("p.GN7", smallProject()); }

  Outcome import(const std::string& csv, const char* options = "") const {
    bench.write("c.csv", csv);
    return bench.kgen(std::string("channels import p.GN7 --csv c.csv ") + options);
  }

  Workbench bench;
};

TEST_F(ChannelsTest, AnExportImportsWithoutAChange) {
  const Outcome exported = bench.kgen("channels export p.GN7");
  EXPECT_EQ(std::count(exported.out.begin(), exported.out.end(), '\n'), 1 + 4 + 3 + 2);
  const std::string before = bench.read("p.GN7");
  const Outcome run = import(exported.out);
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(bench.read("p.GN7") == before);
}

TEST_F(ChannelsTest, TakesEveryColumnAndSurvivesTheWayBack) {
  const Outcome run = import(std::string(header) +
                             "\r\nvoltage,1,2,Inlet,bar,2.5,-1E-3,yes,average+Maximum\r\n"
                             "bridge,1,1,Beam_1,uStrain,1,2.085,yes,level crossing\r\n");
  ASSERT_EQ(run.code, 0) << run.err;
  const model::Project project = bench.project("p.GN7");
  const model::Element& inlet = project.block(BlockKind::voltage, 1).elements[1];
  EXPECT_EQ(inlet.AliasName, "Inlet");
  EXPECT_EQ(inlet.AliasUnits, "bar");
  EXPECT_EQ(inlet.AliasMult, 2.5);
  EXPECT_EQ(inlet.AliasOffset, -0.001);
  EXPECT_TRUE(inlet.AliasExcept);
  EXPECT_EQ(inlet.Table[0], 2 + 8);
  const model::Element& beam = project.block(BlockKind::bridge, 1).elements[0];
  EXPECT_EQ(beam.AliasGFactor, 2.085);
  EXPECT_EQ(beam.Table[0], 128);
  EXPECT_EQ(import(bench.kgen("channels export p.GN7").out, "--dry-run").out, "");
}

TEST_F(ChannelsTest, ShowsTheScalingThatCounts) {
  model::Project project = bench.project("p.GN7");
  const double ofBlock = project.block(BlockKind::voltage, 1).DefaultMult;
  const struct {
    const char* csv;
    double multiplier;
    bool own;
  } cases[] = {
      {"multiplier,own scaling\nvoltage,1,1,9,no\n", ofBlock, false},
      {"own scaling,multiplier\nvoltage,1,1,no,9\n", ofBlock, false},
      {"own scaling\nvoltage,1,1,yes\n", ofBlock, true},
      {"multiplier\nvoltage,1,1,9\n", 9, true},
      {"own scaling,multiplier\nvoltage,1,1,yes,7\n", 7, true},
      {"multiplier,own scaling\nvoltage,1,1,7,no\n", ofBlock, false},
  };
  for (const auto& [csv, multiplier, own] : cases) {
    SCOPED_TRACE(csv);
    ASSERT_EQ(import(std::string("kind,block,element,") + csv).code, 0);
    project = bench.project("p.GN7");
    const model::MeasurementBlock& block = project.block(BlockKind::voltage, 1);
    EXPECT_EQ(scalingOf(block.elements[0], scalingOf(block)).multiplier, multiplier);
    EXPECT_EQ(block.elements[0].AliasExcept, own);
    const std::string row = bench.kgen("channels export p.GN7").out;
    EXPECT_NE(row.find("," + text::shortest(multiplier) + ",0," + (own ? "yes" : "no")),
              std::string::npos)
        << row;
  }
}

TEST_F(ChannelsTest, ReadsTheFormsThatSpreadsheetsWrite) {
  const std::string forms[] = {
      "\xEF\xBB\xBF"
      "alias,kind,block,element\nNew,voltage,1,1\n",
      "Alias,Kind,Block,Element\r\n\r\n\"New\",\"Voltage\",\"1\",\"1\"",
      "kind,block,element,alias,table8\nvoltage, 1 ,1, New ,\n",
  };
  for (const std::string& csv : forms) {
    SCOPED_TRACE(csv);
    const std::string before = bench.read("p.GN7");
    const Outcome run = import(csv, "--dry-run");
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("voltage 1(1) alias: \"\" -> \"New\""), std::string::npos) << run.out;
    EXPECT_TRUE(bench.read("p.GN7") == before);
  }
}

TEST_F(ChannelsTest, NamesEveryBadLineAndChangesNothing) {
  const std::pair<const char*, const char*> badLines[] = {
      {"volts,1,1,A,V,1,0,no,", "kind: "},
      {"voltage,2,1,A,V,1,0,no,", "block: "},
      {"voltage,x,1,A,V,1,0,no,", "block: "},
      {"voltage,1,4,A,V,1,0,no,", "element: "},
      {"voltage,1,1,1st,V,1,0,no,", "alias: "},
      {"voltage,1,1,SeventeenLetters1,V,1,0,no,", "alias: "},
      {"voltage,1,1,VBlk1,V,1,0,no,", "alias: "},
      {"voltage,1,1,\"A\n[B]\",V,1,0,no,", "alias: "},
      {"voltage,1,1,A,m[V],1,0,no,", "units: "},
      {"voltage,1,1,A,V,\"1,5\",0,no,", "multiplier: "},
      {"voltage,1,1,A,V,1e999,0,no,", "multiplier: "},
      {"voltage,1,1,A,V,1,,no,", "offset: "},
      {"voltage,1,1,A,V,1,0,perhaps,", "own scaling: "},
      {"voltage,1,1,A,V,1,0,no,mean", "table1: "},
      {"voltage,1,1,A,V,1,0,no", "cells"},
      {"voltage,1,1,\"A\"B,V,1,0,no,", "quote"},
      {"voltage,1,1,\"A", "quote"},
      {"voltage,1,3,Same,V,1,0,no,\nvoltage,1,1,sAME,V,1,0,no,", "alias: "},
      {"voltage,1,2,Good,V,1,0,no,", "twice"},
  };
  const std::string before = bench.read("p.GN7");
  for (const auto& [line, message] : badLines) {
    SCOPED_TRACE(line);
    const std::string good = "\nvoltage,1,2,Good,V,1,0,no,sample\n";
    const Outcome run = import(header + good + line + "\n");
    EXPECT_EQ(run.code, 3);
    EXPECT_NE(run.err.find("kgen: c.csv:3: "), std::string::npos) << run.err;
    EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
    EXPECT_TRUE(bench.read("p.GN7") == before);
  }
}

TEST_F(ChannelsTest, RefusesAHeaderThatItCannotFollow) {
  const std::pair<const char*, const char*> headers[] = {
      {"", "empty"},
      {"kind;block;element", "commas"},
      {"kind,block,alias", "element is missing"},
      {"kind,block,element,alias,Alias", "twice"},
      {"kind,block,element,colour", "'colour'"},
  };
  for (const auto& [line, message] : headers) {
    SCOPED_TRACE(line);
    const Outcome run = import(line);
    EXPECT_EQ(run.code, 3);
    EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
  }
}

}  // namespace
}  // namespace apps_test
