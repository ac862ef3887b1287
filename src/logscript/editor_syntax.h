#pragma once

#include <span>
#include <string>
#include <string_view>

namespace logscript {

/// An editor that programs can be coloured in, and its definition of the language.
struct Editor {
  std::string_view name;  // "vim"
  std::string (*syntax)();
};
std::span<const Editor> editors();

}  // namespace logscript
