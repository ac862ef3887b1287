#pragma once

/// What the modules have to connect to.
namespace model {

constexpr int pairsOf7121 = 14;  // differential; twice as many single-ended
constexpr int channelsOf7121 = 2 * pairsOf7121;
constexpr int pairsOf7127 = 8;
constexpr int channelsOf7127 = 2 * pairsOf7127;
constexpr int channelsOf7128 = 6;
constexpr int channelsOf7125 = 6;
constexpr int channelsOf7141 = 16;
constexpr int excitationsOf7131 = 8;  // switched
constexpr int analogOutputsOf7131 = 4;
constexpr int controlLinesOf7131 = 8;
constexpr int channelsOfMultiplexer = 16;

}  // namespace model
