#pragma once

#include <cstddef>

/// How many of everything a project can hold.
namespace model {

constexpr std::size_t maxBlocks = 7;  // a kind; pulse blocks have one less
constexpr std::size_t maxPulseBlocks = 6;
constexpr std::size_t maxElements = 525;  // a block
constexpr std::size_t maxTables = 8;
constexpr std::size_t maxConditions = 10;  // a trigger or write-if
constexpr std::size_t maxLevels = 100;     // levels, or tests, of a level crossing
constexpr std::size_t maxStatusLines = 20;
constexpr std::size_t maxUserModules = 12;
constexpr std::size_t maxPortGroups = 24;
constexpr std::size_t portsPerGroup = 8;
constexpr std::size_t conditionsPerPort = 4;
constexpr std::size_t maxFlags = 8;
constexpr std::size_t maxExcitationChannels = 48;
constexpr std::size_t maxCanItems = 64;
constexpr std::size_t maxCanValues = 64;  // a CAN item
constexpr std::size_t maxCalculatedFields = 100;
constexpr std::size_t maxGears = 10;

}  // namespace model
