#include <algorithm>

#include "generator/emitters.h"
#include "model/conditions.h"

namespace generator {
namespace {

using text::concat;

void emitFlags(ProgramText& out, const ProgramPlan& plan) {
  bool first = true;
  for (std::size_t flag = 1; flag <= model::maxFlags; ++flag) {
    const auto lines = flagLines(plan.project, flag);
    if (lines.empty()) continue;
    if (first) out.bodyBanner(" Flag Control ");
    first = false;
    for (const model::CommentedLine& line : lines)
      out.code("      ", line.code).comment(line.comment);
  }
}

/// Conditions of a port, all of which have to hold; "" when it has none.
std::string portCondition(const model::Port& port) {
  std::string joined;
  for (const model::Condition& condition : port.conditions) {
    const std::string text = conditionText(condition);
    if (!text.empty()) joined += concat(joined.empty() ? "" : " And ", text);
  }
  return joined;
}

int weightOf(std::size_t port) { return 1 << port; }  // port from 0

int readWeight(const model::Port& port, std::size_t index) {
  const int mask = port.BinaryMask & 255;
  return mask != 0 ? mask : weightOf(index);
}

/// All ports of a group in one instruction: the ports that are low when true start high.
void emitWrittenGroup(ProgramText& out, const PlannedPorts& ports) {
  int mask = 0;
  int start = 0;
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    const model::Port& port = ports.group->ports[n];
    if (!port.Include) continue;
    mask |= weightOf(n);
    if (port.Polarity == 1) start |= weightOf(n);
  }
  out.line("      ", ports.variable, " = ", start);
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    const model::Port& port = ports.group->ports[n];
    const std::string condition = portCondition(port);
    if (!port.Include || condition.empty()) continue;
    out.line("      If ", condition, " Then ", ports.variable, " = ", ports.variable,
             port.Polarity == 1 ? " - " : " + ", weightOf(n));
  }
  out.line("      WriteIO(", ports.place.slot, ",", ports.place.upper ? 2 : 1, ",", mask, ",",
           ports.variable, ")");
}

/// One instruction a port.
void emitWrittenPorts(ProgramText& out, const PlannedPorts& ports) {
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    const model::Port& port = ports.group->ports[n];
    if (!port.Include) continue;
    const std::string variable = concat("Port(", n + 1, ")");
    const int whenTrue = port.Polarity == 1 ? 0 : 1;
    const std::string condition = portCondition(port);
    out.line("      ", variable, " = ", 1 - whenTrue);
    if (!condition.empty()) out.line("      If ", condition, " Then ", variable, " = ", whenTrue);
    out.line("      PortSet(", ports.place.slot, ",", n + 1 + (ports.place.upper ? 8 : 0), ",",
             variable, ")");
  }
}

void emitReadGroup(ProgramText& out, const PlannedPorts& ports) {
  int mask = 0;
  for (std::size_t n = 0; n < model::portsPerGroup; ++n)
    if (ports.group->ports[n].Include) mask |= readWeight(ports.group->ports[n], n);
  out.line("      ReadIO(", ports.variable, ",", ports.place.slot, ",", ports.place.upper ? 2 : 1,
           ",", mask, ")");
}

void emitPorts(ProgramText& out, const ProgramPlan& plan) {
  const bool perPort = plan.project.ports.CodeType == 0;
  for (const PlannedPorts& ports : plan.ports)
    if (!ports.reads) perPort ? emitWrittenPorts(out, ports) : emitWrittenGroup(out, ports);
  for (const PlannedPorts& ports : plan.ports)
    if (ports.reads) emitReadGroup(out, ports);
}

void emitDynamicExcitation(ProgramText& out, const PlannedExcitation& excitation) {
  const model::ExcitationChannel& channel = *excitation.channel;
  const std::array<double, 2> states = {channel.State1, channel.State2};
  bool open = false;
  for (std::size_t s = 0; s < 2; ++s) {
    const std::string condition = conditionText(channel.conditions[s]);
    if (condition.empty()) continue;
    out.code("      ", open ? "ElseIf " : "If ", condition, " Then")
        .comment("'Test State ", s + 1, " expression");
    out.code("      ", excitation.variable, " = ", states[s]).comment("'Set value");
    open = true;
  }
  if (open) out.code("      End If").comment("'End test");
  const std::string delay = channel.Delay > 0 ? concat(",", channel.Delay) : "";
  out.code("      Excite(", excitation.place.slot, ",", excitation.place.channel, ",1,",
           excitation.variable, delay, ")")
      .comment("'Set excitation channel");
}

void emitExcitations(ProgramText& out, const ProgramPlan& plan) {
  if (plan.excitations.empty()) return;
  out.subBanner(" Excitation Control ");
  for (const PlannedExcitation& excitation : plan.excitations) {
    if (!excitation.variable.empty())
      emitDynamicExcitation(out, excitation);
    else
      out.line("      Excite(", excitation.place.slot, ",", excitation.place.channel, ",1,",
               excitation.channel->State1, ")");
  }
}

}  // namespace

void emitControls(ProgramText& out, const ProgramPlan& plan) {
  emitFlags(out, plan);
  emitPorts(out, plan);
  emitExcitations(out, plan);
}

}  // namespace generator
