#include "logscript/declaration_parser.h"

#include "text/strings.h"

namespace logscript {

using text::concat;

void DeclarationParser::constants(const Token& word) {
  declarationPlace(word);
  do {
    start(Kind::constant, word);
    takeName("constant");
    expect('=', "Const");
    root(expression());
    appendDraft();
  } while (take(','));
  endStatement();
}

void DeclarationParser::variables(const Token& word, bool isPublic) {
  declarationPlace(word);
  do {
    start(Kind::variable, word);
    draft_.isPublic = isPublic;
    takeName("variable");
    if (take('(')) argumentList();
    if (atWord(Word::As)) type();
    appendDraft();
  } while (take(','));
  endStatement();
}

void DeclarationParser::type() {
  advance();
  if (!atWord(Word::Boolean))
    fail(token_, concat("a variable is a number or 'As Boolean', not ", shown(token_),
                        "; write Boolean or leave As away"));
  draft_.isBoolean = true;
  advance();
}

void DeclarationParser::alias(const Token& word) {
  declarationPlace(word);
  start(Kind::alias, word);
  root(element("Alias"));
  expect('=', "Alias");
  takeName("alias");
  endStatement();
  appendDraft();
}

void DeclarationParser::units(const Token& word) {
  declarationPlace(word);
  start(Kind::units, word);
  root(element("Units"));
  if (!atSymbol('=')) expect('=', "Units");
  const std::string_view unit = lexer_.restOfLine(token_.end);
  advance();
  if (unit.empty()) fail(token_, "the unit is missing after '='; write it there");
  Node node;
  node.kind = NodeKind::text;
  node.first = node.offset = static_cast<std::uint32_t>(unit.data() - program_.text.data());
  node.count = static_cast<std::uint32_t>(unit.size());
  root(add(node));
  appendDraft();
}

std::uint32_t DeclarationParser::element(std::string_view where) {
  const Token name = token_;
  if (!at(TokenKind::name) || token_.name < keywordCount)
    fail(token_,
         concat(where, " wants the name of a variable before ", shown(token_), "; write it there"));
  advance();
  return reference(name);
}

void DeclarationParser::data(const Token& word) {
  declarationPlace(word);
  start(Kind::data, word);
  do root(expression());
  while (take(','));
  endStatement();
  appendDraft();
}

}  // namespace logscript
