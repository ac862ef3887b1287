#include "text/strings.h"

#include <gtest/gtest.h>

#include "text/json_writer.h"

namespace text {
namespace {

TEST(Strings, RulesATitleWithHalvesToEven) {
  // Title lengths and signs on each side in a line of 64: 27.5 becomes 28, 25.5 becomes 26, 24.5
  // becomes 24.
  const std::pair<std::size_t, std::size_t> cases[] = {{9, 28},  {13, 26}, {15, 24},
                                                       {11, 26}, {16, 24}, {80, 0}};
  for (const auto& [length, signs] : cases) {
    const std::string title(length, 't');
    EXPECT_EQ(ruled(title, 64, '\\', '/'),
              std::string(signs, '\\') + title + std::string(signs, '/'));
  }
}

TEST(Strings, TakesBytesThatAreNoUtf8AsWindows1252) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"20 \xC2\xB0"
       "C",
       "20 \xC2\xB0"
       "C"},  // well-formed: stays
      {"20 \xB0"
       "C",
       "20 \xC2\xB0"
       "C"},
      {"\x80", "\xE2\x82\xAC"},
      {"\xE2\x82", "\xC3\xA2\xE2\x80\x9A"},              // cut short
      {"\xC0\xAF", "\xC3\x80\xC2\xAF"},                  // overlong
      {"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"},  // half a surrogate pair
  };
  for (const auto& [bytes, utf8] : cases) EXPECT_EQ(asUtf8(bytes), utf8);
  EXPECT_EQ(asAscii("20 \xC2\xB0"
                    "C\t\xE2\x82\xAC"),
            "20 ?C??");
}

TEST(Strings, JoinsAndComparesPieces) {
  EXPECT_EQ(concat("a", 1, ',', 2.5, "b"), "a1,2.5b");
  EXPECT_TRUE(equalsIgnoringCase("VFILT", "vFilt"));
  EXPECT_FALSE(equalsIgnoringCase("VFilt", "VFil"));
  EXPECT_TRUE(containsIgnoringCase("If battvolt <11", "BattVolt"));
  EXPECT_EQ(trimmed(" \ta b\t "), "a b");
  EXPECT_EQ(trimmed("  "), "");
  for (const std::string_view name : {"a", "A1_b"}) EXPECT_TRUE(isName(name));
  for (const std::string_view name : {"", "1a", "_a", "a b", "a-b"}) EXPECT_FALSE(isName(name));
}

TEST(JsonWriter, EscapesTextAndKeepsCommas) {
  std::string out;
  JsonWriter json([&](std::string_view piece) { out += piece; });
  json.openObject();
  json.member("text", "a \"line\"\r\n\x01\\");
  json.key("list");
  json.openArray();
  json.value(1);
  json.value(true);
  json.value(std::numeric_limits<double>::quiet_NaN());
  json.openObject();
  json.closeObject();
  json.closeArray();
  json.member("x", 0.5);
  json.closeObject();
  json.finish();
  EXPECT_EQ(out,
            "{\"text\":\"a \\\"line\\\"\\r\\n\\u0001\\\\\",\"list\":[1,true,null,{}],\"x\":0.5}\n");
}

}  // namespace
}  // namespace text
