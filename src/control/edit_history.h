#pragma once

#include <deque>
#include <string>

#include "model/project.h"

namespace control {

/// Whole projects before and after the edits of a session, for undo and redo. The oldest edits
/// are forgotten.
class EditHistory {
 public:
  static constexpr std::size_t longest = 100;

  /// An edit replaces `before`; what was undone before it is gone. The name stands in menus:
  /// "voltage blocks".
  void record(model::Project before, std::string name);
  void clear();

  [[nodiscard]] bool canUndo() const { return !past_.empty(); }
  [[nodiscard]] bool canRedo() const { return !future_.empty(); }
  [[nodiscard]] std::string undoName() const;
  [[nodiscard]] std::string redoName() const;
  /// Swaps the project for the one before (after) the last edit; only when there is one.
  void undo(model::Project& project);
  void redo(model::Project& project);

 private:
  struct Step {
    model::Project project;
    std::string name;
  };
  using Steps = std::deque<Step>;  // the nearest last
  static void move(Steps& from, Steps& to, model::Project& project);
  Steps past_, future_;
};

}  // namespace control
