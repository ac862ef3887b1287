#include "support/random_case.h"

#include <cstdlib>
#include <stdexcept>

#include "projectfile/project_file.h"
#include "support/demo_project.h"
#include "support/program_lines.h"
#include "support/random_project.h"
#include "text/strings.h"

namespace support {

RandomCase randomCase(unsigned seed) {
  std::mt19937 random(seed);
  const int fullness = static_cast<int>(20 + seed * 7 % 80);
  RandomCase one{randomProject(random, {seed % 3 != 0, fullness}), demoStamp()};
  one.stamp.dunmoreHost = seed % 4 == 0;
  return one;
}

RandomCase oddCase(unsigned seed) {
  static constexpr std::string_view numbers[] = {"0", "-1", "7", "99", "1E9", "-0.5", "x", ""};
  RandomCase one = randomCase(seed);
  std::mt19937 random(seed + 1);
  const auto below = [&](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  std::string file;
  for (const std::string& line : linesOf(KGEN_GENFILE::fileText(one.project, {}))) {
    const std::size_t equals = line.find('=');
    const bool odd = equals != std::string::npos && below(60) == 0;
    file += odd ? text::concat(line.substr(0, equals + 1), numbers[below(std::size(numbers))], "\r")
                : line;
    file += '\n';
  }
  one.project = KGEN_COMMON::newProject();
  if (KGEN_GENFILE::loadText(file, one.project).error) throw std::runtime_error("no project file");
  return one;
}

unsigned randomCases(unsigned usual) {
  const char* asked = std::getenv("KGEN_RANDOM_CASES");
  return asked ? static_cast<unsigned>(std::strtoul(asked, nullptr, 10)) : usual;
}

}  // namespace support
