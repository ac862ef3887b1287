#include "finding_lines.h"

#include "text/strings.h"

namespace kgen {

using logscript::Finding;
using text::concat;

std::string counted(std::size_t count, std::string_view what) {
  return concat(count, " ", what, count == 1 ? "" : "s");
}

void writeFinding(text::JsonWriter& json, const Finding& finding, std::string_view program) {
  const logscript::CodeInfo& info = logscript::infoOf(finding.code);
  json.openObject();
  json.member("line", static_cast<std::int64_t>(finding.line));
  json.member("column", static_cast<std::int64_t>(finding.column));
  json.member("severity", logscript::nameOf(info.severity));
  json.member("code", info.name);
  json.member("text", finding.text);
  json.member("source", logscript::sourceLine(finding, program));
  json.closeObject();
}

}  // namespace kgen
