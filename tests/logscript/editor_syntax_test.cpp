#include "logscript/editor_syntax.h"

#include <gtest/gtest.h>

#include <vector>

#include "logscript/instructions.h"
#include "text/strings.h"

namespace {

using text::concat;

/// The first thing that keeps a text from being XML: tags that don't close, stray signs.
std::string xmlFault(std::string_view xml) {
  std::vector<std::string> open;
  bool anyRoot = false;
  for (std::size_t at = 0; at < xml.size();) {
    const std::size_t begin = std::min(xml.find('<', at), xml.size());
    for (std::size_t i = xml.find('&', at); i < begin; i = xml.find('&', i + 1))
      if (!xml.substr(i).starts_with("&amp;") && !xml.substr(i).starts_with("&quot;"))
        return concat("a stray & at ", i);
    if (begin == xml.size()) break;
    const std::size_t end = xml.find('>', begin);
    if (end == std::string_view::npos) return "a tag without end";
    const std::string_view tag = xml.substr(begin + 1, end - begin - 1);
    at = end + 1;
    if (tag.find('<') != std::string_view::npos) return concat("< in tag ", tag);
    if (tag.starts_with('?') || tag.starts_with('!')) continue;
    if (std::count(tag.begin(), tag.end(), '"') % 2 != 0) return concat("quotes of tag ", tag);
    const std::string name(tag.substr(0, tag.find_first_of(" /", 1)));
    if (tag.starts_with('/')) {
      if (open.empty() || concat("/", open.back()) != tag) return concat("tag ", tag);
      open.pop_back();
    } else if (!tag.ends_with('/')) {
      if (open.empty() && anyRoot) return "two roots";
      anyRoot = true;
      open.push_back(name);
    }
  }
  return open.empty() && anyRoot ? "" : "tags that are not closed";
}

TEST(EditorSyntax, XmlFaultsAreSeen) {
  EXPECT_EQ(xmlFault("<a><b c=\"1\"/><d>&amp;</d></a>"), "");
  for (const char* bad : {"<a>", "<a></b>", "<a>&</a>", "<a b=\"></a>", "", "<a></a><b></b>"})
    EXPECT_NE(xmlFault(bad), "") << bad;
}

TEST(EditorSyntax, HoldsEveryWordAndInstructionOnce) {
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < logscript::wordCount(); ++i)
    words.push_back(logscript::wordRow(i).word);
  for (const logscript::Instruction& form : logscript::allInstructions())
    if (words.back() != form.name) words.push_back(form.name);
  for (const logscript::Editor& editor : logscript::editors()) {
    const std::string syntax = editor.syntax();
    const bool vim = editor.name == "vim";
    for (const std::string_view word : words) {
      const std::string entry = vim ? concat(" ", word, "\n") : concat(">", word, "</");
      const std::size_t first = syntax.find(entry);
      EXPECT_NE(first, std::string::npos) << editor.name << " " << word;
      EXPECT_EQ(syntax.find(entry, first + 1), std::string::npos) << editor.name << " " << word;
    }
    EXPECT_EQ(vim ? "" : xmlFault(syntax), "") << editor.name;
  }
}

}  // namespace
