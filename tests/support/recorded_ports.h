#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ports/error_reporter.h"
#include "ports/message_service.h"

namespace support {

/// Keeps every message and answers with its default button, or as told.
class RecordedMessages final : public ports::MessageService {
 public:
  using Rule = std::function<ports::Answer(const ports::Message&)>;
  explicit RecordedMessages(Rule rule = {}) : rule_(std::move(rule)) {}

  ports::Answer show(const ports::Message& message) override {
    shown.push_back(message);
    return rule_ ? rule_(message) : message.defaultButton;
  }
  [[nodiscard]] std::vector<std::string> titles() const {
    std::vector<std::string> list;
    for (const ports::Message& message : shown) list.push_back(message.title);
    return list;
  }

  std::vector<ports::Message> shown;

 private:
  Rule rule_;
};

/// Keeps the sources of faults.
class RecordedFaults final : public ports::ErrorReporter {
 public:
  void report(int, std::string_view, std::string_view source) override {
    sources.emplace_back(source);
  }
  std::vector<std::string> sources;
};

}  // namespace support
