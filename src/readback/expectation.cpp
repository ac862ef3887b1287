#include "readback/expectation.h"

namespace readback {

using text::concat;

void Expectation::line(const Setting& setting, std::string_view code,
                       std::vector<std::string> keys) {
  text_.append(code).append("\n");
  lines_.push_back({setting, std::move(keys)});
}

void Expectation::call(const Setting& setting, std::string_view name,
                       const std::vector<Part>& parts) {
  std::string code(name);
  std::vector<std::string> keys;
  for (const Part& part : parts) {
    code += concat(keys.empty() ? "(" : ",", part.text);
    keys.push_back(part.key);
  }
  line(setting, code + (parts.empty() ? "()" : ")"), std::move(keys));
}

void Expectation::assign(const Setting& setting, std::string_view target, const Part& value) {
  line(setting, concat(target, " = ", value.text), {{}, value.key});
}

}  // namespace readback
