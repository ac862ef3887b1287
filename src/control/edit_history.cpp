#include "control/edit_history.h"

#include <utility>

namespace control {

void EditHistory::record(model::Project before, std::string name) {
  future_.clear();
  past_.push_back({std::move(before), std::move(name)});
  if (past_.size() > longest) past_.pop_front();
}

void EditHistory::clear() {
  past_.clear();
  future_.clear();
}

std::string EditHistory::undoName() const { return canUndo() ? past_.back().name : ""; }
std::string EditHistory::redoName() const { return canRedo() ? future_.back().name : ""; }

void EditHistory::undo(model::Project& project) { move(past_, future_, project); }
void EditHistory::redo(model::Project& project) { move(future_, past_, project); }

void EditHistory::move(Steps& from, Steps& to, model::Project& project) {
  if (from.empty()) return;
  Step step = std::move(from.back());
  from.pop_back();
  std::swap(project, step.project);
  to.push_back(std::move(step));
}

}  // namespace control
