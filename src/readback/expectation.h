#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/strings.h"

namespace readback {

/// Where a line of a program comes from: a setting of the project, as its file names it.
struct Setting {
  std::string_view section;  // "[SCAN SETUP]"; "" for what every program has
  std::string key;           // "" for what follows from the section as a whole
  std::string owner;         // "block 2, channel 3"

  [[nodiscard]] Setting with(std::string_view other) const {
    return {section, std::string(other), owner};
  }
};

/// A part of a line, in the program language, and the key that it comes from if that is another
/// one than the line's.
struct Part {
  template <class Value>
  Part(const Value& value, std::string_view from = {}) : text(text::concat(value)), key(from) {}
  Part(bool value, std::string_view from = {}) : text(value ? "True" : "False"), key(from) {}

  std::string text, key;
};

/// What the program of a project has to say, as a program without comments and constants' names,
/// and for each of its lines the settings behind it.
class Expectation {
 public:
  struct Line {
    Setting setting;
    std::vector<std::string> keys;  // of its parts, in their order
  };

  void line(const Setting& setting, std::string_view code, std::vector<std::string> keys = {});
  /// "Name(part,part)"
  void call(const Setting& setting, std::string_view name, const std::vector<Part>& parts);
  /// "target = value"
  void assign(const Setting& setting, std::string_view target, const Part& value);

  [[nodiscard]] const std::string& text() const { return text_; }
  [[nodiscard]] std::size_t lines() const { return lines_.size(); }
  /// By line of the text, from 1.
  [[nodiscard]] const Line& at(std::uint32_t line) const { return lines_[line - 1]; }

 private:
  std::string text_;
  std::vector<Line> lines_;
};

}  // namespace readback
