#include "command_can_frames.h"

#include <memory>

#include "dbc/proposals.h"
#include "disk_files.h"
#include "failure.h"
#include "model/can_values.h"
#include "parser.h"
#include "project_files.h"
#include "terminal.h"
#include "text/json_writer.h"
#include "text/strings.h"

namespace kgen {
namespace {

using text::concat;

// ---- import

struct ImportOptions {
  std::string file, project, out;
  std::vector<std::string> signals;
  std::string format = "text";
};

/// What an import is about to do, or has done.
struct Import {
  dbc::Database database;
  dbc::Proposals proposals;
  std::vector<const dbc::Proposal*> chosen;
  std::vector<std::string> refused;
};

std::string_view wordOf(dbc::Fitness fitness) {
  switch (fitness) {
    case dbc::Fitness::ready:
      return "ready";
    case dbc::Fitness::ifChosen:
      return "if chosen";
    case dbc::Fitness::impossible:
      return "impossible";
  }
  return "";
}

/// Everything that is ready, unless signals are named.
void choose(Import& import, const ImportOptions& options) {
  for (const dbc::Proposal& proposal : import.proposals.list)
    if (options.signals.empty() && proposal.fitness == dbc::Fitness::ready)
      import.chosen.push_back(&proposal);
  for (const std::string& name : options.signals) {
    const dbc::Proposal* proposal = proposalNamed(import.proposals, import.database, name);
    if (proposal == nullptr)
      throw Failure(wrongUsage, concat("--signal '", name, "': ", shownName(options.file),
                                       " has no such signal; name one that it lists"));
    import.chosen.push_back(proposal);
  }
}

std::string itemText(const dbc::Proposal& proposal) {
  const model::CanItem& item = proposal.item;
  return concat(proposal.name, ": id ", item.DataId, ", type ", item.ItemMessageType, ", start ",
                item.StartBit, ", bits ", item.NumBits, ", x ", item.Mult, " + ", item.Offset, " ",
                item.Units);
}

void listProposal(const Import& import, const dbc::Proposal& proposal) {
  const dbc::Message& message = import.database.messages[proposal.message];
  std::string line = concat(message.name, ".", message.signals[proposal.signal].name, " -> ");
  const bool has = proposal.fitness != dbc::Fitness::impossible;
  line += has ? std::string(text::trimmed(itemText(proposal))) : "nothing";
  if (!proposal.reason.empty())
    line += concat(has ? "; only with --signal: " : ": ", proposal.reason);
  for (const std::string& note : proposal.notes) line += concat("; ", note);
  writeOut(line + "\n");
}

void writeProposal(text::JsonWriter& json, const Import& import, const dbc::Proposal& proposal) {
  const dbc::Message& message = import.database.messages[proposal.message];
  json.openObject();
  json.member("message", message.name);
  json.member("signal", message.signals[proposal.signal].name);
  json.member("fitness", wordOf(proposal.fitness));
  json.member("reason", proposal.reason);
  json.key("notes");
  json.openArray();
  for (const std::string& note : proposal.notes) json.value(note);
  json.closeArray();
  if (proposal.fitness != dbc::Fitness::impossible) {
    const model::CanItem& item = proposal.item;
    json.member("name", proposal.name);
    json.member("DataId", item.DataId);
    json.member("ItemMessageType", int{item.ItemMessageType});
    json.member("StartBit", int{item.StartBit});
    json.member("NumBits", int{item.NumBits});
    json.member("Mult", item.Mult);
    json.member("Offset", item.Offset);
    json.member("Units", item.Units);
    json.member("Description", item.Description);
  }
  json.closeObject();
}

void writeImport(const Import& import) {
  text::JsonWriter json(writeOut);
  json.openObject();
  json.member("messages", static_cast<std::int64_t>(import.database.messages.size()));
  json.member("IdentifierBits", import.proposals.dataIdType == 0 ? 11 : 29);
  json.key("faults");
  json.openArray();
  for (const dbc::Fault& fault : import.database.faults) {
    json.openObject();
    json.member("line", static_cast<std::int64_t>(fault.line));
    json.member("text", fault.text);
    json.closeObject();
  }
  json.closeArray();
  json.key("proposals");
  json.openArray();
  for (const dbc::Proposal& proposal : import.proposals.list) writeProposal(json, import, proposal);
  json.closeArray();
  json.key("refused");
  json.openArray();
  for (const std::string& line : import.refused) json.value(line);
  json.closeArray();
  json.closeObject();
  json.finish();
}

void save(const std::string& out, const model::Project& project) {
  DiskFiles files;
  const std::string base = withoutProjectExtension(out);
  saveProject(base, project, stampFor(base));
}

int runImport(const ImportOptions& options) {
  if (!options.out.empty() && (options.project.empty() || options.out == "-"))
    throw Failure(
        wrongUsage,
        "can import: --out takes the file of the project that --project names; give both");
  const auto opened =
      options.project.empty() ? std::make_unique<OpenedProject>() : openProject(options.project);
  Import import;
  import.database = dbc::read(readAll(options.file));
  for (const dbc::Fault& fault : import.database.faults)
    complain(concat(shownName(options.file), ":", fault.line, ": ", fault.text));
  if (import.database.messages.empty())
    throw Failure(inputUnreadable, concat(shownName(options.file), ": no message can be read"));
  import.proposals = proposalsFor(import.database, opened->project);
  choose(import, options);
  import.refused = addItems(opened->project, import.proposals, import.chosen);
  for (const std::string& line : import.refused) complain(concat("left out: ", line));
  if (!options.out.empty()) save(options.out, opened->project);
  if (options.format == "json")
    writeImport(import);
  else
    for (const dbc::Proposal& proposal : import.proposals.list) listProposal(import, proposal);
  return import.database.faults.empty() && import.refused.empty() ? done : findings;
}

// ---- decode

struct DecodeOptions {
  std::string file, format = "text";
  std::vector<std::string> frame;
};

can::Frame frameOf(const DecodeOptions& options) {
  std::string text;
  for (const std::string& word : options.frame) text += concat(text.empty() ? "" : " ", word);
  can::FrameReading reading = can::frameFrom(text);
  if (!reading.frame) throw Failure(wrongUsage, concat("can decode: ", reading.complaint));
  return *reading.frame;
}

void listValue(const model::DecodedValue& value) {
  const std::string number =
      value.number ? concat(*value.number, value.units.empty() ? "" : " ", value.units)
                   : concat("no value: ", value.remark);
  writeOut(concat(value.name, " = ", number, "\n"));
}

void writeValues(const std::vector<model::DecodedValue>& values) {
  text::JsonWriter json(writeOut);
  json.openArray();
  for (const model::DecodedValue& value : values) {
    json.openObject();
    json.member("item", static_cast<std::int64_t>(value.item + 1));
    json.member("value", static_cast<std::int64_t>(value.value + 1));
    json.member("name", value.name);
    if (value.number) json.member("number", *value.number);
    json.member("units", value.units);
    if (!value.remark.empty()) json.member("remark", value.remark);
    json.closeObject();
  }
  json.closeArray();
  json.finish();
}

int runDecode(const DecodeOptions& options) {
  const can::Frame frame = frameOf(options);
  const auto opened = openProject(options.file);
  const std::vector<model::DecodedValue> values = decoded(opened->project, frame);
  if (values.empty())
    complain(concat(shownName(opened->path), ": no CAN item receives such a frame"));
  if (options.format == "json")
    writeValues(values);
  else
    for (const model::DecodedValue& value : values) listValue(value);
  return values.empty() ? findings : done;
}

}  // namespace

Action prepareCanImport(Parser& parser) {
  const auto options = std::make_shared<ImportOptions>();
  parser.argument("FILE", "CAN database, - for standard input", options->file);
  parser.option("--project", "P", "Project that names and items have to fit in", options->project);
  parser.option("--out", "OUT", "Project file to write with the items added", options->out);
  parser.repeated("--signal", "NAME",
                  "Signal or Message.Signal to add, also a multiplexed one; all that fit unless "
                  "given; may be repeated",
                  options->signals);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runImport(*options); };
}

Action prepareCanDecode(Parser& parser) {
  const auto options = std::make_shared<DecodeOptions>();
  parser.argument("PROJECT", "Project file, - for standard input", options->file);
  parser.arguments("FRAME", "Frame in hexadecimal: 18FEF100#0102, 123 2 01 02, or data bytes alone",
                   options->frame);
  parser.choice("--format", {"text", "json"}, "Form of the answer; text unless said otherwise",
                options->format);
  return [options] { return runDecode(*options); };
}

}  // namespace kgen
