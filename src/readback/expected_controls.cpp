#include "model/conditions.h"
#include "projectfile/rows.h"
#include "readback/sections.h"

namespace readback {
namespace {

using text::concat;

std::string conditionOf(const model::Port& port) {
  std::string all;
  for (const model::Condition& condition : port.conditions) {
    const std::string one = conditionText(condition);
    if (!one.empty()) all += concat(all.empty() ? "" : " And ", one);
  }
  return all;
}

void expectFlags(Expectation& out, const Outline& outline) {
  for (std::size_t flag = 1; flag <= model::maxFlags; ++flag)
    for (const model::CommentedLine& line : flagLines(outline.project, flag))
      out.line({projectfile::flagHeader, "FlagVar", concat("flag ", flag)}, line.code);
}

/// Ports of a group that are written one by one.
void expectSinglePorts(Expectation& out, const Ports& ports) {
  for (std::size_t n = 1; n <= model::portsPerGroup; ++n) {
    const model::Port& port = ports.settings->ports[n - 1];
    if (!port.Include) continue;
    const std::string variable = concat("Port(", n, ")"), condition = conditionOf(port);
    const int idle = port.Polarity == 1 ? 1 : 0;
    out.assign(ports.setting("Polarity", n), variable, idle);
    if (!condition.empty())
      out.line(ports.setting("MeasureVar", n),
               concat("If ", condition, " Then ", variable, " = ", 1 - idle));
    out.call(ports.setting("Include", n), "PortSet",
             {{ports.place.slot}, {n + (ports.place.upper ? 8 : 0)}, {variable}});
  }
}

/// Ports that are written together begin as they are while no condition holds.
void expectPortGroup(Expectation& out, const Ports& ports) {
  int mask = 0, idle = 0;
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    const model::Port& port = ports.settings->ports[n];
    if (!port.Include) continue;
    mask |= 1 << n;
    if (port.Polarity == 1) idle |= 1 << n;
  }
  out.assign(ports.setting("Polarity"), ports.variable, idle);
  for (std::size_t n = 1; n <= model::portsPerGroup; ++n) {
    const model::Port& port = ports.settings->ports[n - 1];
    const std::string condition = conditionOf(port);
    if (!port.Include || condition.empty()) continue;
    out.line(ports.setting("MeasureVar", n),
             concat("If ", condition, " Then ", ports.variable, " = ", ports.variable,
                    port.Polarity == 1 ? " - " : " + ", 1 << (n - 1)));
  }
  out.call(ports.setting("Include"), "WriteIO",
           {{ports.place.slot}, {ports.place.upper ? 2 : 1}, {mask}, {ports.variable}});
}

void expectReadGroup(Expectation& out, const Ports& ports) {
  int mask = 0;
  for (std::size_t n = 0; n < model::portsPerGroup; ++n) {
    const model::Port& port = ports.settings->ports[n];
    const int own = port.BinaryMask & 255;
    if (port.Include) mask |= own != 0 ? own : 1 << n;
  }
  out.call(
      ports.setting("Include"), "ReadIO",
      {{ports.variable}, {ports.place.slot}, {ports.place.upper ? 2 : 1}, {mask, "BinaryMask"}});
}

void expectPorts(Expectation& out, const Outline& outline) {
  const bool single = outline.project.ports.CodeType == 0;
  for (const Ports& ports : outline.ports)
    if (!ports.settings->ReadMode)
      single ? expectSinglePorts(out, ports) : expectPortGroup(out, ports);
  for (const Ports& ports : outline.ports)
    if (ports.settings->ReadMode) expectReadGroup(out, ports);
}

void expectStates(Expectation& out, const Output& output) {
  const model::ExcitationChannel& channel = *output.settings;
  const std::array<Part, 2> states = {Part(channel.State1, "State1"),
                                      Part(channel.State2, "State2")};
  bool open = false;
  for (std::size_t s = 0; s < states.size(); ++s) {
    const std::string condition = conditionText(channel.conditions[s]);
    if (condition.empty()) continue;
    out.line(output.setting("MeasVar"), concat(open ? "ElseIf " : "If ", condition, " Then"));
    out.assign(output.setting("DynamicStatic"), output.variable, states[s]);
    open = true;
  }
  if (open) out.line(output.setting("MeasVar"), "End If");
}

void expectOutput(Expectation& out, const Output& output) {
  const model::ExcitationChannel& channel = *output.settings;
  const bool isStatic = output.variable.empty();
  if (!isStatic) expectStates(out, output);
  std::vector<Part> parts = {{output.place.slot}, {output.place.channel}, {1}};
  if (isStatic)
    parts.emplace_back(channel.State1, "State1");
  else
    parts.emplace_back(output.variable);
  if (!isStatic && channel.Delay > 0) parts.emplace_back(channel.Delay, "Delay");
  out.call(output.setting("Include"), "Excite", parts);
}

}  // namespace

void expectControls(Expectation& out, const Outline& outline) {
  expectFlags(out, outline);
  expectPorts(out, outline);
  for (const Output& output : outline.outputs) expectOutput(out, output);
}

}  // namespace readback
