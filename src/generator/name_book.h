#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "generator/source_block.h"
#include "model/project.h"

namespace generator {

/// Gives out the user's names, each once: a name that the program language can't take, or that is
/// taken already, is left out and noted.
class NameBook {
 public:
  explicit NameBook(std::vector<std::string>& notes) : notes_(notes) {}

  /// The name itself, or "" with a note that says where it was and what the program uses instead.
  std::string claim(std::string_view name, std::string_view where, std::string_view instead);

  /// A name that nobody has: the one given, or with a number behind it.
  std::string freeName(const std::string& name);

  /// Units text as the program can carry it, or "" with a note.
  std::string units(std::string_view text, std::string_view where);

  /// Aliases and units of the channels of a block.
  std::vector<ProgramChannel> channelsOf(const SourceBlock& block);

 private:
  std::unordered_set<std::string> taken_;  // lower case
  std::vector<std::string>& notes_;
};

}  // namespace generator
