#include "dbc/database.h"

#include <gtest/gtest.h>

#include "dbc/database_files.h"
#include "support/demo_project.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

std::vector<std::string> faultLines(const Database& database) {
  std::vector<std::string> lines;
  for (const Fault& fault : database.faults) lines.push_back(concat(fault.line, ": ", fault.text));
  return lines;
}

const Signal& signalNamed(const Database& database, std::string_view name) {
  for (const Message& message : database.messages)
    for (const Signal& signal : message.signals)
      if (signal.name == name) return signal;
  throw std::runtime_error(concat("no signal ", name));
}

TEST(Databases, AreReadWhole) {
  const Database database = databaseFile("plain.dbc");
  EXPECT_EQ(faultLines(database), std::vector<std::string>());
  EXPECT_EQ(database.version, "1.4");
  EXPECT_EQ(database.comment, "A mill and what surrounds it");
  EXPECT_EQ(database.nodes, (std::vector<std::string>{"Mill", "Panel", "Vector__XXX"}));
  ASSERT_EQ(database.messages.size(), 2U);
  const Message& drive = database.messages[0];
  EXPECT_EQ(drive.identifier, 291U);
  EXPECT_FALSE(drive.extended);
  EXPECT_EQ(drive.name, "Drive");
  EXPECT_EQ(drive.bytes, 8);
  EXPECT_EQ(drive.sender, "Mill");
  EXPECT_EQ(drive.comment, "Sent every 10 ms");
  EXPECT_EQ(drive.line, 15U);
  ASSERT_EQ(drive.signals.size(), 5U);
  Signal torque;
  torque.name = "Torque";
  torque.line = 17;
  torque.startBit = 16;
  torque.bits = 12;
  torque.isSigned = true;
  torque.factor = 0.5;
  torque.offset = -100;
  torque.minimum = -1124;
  torque.maximum = 923.5;
  torque.units = "Nm";
  torque.receivers = {"Panel", "Mill"};
  torque.comment = "Of the main shaft,\nmeasured at the \"coupling\"";
  EXPECT_EQ(drive.signals[1], torque);
  EXPECT_EQ(drive.signals[2].valueNames,
            (std::vector<ValueName>{{0, "Off"}, {1, "Runs"}, {15, "Not known"}}));
  EXPECT_EQ(drive.signals[3].order, ByteOrder::msbFirst);
  EXPECT_TRUE(drive.signals[3].isSigned);
  const Message& weather = database.messages[1];
  EXPECT_EQ(weather.identifier, 0x18FEF100U);
  EXPECT_TRUE(weather.extended);
  EXPECT_EQ(weather.signals[0].type, ValueType::float32);
}

TEST(Databases, TellWhatDependsOnASwitch) {
  const Database database = databaseFile("multiplexed.dbc");
  EXPECT_TRUE(signalNamed(database, "Page").isSwitch);
  EXPECT_TRUE(signalNamed(database, "Page").onlyFor.empty());
  EXPECT_EQ(signalNamed(database, "Cell_2").onlyFor, (std::vector<Range>{{1, 1}, {8, 11}}));
  EXPECT_EQ(signalNamed(database, "Cell_2").switchName, "Page");
  EXPECT_TRUE(signalNamed(database, "Detail").isSwitch);
  EXPECT_EQ(signalNamed(database, "Detail").switchName, "Page");
  EXPECT_EQ(signalNamed(database, "Fine").switchName, "Detail");
  EXPECT_EQ(signalNamed(database, "Fine").onlyFor, (std::vector<Range>{{5, 5}, {7, 9}}));
  EXPECT_TRUE(signalNamed(database, "Always").onlyFor.empty());
  EXPECT_EQ(faultLines(database),
            std::vector<std::string>{"11: multiplexed signal 'Lost' has no switch in its message"});
}

