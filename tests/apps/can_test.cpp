#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "apps/workbench.h"

namespace apps_test {
namespace {

constexpr const char* database =
    "VERSION \"\"\r\n"
    "BO_ 291 Drive: 8 X\r\n"
    " SG_ Turning : 0|16@1+ (0.125,0) [0|0] \"rpm\" X\r\n"
    " SG_ Press m1 : 16|8@1+ (1,0) [0|0] \"bar\" X\r\n"
    " SG_ Page M : 24|8@1+ (1,0) [0|0] \"\" X\r\n"
    " SG_ Bad : 64|8@1+ (1,0) [0|0] \"\" X\r\n"
    "BO_ 2566844672 Weather: 8 X\r\n"
    " SG_ Wind : 0|8@1- (1,0) [0|0] \"m/s\" X\r\n";

struct CanTest : testing::Test {
  CanTest() {
    bench.write("p.GN7", smallProject());
    bench.write("d.dbc", std::string_view(database));
  }
  Workbench bench;
};

TEST_F(CanTest, ImportListsWhatBecomesOfEverySignalAndNamesBadLines) {
  const Outcome run = bench.kgen("can import d.dbc");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out,
            "Drive.Turning -> Turning: id &H123, type 2, start 1, bits 16, x 0.125 + 0 rpm\n"
            "Drive.Press -> Press: id &H123, type 2, start 17, bits 8, x 1 + 0 bar; only with "
            "--signal: it is in the message only while 'Page' is 1; the logger reads its bits from "
            "every frame of the message\n"
            "Drive.Page -> Page: id &H123, type 2, start 25, bits 8, x 1 + 0\n"
            "Weather.Wind -> nothing: its identifier has 29 bits, and the project receives those "
            "of 11; it can't do both\n");
  EXPECT_EQ(run.err,
            "kgen: d.dbc:6: signal 'Bad' is left out: it goes to byte 9, and message 'Drive' has 8 "
            "bytes\n");
  const auto json = nlohmann::json::parse(bench.kgen("can import d.dbc --format json").out);
  EXPECT_EQ(json["faults"][0]["line"], 6);
  EXPECT_EQ(json["proposals"].size(), 4U);
  EXPECT_EQ(json["proposals"][1]["fitness"], "if chosen");
  EXPECT_EQ(json["proposals"][2]["StartBit"], 25);
}

TEST_F(CanTest, ImportAddsWhatIsReadyOrNamed) {
  EXPECT_EQ(bench.kgen("can import d.dbc --project p.GN7 --out all.GN7").code, 1);
  EXPECT_EQ(bench.project("all.GN7").can.items.size(), 2U);
  EXPECT_EQ(bench.project("p.GN7").can.items.size(), 0U);
  const Outcome run =
      bench.kgen("can import d.dbc --project p --out p --signal drive.press --signal Wind");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("left out: Wind: its identifier has 29 bits"), std::string::npos);
  const model::Project project = bench.project("p.GN7");
  ASSERT_EQ(project.can.items.size(), 1U);
  EXPECT_EQ(project.can.items[0].values[0].AliasName, "Press");
  EXPECT_EQ(bench.kgen("generate p --only program").code, 0);
}

TEST_F(CanTest, ImportRefusesWhatItCannotUse) {
  EXPECT_EQ(bench.kgen("can import none.dbc").code, 3);
  EXPECT_EQ(bench.kgen("can import p.GN7").code, 3);  // no database
  EXPECT_EQ(bench.kgen("can import d.dbc --out x.GN7").code, 2);
  const Outcome run = bench.kgen("can import d.dbc --signal Nowhere");
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("has no such signal"), std::string::npos);
}

TEST_F(CanTest, DecodeShowsTheValuesOfAFrame) {
  ASSERT_EQ(bench.kgen("can import d.dbc --project p --out p").code, 1);
  EXPECT_EQ(bench.kgen("can decode p 123#1000000700000000").out, "Turning = 2 rpm\nPage = 7\n");
  EXPECT_EQ(bench.kgen("can decode p 123 2 08 00").out,
            "Turning = 1 rpm\nPage = no value: the frame has only 2 bytes\n");
  const auto json = nlohmann::json::parse(bench.kgen("can decode p 10 00 00 03 --format json").out);
  EXPECT_EQ(json[1]["number"], 3);
  EXPECT_EQ(bench.kgen("can decode p 124#00").code, 1);
  EXPECT_EQ(bench.kgen("can decode p rubbish").code, 2);
}

}  // namespace
}  // namespace apps_test
