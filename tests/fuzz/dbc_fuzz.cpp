#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "can/frame.h"
#include "dbc/proposals.h"
#include "model/can_values.h"

/// Whatever the bytes are: reading ends, every fault has a line, and every item that is proposed is
/// one that a project takes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  can::frameFrom(text.substr(0, 200));
  const dbc::Database database = dbc::read(text);
  for (const dbc::Fault& fault : database.faults)
    if (fault.line == 0 || fault.text.empty()) std::abort();
  static const model::Project empty = KGEN_COMMON::newProject();
  const dbc::Proposals proposals = dbc::proposalsFor(database, empty);
  model::CanSetup can;
  can.CanDataIDType = proposals.dataIdType;
  for (const dbc::Proposal& proposal : proposals.list) {
    if (proposal.fitness == dbc::Fitness::impossible) continue;
    if (complaintAboutItem(proposal.item, can)) std::abort();
    if (bitsOf(proposal.item).size() != static_cast<std::size_t>(proposal.item.NumBits))
      std::abort();
  }
  return 0;
}
