#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts of numbers with commas, which histograms are set up with: "10,0,100,0".
namespace model {

/// As many numbers as the defaults have, which stand for those that are missing.
std::vector<double> parameters(std::string_view given, std::string_view defaults);
/// The same where two sizes stand first, which may be joined by a word: "10 x 5,0".
std::vector<double> sizedParameters(std::string_view given, std::string_view defaults);

std::string parameterText(const std::vector<double>& numbers);

}  // namespace model
