#include "desktop/command_line.h"

#include "control/session.h"
#include "ui/texts.h"

namespace desktop {

CommandLine commandLineFrom(const QStringList& words) {
  CommandLine line;
  bool options = true;
  for (const QString& word : words) {
    if (!options || !word.startsWith('-') || word == "-")
      line.files += word;
    else if (word == "--")
      options = false;
    else if (word == "--help" || word == "-h")
      line.help = true;
    else if (word == "--version" || word == "-v")
      line.version = true;
    else if (line.unknown.isEmpty())
      line.unknown = word;
  }
  return line;
}

QString helpText() {
  return "Usage: kgen-desktop [OPTION]... [PROJECT]\n"
         "Describe a K700 data logger and generate its program, in a window.\n"
         "\n"
         "  PROJECT         the project (.GN7) to open; without extension .GN7 is added\n"
         "  -h, --help      print this and end\n"
         "  -v, --version   print the version and end\n"
         "\n"
         "Options of Qt, such as -platform and -style, are taken too.\n"
         "The command line kgen does the same work without a window.\n";
}

QString versionText() {
  return "kgen-desktop " + ui::qstring(control::Session::Version()) + " (" +
         ui::qstring(control::Session::VersionDate()) + ")\n";
}

}  // namespace desktop
