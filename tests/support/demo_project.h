#pragma once

#include <string>

#include "model/document_stamp.h"
#include "model/project.h"

/// Small projects that tests build by hand.
namespace support {

/// Saved as DEMO on the afternoon of 4 July 2026.
model::DocumentStamp demoStamp();

/// Modules: CPU code and then one of each kind given.
model::Project projectWith(int cpu, std::initializer_list<model::ModuleKindIndex> modules);

/// Puts a block of default settings with so many channels into the project.
model::MeasurementBlock& addBlock(model::Project& project, model::BlockKind kind,
                                  std::size_t number, int channels);

/// Two thermocouples, two pressures that can be zeroed and one isolated channel.
model::Project demoProject();

std::string wholeFile(const std::string& path);

}  // namespace support
