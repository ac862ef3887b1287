#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "model/block_rules.h"
#include "model/project.h"
#include "ports/message_service.h"

/// Blocks of the filter slots. They are numbered through all slots, so the number of a block
/// changes when a slot before its own gets another count of blocks.
namespace model {

/// Pass bands (OverSample) and excitations (Excite) by their codes, as programs remark on them.
inline constexpr std::array<std::string_view, 5> filterPassBands = {
    "(FPass = Fsr / 2.155)", "(FPass = Fsr / 2.5)", "(FPass = Fsr / 5)", "(FPass = Fsr / 10)",
    "(FPass = Fsr / 20)"};
inline constexpr std::array<std::string_view, 7> filterExcitations = {
    "(Off)", "(2 mA)", "(4 mA)", "(6 mA)", "(10 mA)", "(5 V)", "(10 V)"};
/// Windows of the time series (TSWindow) and what a spectrum holds (SpectOption) by their codes.
inline constexpr FieldBounds fftRateBounds = {1, 50'000, 1};  // samples of a series a second

inline constexpr std::array<std::string_view, 4> fftWindows = {"None", "Hanning", "Hamming",
                                                               "Blackman-Harris"};
inline constexpr std::array<std::string_view, 5> spectrumOptions = {
    "Real and imaginary", "Amplitude", "Amplitude and phase", "Power", "Power density"};

/// What keeps a slot (from 1) from having one block more: no module there, the limit of blocks.
std::optional<ports::Message> complaintAboutNewFilterBlock(const Project& project,
                                                           std::size_t slot);
/// Gives a slot (from 1) one block more, behind those that it has, and answers with its number; the
/// blocks of later slots move up by one. There must be room for it.
std::size_t addFilterBlock(Project& project, std::size_t slot);
/// Takes a block away; later ones move down by one.
void removeFilterBlock(Project& project, std::size_t number);

/// The nearest length that a series of samples can have: a power of two.
std::int16_t nearestFftLength(double samples);
/// Another length of its series; the bins of the slot's blocks are kept within it.
void setFftLength(Project& project, std::size_t slot, std::int16_t samples);

}  // namespace model
