#include "platform/processes.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>
#include <thread>

namespace platform {
namespace {

using ports::ProcessEnd;

/// How a program is started: a process group of its own, no input, no output.
class Start {
 public:
  Start() {
    ::posix_spawn_file_actions_init(&files_);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
      ::posix_spawn_file_actions_addopen(&files_, descriptor, "/dev/null", O_RDWR, 0);
    ::posix_spawnattr_init(&attributes_);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
  }
  ~Start() {
    ::posix_spawn_file_actions_destroy(&files_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  Start(const Start&) = delete;
  Start& operator=(const Start&) = delete;

  /// 0, or the error.
  int run(std::vector<std::string> words, pid_t& child) {
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return ::posix_spawn(&child, pointers[0], &files_, &attributes_, pointers.data(), environ);
  }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

/// True when the child ends within the limit; it is waited for, so that its status can be asked.
bool endsWithin(pid_t child, std::chrono::milliseconds limit, int& status) {
  using namespace std::chrono;
  const auto end = steady_clock::now() + limit;
  for (milliseconds pause{1}; true; pause = std::min(pause * 2, milliseconds(50))) {
    if (::waitpid(child, &status, WNOHANG) == child) return true;
    if (steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(pause);
  }
}

void waitFor(pid_t child) {
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
}

}  // namespace

ProcessEnd Processes::run(const std::string& program, const std::vector<std::string>& arguments,
                          std::chrono::milliseconds limit) {
  std::vector<std::string> words = {program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  pid_t child = 0;
  if (const int error = Start().run(std::move(words), child); error != 0)
    return {ProcessEnd::How::notStarted, error, std::generic_category().message(error)};
  int status = 0;
  if (!endsWithin(child, limit, status)) {
    ::kill(-child, SIGKILL);
    waitFor(child);
    return {ProcessEnd::How::tookTooLong, 0, {}};
  }
  if (WIFSIGNALED(status)) return {ProcessEnd::How::crashed, WTERMSIG(status), {}};
  return {ProcessEnd::How::exited, WEXITSTATUS(status), {}};
}

}  // namespace platform
