#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ports {

/// A question for a file, with a filter such as "(All Files)|*.*".
struct FileQuestion {
  std::string title;
  std::string filter;
  bool forSaving = false;
  std::string proposal;  // path
};

/// The program around the session: hears of events and does what only it can do.
class Host {
 public:
  virtual ~Host() = default;
  virtual void fileOpened(const std::string& project) = 0;
  /// The program is to be sent to the logger.
  virtual void downloadRequested(const std::string& program) = 0;
  /// Gives the program to the real-time host; false when its toolbar server is not connected.
  virtual bool handToDunmore(const std::string& program) = 0;
  virtual void printRequested() = 0;
  virtual void helpRequested(const std::string& file, int contextId) = 0;
  virtual void optionsRequested() = 0;
  virtual void closeWindows() = 0;
  /// Closes the windows that edit the project. `ask`: about edits first; false when one stays.
  virtual bool finishWindows(bool ask) = 0;
  /// Title, summary and views are to be shown anew.
  virtual void refresh() = 0;
  /// std::nullopt when the user cancels.
  virtual std::optional<std::string> choosePath(const FileQuestion& question) = 0;
  /// One line for the log: nothing to answer.
  virtual void note(std::string_view line) = 0;
};

}  // namespace ports
