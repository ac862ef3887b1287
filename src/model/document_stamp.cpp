#include "model/document_stamp.h"

#include "text/strings.h"

namespace model {
namespace {

std::string digits(int value, std::size_t width) {
  std::string out = text::shortest(static_cast<std::int64_t>(value));
  if (out.size() < width) out.insert(0, width - out.size(), '0');
  return out;
}

}  // namespace

std::string dateText(const ports::Moment& moment) {
  return text::concat(digits(moment.month, 2), "-", digits(moment.day, 2), "-",
                      digits(moment.year, 4));
}

std::string timeText(const ports::Moment& moment) {
  return text::concat(digits(moment.hour, 2), ":", digits(moment.minute, 2), ":",
                      digits(moment.second, 2));
}

}  // namespace model
