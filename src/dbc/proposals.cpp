#include "dbc/proposals.h"

#include <algorithm>

#include "dbc/project_names.h"
#include "model/can_values.h"
#include "text/strings.h"

namespace dbc {
namespace {

using text::concat;

constexpr int bitsOfFp2 = 12;    // that a value of two bytes keeps
constexpr int bitsOfIeee4 = 24;  // and one of four

std::string hexText(std::uint32_t identifier) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  do text.insert(text.begin(), digits[identifier & 15U]);
  while ((identifier >>= 4) != 0);
  return concat("&H", text);
}

/// A project receives identifiers of one length: its own, or with no items yet the one that most
/// signals of the database have.
std::int16_t dataIdTypeFor(const Database& database, const model::Project& project) {
  if (!project.can.items.empty()) return project.can.CanDataIDType == 0 ? 0 : 1;
  std::size_t extended = 0, all = 0;
  for (const Message& message : database.messages) {
    all += message.signals.size();
    if (message.extended) extended += message.signals.size();
  }
  return 2 * extended > all || (all > 0 && extended == all) ? 1 : 0;
}

std::string rangesText(const std::vector<Range>& ranges) {
  constexpr std::size_t mostShown = 8;
  std::string text;
  for (std::size_t i = 0; i < std::min(ranges.size(), mostShown); ++i) {
    text += concat(i == 0 ? "" : ", ", ranges[i].low);
    if (ranges[i].high != ranges[i].low) text += concat(" to ", ranges[i].high);
  }
  return ranges.size() > mostShown ? text + ", ..." : text;
}

std::string whyImpossible(const Message& message, const Signal& signal, std::int16_t dataIdType) {
  if (message.identifier == noMessageIdentifier)
    return "it belongs to no message; add it to one in the database";
  if (message.bytes > can::frameBytes)
    return concat("its message has ", message.bytes,
                  " bytes, and the logger receives frames of up "
                  "to ",
                  can::frameBytes);
  if (message.extended != (dataIdType != 0))
    return concat("its identifier has ", message.extended ? 29 : 11,
                  " bits, and the project "
                  "receives those of ",
                  dataIdType != 0 ? 29 : 11, "; it can't do both");
  if (signal.type == ValueType::float64)
    return "it is a double of 64 bits; the logger takes floats of 32 bits and whole numbers";
  return {};
}

/// A frame without the signal has other bits in its place.
std::string whyIfChosen(const Signal& signal) {
  if (signal.onlyFor.empty()) return {};
  return concat("it is in the message only while '", signal.switchName, "' is ",
                rangesText(signal.onlyFor),
                "; the logger reads its bits from every frame of the message");
}

std::int16_t messageTypeOf(const Signal& signal) {
  const int form = signal.type == ValueType::float32 ? 2 : signal.isSigned ? 1 : 0;
  return static_cast<std::int16_t>(2 * form + (signal.order == ByteOrder::msbFirst ? 1 : 2));
}

class Proposer {
 public:
  Proposer(const Database& database, const model::Project& project)
      : database_(database), names_(project), proposals_{dataIdTypeFor(database, project), {}} {}

  Proposals run() {
    for (std::size_t m = 0; m < database_.messages.size(); ++m)
      for (std::size_t s = 0; s < database_.messages[m].signals.size(); ++s) propose(m, s);
    return std::move(proposals_);
  }

 private:
  void propose(std::size_t m, std::size_t s) {
    const Message& message = database_.messages[m];
    const Signal& signal = message.signals[s];
    Proposal& proposal = proposals_.list.emplace_back();
    proposal.message = m;
    proposal.signal = s;
    proposal.reason = whyImpossible(message, signal, proposals_.dataIdType);
    if (!proposal.reason.empty()) {
      proposal.fitness = Fitness::impossible;
      proposal.name = signal.name;
      return;
    }
    proposal.reason = whyIfChosen(signal);
    if (!proposal.reason.empty()) proposal.fitness = Fitness::ifChosen;
    proposal.name = names_.nameFor(signal.name);
    fill(proposal.item, message, signal);
    proposal.item.values[0].AliasName = proposal.name;
    addNotes(proposal, signal);
  }

  static void fill(model::CanItem& item, const Message& message, const Signal& signal) {
    item.Name = textFor(signal.name);
    item.Description =
        textFor(signal.comment.empty() ? concat(message.name, " ", signal.name) : signal.comment);
    item.DataId = hexText(message.identifier);
    item.ItemMessageType = messageTypeOf(signal);
    item.StartBit = static_cast<std::int16_t>(firstBit(signal) + 1);
    item.NumBits = static_cast<std::int16_t>(signal.bits);
    item.Mult = signal.factor;
    item.Offset = signal.offset;
    item.Units = unitsFor(signal.units);
    item.DataType = signal.bits > bitsOfFp2 ? "IEEE4" : "FP2";
    item.values.resize(1);
  }

  static void addNotes(Proposal& proposal, const Signal& signal) {
    const auto note = [&proposal](std::string text) { proposal.notes.push_back(std::move(text)); };
    if (proposal.name != signal.name)
      note(concat("the name is '", proposal.name, "' in place of '", signal.name, "'"));
    if (proposal.item.Units != signal.units)
      note(concat("the units are '", proposal.item.Units, "' in place of '", signal.units, "'"));
    if (signal.bits > bitsOfIeee4 && signal.type == ValueType::integer)
      note(concat("of its ", signal.bits, " bits ", bitsOfIeee4, " are kept"));
  }

  const Database& database_;
  ProjectNames names_;
  Proposals proposals_;
};

}  // namespace

Proposals proposalsFor(const Database& database, const model::Project& project) {
  return Proposer(database, project).run();
}

const Proposal* proposalNamed(const Proposals& proposals, const Database& database,
                              std::string_view name) {
  for (const Proposal& proposal : proposals.list) {
    const Message& message = database.messages[proposal.message];
    const Signal& signal = message.signals[proposal.signal];
    if (text::equalsIgnoringCase(name, signal.name) ||
        text::equalsIgnoringCase(name, proposal.name) ||
        text::equalsIgnoringCase(name, concat(message.name, ".", signal.name)))
      return &proposal;
  }
  return nullptr;
}

std::vector<std::string> addItems(model::Project& project, const Proposals& proposals,
                                  const std::vector<const Proposal*>& chosen) {
  std::vector<std::string> refused;
  model::CanSetup& can = project.can;
  for (const Proposal* proposal : chosen) {
    if (proposal->fitness == Fitness::impossible) {
      refused.push_back(concat(proposal->name, ": ", proposal->reason));
    } else if (can.items.size() >= model::maxCanItems) {
      refused.push_back(concat(proposal->name, ": a project holds ", model::maxCanItems,
                               " CAN messages; choose fewer signals"));
    } else {
      if (can.items.empty()) can.CanDataIDType = proposals.dataIdType;
      can.items.push_back(proposal->item);
    }
  }
  can.CanCount = static_cast<std::int16_t>(can.items.size());
  if (!can.items.empty() && !hasCanInterface(project)) can.CanBusEnabled = true;
  return refused;
}

}  // namespace dbc
