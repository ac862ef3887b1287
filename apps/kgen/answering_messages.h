#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/message_service.h"

namespace text {
class JsonWriter;
}

namespace kgen {

class Parser;

/// A message and how it was answered.
struct AnsweredMessage {
  ports::Message message;
  ports::Answer answer = ports::Answer::ok;
};

/// Answers every message by a rule, since nobody is there to ask, and keeps all of them.
class AnsweringMessages final : public ports::MessageService {
 public:
  /// `wanted` is one of answerWords(), or empty: each message's default button. A box without the
  /// wanted button gets the one that means about the same.
  explicit AnsweringMessages(std::string_view wanted = {});

  ports::Answer show(const ports::Message& message) override;
  [[nodiscard]] const std::vector<AnsweredMessage>& messages() const { return messages_; }

  /// Titles and texts, and the answers where there was a choice; a blank line after each.
  [[nodiscard]] std::string listing() const;
  /// An array of objects with title, text, icon, buttons and answer.
  void writeJson(text::JsonWriter& json) const;

 private:
  std::optional<ports::Answer> wanted_;
  std::vector<AnsweredMessage> messages_;
};

/// "ok", "yes", "no", "cancel".
std::vector<std::string> answerWords();

/// Adds --answer.
void addAnswerOption(Parser& parser, std::string& answer);

}  // namespace kgen
