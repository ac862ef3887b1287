#pragma once

#include <span>
#include <string_view>

namespace kgen {

/// A page of docs/findings: what a finding in a program means.
struct FindingPage {
  std::string_view code, text;
};

/// All pages; made from the folder when kgen is built.
std::span<const FindingPage> findingPages();

}  // namespace kgen
