#include "dbc/proposals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "dbc/database_files.h"
#include "model/can_values.h"
#include "model/names.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

/// One line a proposal, as far as it matters here.
std::vector<std::string> shown(const Proposals& proposals) {
  std::vector<std::string> lines;
  for (const Proposal& each : proposals.list) {
    if (each.fitness == Fitness::impossible) {
      lines.push_back(concat("no ", each.name, ": ", each.reason));
      continue;
    }
    lines.push_back(concat(each.fitness == Fitness::ready ? "" : "? ", each.name, " ",
                           each.item.DataId, " type ", each.item.ItemMessageType, " start ",
                           each.item.StartBit, " bits ", each.item.NumBits, " ", each.item.DataType,
                           " ", each.item.Units));
  }
  return lines;
}

TEST(Proposals, HaveTheStartBitsAndTypesOfTheLogger) {
  Database database = databaseFile("plain.dbc");
  EXPECT_EQ(
      shown(proposalsFor(database, KGEN_COMMON::newProject())),
      (std::vector<std::string>{
          "Turning &H123 type 2 start 1 bits 16 IEEE4 rpm",
          "Torque &H123 type 4 start 17 bits 12 FP2 Nm", "State &H123 type 2 start 29 bits 4 FP2 ",
          "Oil_Temp &H123 type 3 start 33 bits 8 FP2 Cel",
          "Supply &H123 type 1 start 41 bits 16 IEEE4 V",
          ("no Wind: its identifier has 29 bits, and the project receives those of 11; it "
           "can't do both"),
          ("no Pressure: its identifier has 29 bits, and the project receives those of 11; it "
           "can't do both")}));
  database.messages.erase(database.messages.begin());
  const Proposals extended = proposalsFor(database, KGEN_COMMON::newProject());
  EXPECT_EQ(extended.dataIdType, 1);
  EXPECT_EQ(shown(extended),
            (std::vector<std::string>{"Wind &H18FEF100 type 6 start 1 bits 32 IEEE4 m/s",
                                      "Pressure &H18FEF100 type 5 start 33 bits 32 IEEE4 hPa"}));
}

TEST(Proposals, ExplainWhatTheLoggerCannotDo) {
  const Database multiplexed = databaseFile("multiplexed.dbc");
  const Proposals proposals = proposalsFor(multiplexed, KGEN_COMMON::newProject());
  ASSERT_EQ(proposals.list.size(), 7U);
  EXPECT_EQ(proposals.list[0].fitness, Fitness::ready);
  EXPECT_EQ(proposals.list[2].fitness, Fitness::ifChosen);
  EXPECT_EQ(proposals.list[2].reason,
            "it is in the message only while 'Page' is 1, 8 to 11; the logger reads its bits from "
            "every frame of the message");
  EXPECT_EQ(proposals.list[5].fitness, Fitness::ready);

  const Database beyond = databaseFile("beyond_the_logger.dbc");
  EXPECT_TRUE(beyond.faults.empty());
  EXPECT_EQ(shown(proposalsFor(beyond, KGEN_COMMON::newProject())),
            (std::vector<std::string>{
                "no InLong: its message has 64 bytes, and the logger receives frames of up to 8",
                "no FarOut: its message has 64 bytes, and the logger receives frames of up to 8",
                ("no Precise: it is a double of 64 bits; the logger takes floats of 32 bits and "
                 "whole numbers"),
                "Counter &H66 type 1 start 1 bits 64 IEEE4 ",
                ("no Other: its identifier has 29 bits, and the project receives those of 11; it "
                 "can't do both")}));
}

Database databaseWith(const std::vector<std::string>& names, const std::string& unit = "") {
  std::string text = "BO_ 1 M: 8 X\n";
  for (const std::string& name : names)
    text += concat(" SG_ ", name, " : 0|8@1+ (1,0) [0|1] \"", unit, "\" X\n");
  return read(text);
}

TEST(Proposals, HaveNamesThatTheProjectTakes) {
  model::Project project = support::projectWith(2, {model::ModuleKindIndex::analog7121});
  support::addBlock(project, model::BlockKind::voltage, 1, 1).elements[0].AliasName = "Oil";
  project.calculated.CalcFieldCount = 1;
  fitLists(project);
  project.calculated.fields[0].CalcName = "Power";
  const Database database =
      databaseWith({"OIL", "oil", "Power", "2nd", "__x", "a-b.c", "Scan", "VBlk1", "BRNG1", "Flag",
                    "I", "I_2", "SpeedOfTheLeftFrontWheel", "SpeedOfTheLeftFreeWheel",
                    ("Gr\xC3\xB6\xC3\x9F"
                     "e"),
                    "Table1", "_"});
  ASSERT_TRUE(database.faults.empty());
  std::string names;
  for (const Proposal& proposal : proposalsFor(database, project).list) {
    EXPECT_FALSE(model::complaintAboutAlias(proposal.name)) << proposal.name;
    names += concat(proposal.name, " ");
  }
  EXPECT_EQ(names,
            "OIL_2 oil_3 Power_2 Sig_2nd x a_b_c Sig_Scan Sig_VBlk1 Sig_BRNG1 Sig_Flag Sig_I I_2 "
            "SpeedOfTheLeftFr SpeedOfTheLeft_2 Gr__e Table1_2 Sig_ ");
}

