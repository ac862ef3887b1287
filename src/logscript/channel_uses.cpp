#include "logscript/channel_uses.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "logscript/arguments.h"
#include "text/strings.h"

namespace logscript {
namespace {

constexpr long inputsOfModule = 28;

bool isConditional(StatementKind kind) {
  return kind == StatementKind::ifThen || kind == StatementKind::select;
}

}  // namespace

void ChannelUses::add(const Statement& statement, std::span<const std::uint32_t> blocks) {
  const Instruction* form = formFor(instructionForms(statement.name), statement);
  if (form == nullptr || form->inputs == Inputs::none || blocks.empty()) return;
  std::uint32_t scan = blocks.front();
  for (const std::uint32_t block : blocks) {
    if (isConditional(program_.statements[block].kind)) return;  // not measured in every scan
    if (program_.statements[block].kind == StatementKind::scan) scan = block;
  }
  const auto argument = [&](char letter) {
    return meaning_.whole(program_.expressions(statement)[form->arguments.find(letter)]);
  };
  const std::optional<long> slot = argument('s'), channel = argument('c'), count = argument('n');
  if (!slot || !channel || !count || *count < 1) return;
  const bool differential = form->inputs == Inputs::differential;
  const bool once = form->name == "TCMUX";  // all its channels come in on one input
  const int group = form->inputs == Inputs::pulse ? 1 : form->inputs == Inputs::filter ? 2 : 0;
  uses_.push_back({scan, group, *slot * inputsOfModule + (*channel - 1) * (differential ? 2 : 1),
                   (once ? 1 : *count) * form->inputsPerRepetition, statement.offset});
}

void ChannelUses::tellOverlaps() {
  std::sort(uses_.begin(), uses_.end(), [](const Use& a, const Use& b) {
    return std::tie(a.scan, a.group, a.first, a.offset) <
           std::tie(b.scan, b.group, b.first, b.offset);
  });
  for (std::size_t i = 1; i < uses_.size(); ++i) {
    const Use &before = uses_[i - 1], &use = uses_[i];
    if (before.scan != use.scan || before.group != use.group ||
        before.first + before.count <= use.first)
      continue;
    const bool swapped = before.offset > use.offset;
    const Use &first = swapped ? use : before, &second = swapped ? before : use;
    const long input = use.first;
    meaning_.tell(Code::channelTwice, second.offset,
                  text::concat("slot ", input / inputsOfModule, ", ",
                               use.group == 0 ? "single-ended input " : "channel ",
                               input % inputsOfModule + 1, " is measured here and in line ",
                               program_.line(first.offset),
                               "; correct a slot, a channel or the repetitions"));
  }
}

}  // namespace logscript
