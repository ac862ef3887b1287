#pragma once

#include <QString>
#include <optional>
#include <string>
#include <string_view>

/// The engine's texts are UTF-8.
namespace ui {

inline QString qstring(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string utf8(const QString& text) { return text.toStdString(); }

/// A caption without its mnemonic sign, as screen readers say it.
QString withoutMnemonic(QString caption);

/// Microseconds as windows show them: "1,120", "416.667".
std::string microsText(double micros);

/// What an engine function refused: nothing, or words to show.
using Complaint = std::optional<std::string>;

}  // namespace ui
