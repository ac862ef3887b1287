#include "platform/processes.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <string>
#include <system_error>

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
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return ::posix_spawn(&child, pointers[0], &files_, &attributes_, pointers.data(), environ);
  }

 private:
  posix_spawn_file_actions_t files_{};
  posix_spawnattr_t attributes_{};
};

/// True when the child ends within the limit.
bool endsWithin(pid_t child, std::chrono::milliseconds limit) {
  const auto handle = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
  if (handle < 0) return true;  // an old system: wait for as long as it takes
  const auto end = std::chrono::steady_clock::now() + limit;
  int ready = 0;
  do {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        end - std::chrono::steady_clock::now());
    pollfd waited{handle, POLLIN, 0};
    ready = ::poll(&waited, 1, static_cast<int>(std::max<std::int64_t>(left.count(), 0)));
  } while (ready < 0 && errno == EINTR);
  ::close(handle);
  return ready > 0;
}

int statusOf(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return status;
}

}  // namespace

ProcessEnd Processes::run(const std::string& program, const std::vector<std::string>& arguments,
                          std::chrono::milliseconds limit) {
  std::vector<std::string> words = {program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  pid_t child = 0;
  if (const int error = Start().run(std::move(words), child); error != 0)
    return {ProcessEnd::How::notStarted, error, std::generic_category().message(error)};
  const bool ended = endsWithin(child, limit);
  if (!ended) ::kill(-child, SIGKILL);
  const int status = statusOf(child);
  if (!ended) return {ProcessEnd::How::tookTooLong, 0, {}};
  if (WIFSIGNALED(status)) return {ProcessEnd::How::crashed, WTERMSIG(status), {}};
  return {ProcessEnd::How::exited, WEXITSTATUS(status), {}};
}

}  // namespace platform
