#include "processes.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace bench {
double nowMicros() {
  using namespace std::chrono;
  return duration<double, std::micro>(steady_clock::now().time_since_epoch()).count();
}

pid_t start(const Command& command) {
  std::vector<char*> words;
  for (const std::string& word : command.words) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, command.output.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0666);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int error = posix_spawnp(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0) throw std::runtime_error("cannot start " + command.words[0]);
  return child;
}

Run runOnce(const Command& command) {
  for (const std::string& file : command.made) ::unlink(file.c_str());
  const double begin = nowMicros();
  const pid_t child = start(command);
  int status = 0;
  struct rusage usage {};
  ::wait4(child, &status, 0, &usage);
  const double micros = nowMicros() - begin;
  if (status != 0) throw std::runtime_error(command.words[0] + " failed");
  return {micros, usage.ru_maxrss * 1024};
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

Medians compare(const Command& ours, const Command& peers, int rounds) {
  std::vector<double> our, theirs;
  for (int i = 0; i < rounds; ++i) {
    our.push_back(runOnce(ours).micros);
    theirs.push_back(runOnce(peers).micros);
  }
  return {median(our), median(theirs)};
}

}  // namespace bench
