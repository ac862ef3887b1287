#include "logscript/editor_syntax.h"

#include <vector>

#include "logscript/instructions.h"
#include "text/strings.h"

// Definitions of the program language for editors, made of its own tables of words.
namespace logscript {
namespace {

using text::concat;

/// Words that are coloured alike, and the style of each editor for them.
struct Group {
  std::string_view name;
  std::string_view kate, vim, gtk;
  std::vector<std::string_view> words;
};

bool isConstant(WordKind kind) { return kind >= WordKind::boolean; }

template <class Fits>
std::vector<std::string_view> wordsThat(Fits fits) {
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < wordCount(); ++i)
    if (fits(wordRow(i).kind)) words.push_back(wordRow(i).word);
  return words;
}

std::vector<std::string_view> instructionNames() {
  std::vector<std::string_view> names;
  for (const Instruction& form : allInstructions())
    if (names.empty() || names.back() != form.name) names.push_back(form.name);
  return names;
}

std::vector<Group> groups() {
  return {{"keywords", "dsKeyword", "Statement", "def:keyword",
           wordsThat([](WordKind kind) { return kind == WordKind::keyword; })},
          {"instructions", "dsBuiltIn", "Function", "def:builtin", instructionNames()},
          {"functions", "dsFunction", "Identifier", "def:function",
           wordsThat([](WordKind kind) { return kind == WordKind::function; })},
          {"constants", "dsConstant", "Constant", "def:special-constant", wordsThat(isConstant)}};
}

constexpr std::string_view title = "K700 Program";

std::string kateSyntax() {
  std::string lists, rules, styles;
  for (const Group& group : groups()) {
    lists += concat("    <list name=\"", group.name, "\">\n");
    for (const std::string_view word : group.words)
      lists += concat("      <item>", word, "</item>\n");
    lists += "    </list>\n";
    rules += concat("        <keyword attribute=\"", group.name, "\" context=\"#stay\" String=\"",
                    group.name, "\"/>\n");
    styles +=
        concat("      <itemData name=\"", group.name, "\" defStyleNum=\"", group.kate, "\"/>\n");
  }
  return concat(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE language>\n<language name=\"", title,
      "\" section=\"Sources\" version=\"1\" kateversion=\"5.0\" extensions=\"*.KP7;*.KX7\" "
      "casesensitive=\"0\" license=\"MIT\">\n  <highlighting>\n",
      lists,
      "    <contexts>\n"
      "      <context name=\"Normal\" attribute=\"Normal Text\" lineEndContext=\"#stay\">\n"
      "        <DetectChar char=\"'\" attribute=\"Comment\" context=\"Comment\"/>\n"
      "        <DetectChar char=\"&quot;\" attribute=\"Text\" context=\"Text\"/>\n",
      rules,
      "        <RegExpr String=\"&amp;[Hh][0-9A-Fa-f]+\" attribute=\"Number\" "
      "context=\"#stay\"/>\n"
      "        <Float attribute=\"Number\" context=\"#stay\"/>\n"
      "        <Int attribute=\"Number\" context=\"#stay\"/>\n"
      "      </context>\n"
      "      <context name=\"Comment\" attribute=\"Comment\" lineEndContext=\"#pop\"/>\n"
      "      <context name=\"Text\" attribute=\"Text\" lineEndContext=\"#pop\">\n"
      "        <DetectChar char=\"&quot;\" attribute=\"Text\" context=\"#pop\"/>\n"
      "      </context>\n"
      "    </contexts>\n    <itemDatas>\n"
      "      <itemData name=\"Normal Text\" defStyleNum=\"dsNormal\"/>\n"
      "      <itemData name=\"Comment\" defStyleNum=\"dsComment\"/>\n"
      "      <itemData name=\"Text\" defStyleNum=\"dsString\"/>\n"
      "      <itemData name=\"Number\" defStyleNum=\"dsDecVal\"/>\n",
      styles,
      "    </itemDatas>\n  </highlighting>\n  <general>\n    <comments>\n"
      "      <comment name=\"singleLine\" start=\"'\"/>\n    </comments>\n"
      "    <keywords casesensitive=\"0\"/>\n  </general>\n</language>\n");
}

std::string vimSyntax() {
  std::string words, links;
  for (const Group& group : groups()) {
    for (const std::string_view word : group.words)
      words += concat("syn keyword k700", group.name, " ", word, "\n");
    links += concat("hi def link k700", group.name, " ", group.vim, "\n");
  }
  return concat("\" Vim syntax file\n\" Language: ", title,
                " (*.KP7, *.KX7)\n"
                "if exists(\"b:current_syntax\")\n  finish\nendif\n\nsyn case ignore\n",
                words,
                "syn match k700number \"\\<\\d\\+\\(\\.\\d*\\)\\=\\([eE][-+]\\=\\d\\+\\)\\=\"\n"
                "syn match k700number \"&H\\x\\+\"\n"
                "syn region k700text start=+\"+ end=+\"+ oneline\n"
                "syn match k700comment \"'.*$\"\n\n",
                links,
                "hi def link k700number Number\nhi def link k700text String\n"
                "hi def link k700comment Comment\n\nsetlocal commentstring='%s\n"
                "let b:current_syntax = \"k700\"\n");
}

std::string gtkSyntax() {
  std::string styles, contexts, references;
  for (const Group& group : groups()) {
    styles += concat("    <style id=\"", group.name, "\" name=\"", group.name, "\" map-to=\"",
                     group.gtk, "\"/>\n");
    contexts += concat("    <context id=\"", group.name, "\" style-ref=\"", group.name, "\">\n");
    for (const std::string_view word : group.words)
      contexts += concat("      <keyword>", word, "</keyword>\n");
    contexts += "    </context>\n";
    references += concat("        <context ref=\"", group.name, "\"/>\n");
  }
  return concat(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<language id=\"k700\" name=\"", title,
      "\" version=\"2.0\" section=\"Source\">\n  <metadata>\n"
      "    <property name=\"globs\">*.KP7;*.KX7</property>\n"
      "    <property name=\"line-comment-start\">'</property>\n  </metadata>\n  <styles>\n"
      "    <style id=\"comment\" name=\"comment\" map-to=\"def:comment\"/>\n"
      "    <style id=\"text\" name=\"text\" map-to=\"def:string\"/>\n"
      "    <style id=\"number\" name=\"number\" map-to=\"def:number\"/>\n",
      styles,
      "  </styles>\n  <default-regex-options case-sensitive=\"false\"/>\n  <definitions>\n"
      "    <context id=\"comment\" style-ref=\"comment\" end-at-line-end=\"true\">\n"
      "      <start>'</start>\n    </context>\n"
      "    <context id=\"text\" style-ref=\"text\" end-at-line-end=\"true\">\n"
      "      <start>\"</start>\n      <end>\"</end>\n    </context>\n"
      "    <context id=\"number\" style-ref=\"number\">\n"
      "      <match>\\b[0-9]+(\\.[0-9]*)?(e[-+]?[0-9]+)?\\b|&amp;H[0-9A-F]+</match>\n"
      "    </context>\n",
      contexts,
      "    <context id=\"k700\">\n      <include>\n        <context ref=\"comment\"/>\n"
      "        <context ref=\"text\"/>\n        <context ref=\"number\"/>\n",
      references, "      </include>\n    </context>\n  </definitions>\n</language>\n");
}

constexpr Editor all[] = {{"kate", kateSyntax}, {"vim", vimSyntax}, {"gtksourceview", gtkSyntax}};

}  // namespace

std::span<const Editor> editors() { return all; }

}  // namespace logscript
