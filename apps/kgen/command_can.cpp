#include <array>
#include <charconv>
#include <memory>

#include "can/can_config.h"
#include "command.h"
#include "command_can_frames.h"
#include "failure.h"
#include "parser.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"

namespace kgen {
namespace {

constexpr std::array<std::string_view, 6> fieldNames = {
    "priority", "reserved", "dataPage", "pduFormat", "pduSpecific", "sourceAddress"};

struct IdOptions {
  std::string text;
  std::string bits = "11";
};

struct J1939Options {
  std::string text;
  std::vector<std::string> settings;
};

[[noreturn]] void refuse(std::string_view given, std::string_view complaint) {
  throw Failure(wrongUsage, text::concat("'", given, "': ", complaint));
}

can::cCanConfig configurationFor(const std::string& identifier, bool extended) {
  can::cCanConfig configuration;
  configuration.SetMode(extended ? 1 : 0);
  if (!configuration.DataID(identifier))
    refuse(identifier, "no identifier; write decimal digits, or &H and hexadecimal digits");
  return configuration;
}

void writeIdentifier(text::JsonWriter& json, const can::cCanConfig& configuration) {
  json.member("DataID", configuration.DataID());
  json.member(
      "value",
      can::parsedIdentifier(configuration.DataID(), configuration.LargestIdentifier()).value);
  json.member("DataIDIsHex", configuration.DataIDIsHex());
  json.member("IdentifierBits", configuration.IdentifierBits());
  json.member("LargestIdentifier", configuration.LargestIdentifier());
  json.member("PGNVal", configuration.PGNVal());
}

int runId(const IdOptions& options) {
  const can::cCanConfig configuration = configurationFor(options.text, options.bits == "29");
  text::JsonWriter json(writeOut);
  json.openObject();
  writeIdentifier(json, configuration);
  json.closeObject();
  json.finish();
  return done;
}

Action prepareId(Parser& parser) {
  const auto options = std::make_shared<IdOptions>();
  parser.argument("TEXT", "Identifier, decimal or &H and hexadecimal digits", options->text);
  parser.choice("--bits", {"11", "29"}, "Length of the identifier; 11 unless said otherwise",
                options->bits);
  return [options] { return runId(*options); };
}

std::int16_t baudCodeIn(const std::string& text) {
  std::int16_t code = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, code);
  if (error != std::errc{} || stop != end) refuse(text, "no code; write a number from 0 to 6");
  return code;
}

int runBaud(const std::string& text) {
  const std::int16_t code = baudCodeIn(text);
  can::cCanModule module;
  module.SetMode(code, 1);
  text::JsonWriter json(writeOut);
  json.openObject();
  json.member("code", code);
  json.member("BaudRateText", module.BaudRateText(code));
  json.member("TimeQuanta", module.TimeQuanta());
  json.member("TSeg1", module.TSeg1());
  json.member("TSeg2", module.TSeg2());
  json.member("NumBaudRates", module.NumBaudRates());
  json.closeObject();
  json.finish();
  return done;
}

Action prepareBaud(Parser& parser) {
  const auto code = std::make_shared<std::string>();
  parser.argument("CODE", "Code of the baud rate, 0 (1 M) to 6 (20 K)", *code);
  return [code] { return runBaud(*code); };
}

int fieldNamed(std::string_view name, std::string_view setting) {
  for (std::size_t i = 0; i < fieldNames.size(); ++i)
    if (text::equalsIgnoringCase(fieldNames[i], name)) return static_cast<int>(i);
  refuse(setting,
         "no such field; choose priority, reserved, dataPage, pduFormat, pduSpecific or "
         "sourceAddress");
}

void applySetting(can::cCanConfig& configuration, const std::string& setting) {
  const std::size_t equals = std::min(setting.find('='), setting.size());
  const int field = fieldNamed(std::string_view(setting).substr(0, equals), setting);
  const auto number = std::string_view(setting).substr(std::min(equals + 1, setting.size()));
  const can::Identifier value = can::parsedIdentifier(number, configuration.LargestIdentifier());
  if (!value.valid) refuse(setting, "the value cannot be read; write FIELD=VALUE");
  configuration.J1939_FieldVal(field, value.value);
}

void writeFields(text::JsonWriter& json, const can::cCanConfig& configuration) {
  json.key("fields");
  json.openArray();
  for (int field = 0; field < static_cast<int>(fieldNames.size()); ++field) {
    json.openObject();
    json.member("name", fieldNames[static_cast<std::size_t>(field)]);
    json.member("J1939_FieldStartBit", configuration.J1939_FieldStartBit(field));
    json.member("J1939_FieldVal", static_cast<int>(configuration.J1939_FieldVal(field)));
    json.member("J1939_FieldBinString", configuration.J1939_FieldBinString(field));
    json.closeObject();
  }
  json.closeArray();
}

int runJ1939(const J1939Options& options) {
  can::cCanConfig configuration = configurationFor(options.text, true);
  for (const std::string& setting : options.settings) applySetting(configuration, setting);
  text::JsonWriter json(writeOut);
  json.openObject();
  writeIdentifier(json, configuration);
  writeFields(json, configuration);
  json.closeObject();
  json.finish();
  return done;
}

Action prepareJ1939(Parser& parser) {
  const auto options = std::make_shared<J1939Options>();
  parser.argument("ID", "29-bit identifier, decimal or &H and hexadecimal digits", options->text);
  parser.repeated("--set", "FIELD=VALUE",
                  "Change a field: priority, reserved, dataPage, pduFormat, pduSpecific or "
                  "sourceAddress; may be repeated",
                  options->settings);
  return [options] { return runJ1939(*options); };
}

constexpr Command canCommands[] = {
    {"id", "Read an identifier as the logger takes it, as JSON", prepareId},
    {"baud", "Bit timing of a baud rate, as JSON", prepareBaud},
    {"j1939", "Fields of a 29-bit identifier, as JSON", prepareJ1939},
    {"import", "Make CAN items of the signals of a CAN database", prepareCanImport},
    {"decode", "Values that the items of a project take out of a frame", prepareCanDecode},
};

}  // namespace

Action prepareCan(Parser& parser) { return parser.commands(canCommands); }

}  // namespace kgen