TEST(Databases, NameEveryBadLineAndKeepTheRest) {
  const Database database = databaseFile("dirty.dbc");
  const std::vector<std::string> expected = {
      "6: signal 'Long' is left out: it has 65 bits, and a number has at most 64",
      "7: signal 'Beyond' is left out: it goes to byte 9, and message 'Tank' has 8 bytes",
      "8: signal 'MsbBeyond' is left out: it goes to byte 9, and message 'Tank' has 8 bytes",
      "9: signal 'Level' is left out: there is another one of this name in message 'Tank'",
      ("10: '0' is missing before '+ (1,0) [0|255] \"\" B' as byte order; write 0 or 1; the "
       "statement is left out"),
      "11: '[' is missing before '\"\" B' before the minimum; the rest of the line is left out",
      "12: the unit in quotes is missing before 'mm B'; the rest of the line is left out",
      "13: signal 'Zero' has factor 0; 1 is taken",
      "14: ')' is missing before ',0) [0|255] \"\" B' behind the offset; the statement is left out",
      ("17: identifier 300 of message 'Tank2' is that of 'Tank' in line 3; its signals are taken "
       "into that message"),
      ("19: the identifier of a message is missing before 'x301 Broken: 8 A'; "
       "the statement is left out"),
      "20: signal 'Homeless' stands below no message that could be read; the statement is left out",
      ("21: identifier 419348235 has more than 11 bits without the mark of a longer one; "
       "it is taken as one of 29 bits"),
      "23: 'THIS_IS_NEW 1 2 3;' is no statement of a database; it is left out",
      "26: there is no signal 'Nowhere' of message 300; the statement is left out",
      "28: the quote that closes the comment is missing; the statement is left out",
      "29: the ';' at the end of the statement is missing",
      "30: there is no message 999; the statement is left out",
      "31: the name of a value in quotes is missing before 'b;'; the statement is left out",
      "32: the ';' at the end of the statement is missing",
      "33: there is no value table 'Unknown_Table'; the statement is left out",
      "34: signal 'Extra' has 4 bits and can't be a float; the statement is left out",
      "37: identifier 536870912 has more than 29 bits; the statement is left out",
      "38: 'trailing rubbish' is no statement of a database; it is left out",
  };
  EXPECT_EQ(faultLines(database), expected);
  ASSERT_EQ(database.messages.size(), 2U);
  std::string names;
  for (const Signal& signal : database.messages[0].signals) names += concat(signal.name, " ");
  EXPECT_EQ(names, "Level Warm_\xC2\xB0 NoRange NoUnit Zero After Extra ");
  EXPECT_EQ(signalNamed(database, "Level").comment, "He said \"stop\" and\nleft; really");
  EXPECT_EQ(signalNamed(database, "Warm_\xC2\xB0").units,
            "\xC2\xB0"
            "C");
  EXPECT_EQ(signalNamed(database, "Level").receivers, std::vector<std::string>{"B"});
  EXPECT_EQ(signalNamed(database, "After").factor, 0.001);
  EXPECT_EQ(signalNamed(database, "After").receivers, (std::vector<std::string>{"B", "C"}));
  EXPECT_EQ(signalNamed(database, "Extra").valueNames.size(), 2U);
  EXPECT_EQ(database.messages[0].comment, "no semicolon");
}

TEST(Databases, ThatAreNoneSaySo) {
  const std::pair<std::string, std::string> cases[] = {
      {"", "there are no messages in it"},
      {"\xEF\xBB\xBF\r\n\r\n", "there are no messages in it"},
      {std::string("BO_ 1 A: 8 B\n\0", 14), "this is no text"},
      {"\xFF\xFE"
       "B",
       "the text has 16 bits a character"},
      {"<html>", "'<html>' is no statement"}};
  for (const auto& [text, words] : cases) {
    const Database database = read(text);
    ASSERT_EQ(database.faults.size(), 1U) << text;
    EXPECT_EQ(database.faults[0].text.substr(0, words.size()), words);
  }
  std::string rubbish;
  for (int i = 0; i < 3000; ++i) rubbish += "rubbish\n";
  const Database database = read(rubbish);
  ASSERT_EQ(database.faults.size(), mostFaults);
  EXPECT_EQ(database.faults.back().text, "2001 further faults are not listed");
}

TEST(Databases, CutAnywhereAreReadUpToThere) {
  for (const char* const name : {"plain.dbc", "multiplexed.dbc", "dirty.dbc"}) {
    const std::string whole = databaseText(name);
    const std::size_t messages = read(whole).messages.size();
    for (std::size_t end = 0; end < whole.size(); ++end) {
      const Database cut = read(whole.substr(0, end));
      EXPECT_LE(cut.messages.size(), messages);
      for (const Message& message : cut.messages)
        for (const Signal& signal : message.signals) EXPECT_LE(bytesUsed(signal), message.bytes);
    }
  }
}

}  // namespace
}  // namespace dbc