TEST(Proposals, HaveUnitsThatTheProjectTakes) {
  const std::pair<std::string, std::string> cases[] = {{"", ""},
                                                       {"\xC2\xB0"
                                                        "C",
                                                        "Deg_C"},
                                                       {"\xC2\xB5V", "uV"},
                                                       {"m/s\xC2\xB2", "m/s2"},
                                                       {"mm Hg [abs]", "mm_Hg_(abs)"},
                                                       {"liters per hour", "liters_per_h"},
                                                       {"\xE2\x82\xAC", "?"},
                                                       {" % ", "%"}};
  for (const auto& [unit, expected] : cases) {
    const Database database = databaseWith({"A"}, unit);
    const Proposals proposals = proposalsFor(database, KGEN_COMMON::newProject());
    EXPECT_EQ(proposals.list.at(0).item.Units, expected);
    EXPECT_FALSE(model::complaintAboutUnits(expected));
    EXPECT_EQ(proposals.list[0].notes.size(), unit == expected ? 0U : 1U);
  }
}

TEST(Proposals, BecomeItemsUpToTheLimit) {
  std::vector<std::string> names(70);
  for (std::size_t i = 0; i < names.size(); ++i) names[i] = concat("V", i);
  const Database database = databaseWith(names);
  model::Project project = KGEN_COMMON::newProject();
  const Proposals proposals = proposalsFor(database, project);
  EXPECT_EQ(proposalNamed(proposals, database, "m.v3"), &proposals.list[3]);
  EXPECT_EQ(proposalNamed(proposals, database, "x.v3"), nullptr);
  std::vector<const Proposal*> all;
  for (const Proposal& proposal : proposals.list) all.push_back(&proposal);
  const std::vector<std::string> refused = addItems(project, proposals, all);
  EXPECT_EQ(refused.size(), 6U);
  EXPECT_EQ(project.can.items.size(), model::maxCanItems);
  EXPECT_EQ(project.can.CanCount, 64);
  EXPECT_TRUE(hasCanInterface(project));
  for (const model::CanItem& item : project.can.items)
    EXPECT_FALSE(complaintAboutItem(item, project.can));
}

/// The value of a signal by its own definition: bit after bit from the start bit on, downwards in
/// the byte and on with the highest bit of the next one when the most significant comes first.
double valueByDefinition(const Signal& signal, const std::vector<std::uint8_t>& data) {
  int bit = signal.startBit;
  std::vector<bool> bits;
  for (int i = 0; i < signal.bits; ++i) {
    bits.push_back((data[static_cast<std::size_t>(bit / 8)] >> (bit % 8) & 1) != 0);
    const bool msbFirst = signal.order == ByteOrder::msbFirst;
    bit = !msbFirst ? bit + 1 : bit % 8 == 0 ? bit + 15 : bit - 1;
  }
  if (signal.order == ByteOrder::lsbFirst) std::reverse(bits.begin(), bits.end());
  long double number = 0;
  for (std::size_t i = 0; i < bits.size(); ++i)
    number = number * 2 + (bits[i] ? (signal.isSigned && i == 0 ? -1 : 1) : 0);
  return static_cast<double>(static_cast<long double>(signal.factor) *
                             static_cast<double>(number)) +
         signal.offset;
}

TEST(Proposals, DecodeToTheValuesOfTheDatabase) {
  std::mt19937 random(31);
  const auto below = [&random](int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
  };
  int decodedValues = 0;
  for (int i = 0; i < 5000; ++i) {
    const bool msbFirst = below(2) == 0;
    const int start = below(64), bits = 1 + below(64);
    const std::string text =
        concat("BO_ 1 M: 8 X\n SG_ S : ", start, "|", bits, "@", msbFirst ? 0 : 1,
               below(2) == 0 ? "+" : "-", " (", 1 + below(4), ",", below(5), ") [0|0] \"\" X\n");
    const Database database = read(text);
    if (!database.faults.empty()) continue;  // beyond the frame
    model::Project project = KGEN_COMMON::newProject();
    const Proposals proposals = proposalsFor(database, project);
    EXPECT_TRUE(addItems(project, proposals, {&proposals.list.at(0)}).empty());
    can::Frame frame{1, false, std::vector<std::uint8_t>(8)};
    for (std::uint8_t& byte : frame.data) byte = static_cast<std::uint8_t>(random());
    const auto values = decoded(project, frame);
    ASSERT_EQ(values.size(), 1U) << text;
    EXPECT_EQ(values[0].number, valueByDefinition(database.messages[0].signals[0], frame.data))
        << text;
    ++decodedValues;
  }
  EXPECT_GT(decodedValues, 1500);
}

}  // namespace
}  // namespace dbc
