#include "answering_messages.h"

#include <algorithm>
#include <array>

#include "parser.h"
#include "text/json_writer.h"
#include "text/strings.h"

namespace kgen {
namespace {

using ports::Answer;
using ports::Buttons;

constexpr std::array<std::string_view, 4> words = {"ok", "cancel", "yes", "no"};  // by Answer
constexpr std::array<std::string_view, 4> icons = {"none", "question", "exclamation", "critical"};
constexpr std::array<std::string_view, 4> buttonWords = {"ok", "ok/cancel", "yes/no",
                                                         "yes/no/cancel"};

template <class Enum>
std::string_view wordFor(Enum value, const std::array<std::string_view, 4>& list) {
  return list[static_cast<std::size_t>(value)];
}

bool hasButton(Buttons buttons, Answer answer) {
  switch (answer) {
    case Answer::ok:
      return buttons == Buttons::ok || buttons == Buttons::okCancel;
    case Answer::cancel:
      return buttons == Buttons::okCancel || buttons == Buttons::yesNoCancel;
    default:
      return buttons == Buttons::yesNo || buttons == Buttons::yesNoCancel;
  }
}

/// Going on is OK or Yes, going back is Cancel or No.
Answer closest(Answer answer) {
  switch (answer) {
    case Answer::ok:
      return Answer::yes;
    case Answer::yes:
      return Answer::ok;
    case Answer::no:
      return Answer::cancel;
    default:
      return Answer::no;
  }
}

Answer answerFor(const ports::Message& message, std::optional<Answer> wanted) {
  if (message.buttons == Buttons::ok) return Answer::ok;
  if (!wanted) return message.defaultButton;
  return hasButton(message.buttons, *wanted) ? *wanted : closest(*wanted);
}

std::string withPlainLineEnds(std::string text) {
  std::erase(text, '\r');
  return text;
}

}  // namespace

AnsweringMessages::AnsweringMessages(std::string_view wanted) {
  const auto* word = std::find(words.begin(), words.end(), wanted);
  if (word != words.end()) wanted_ = static_cast<Answer>(word - words.begin());
}

Answer AnsweringMessages::show(const ports::Message& message) {
  const Answer answer = answerFor(message, wanted_);
  messages_.push_back({message, answer});
  return answer;
}

std::string AnsweringMessages::listing() const {
  std::string out;
  for (const auto& [message, answer] : messages_) {
    out += text::concat(message.title, "\n", withPlainLineEnds(message.text), "\n");
    if (message.buttons != Buttons::ok)
      out += text::concat("[", wordFor(message.buttons, buttonWords), ": ", wordFor(answer, words),
                          "]\n");
    out += "\n";
  }
  return out;
}

void AnsweringMessages::writeJson(text::JsonWriter& json) const {
  json.openArray();
  for (const auto& [message, answer] : messages_) {
    json.openObject();
    json.member("title", message.title);
    json.member("text", message.text);
    json.member("icon", wordFor(message.icon, icons));
    json.member("buttons", wordFor(message.buttons, buttonWords));
    json.member("answer", wordFor(answer, words));
    json.closeObject();
  }
  json.closeArray();
}

std::vector<std::string> answerWords() { return {"ok", "yes", "no", "cancel"}; }

void addAnswerOption(Parser& parser, std::string& answer) {
  parser.choice("--answer", answerWords(),
                "Answer to every question; the default button of each unless given", answer);
}

}  // namespace kgen
