#pragma once

#include <string>
#include <string_view>

/// Paths of a project and its documents. A "." in a folder does not count, and both "/" and "\"
/// end a folder.
namespace control {

inline constexpr std::string_view newProjectName = "NoName.GN7";
inline constexpr std::string_view projectExtension = ".GN7";

/// The path of a project as it is opened: names with .GN7 or .GEN as given, others with .GN7 in
/// place of their extension.
std::string projectPath(std::string_view path);

/// The path up to the first "." of the file name: what the documents are named by.
std::string basePath(std::string_view path);
std::string fileName(std::string_view path);
/// With the separator at its end; empty for a bare name.
std::string folderOf(std::string_view path);

}  // namespace control
