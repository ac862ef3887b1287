#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <ctime>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

#include "processes.h"

/// window_start FOLDER KGEN_DESKTOP MINIMAL LINGUIST INIH_PEER: how long programs take from their
/// start to the first picture in a window, on the display of the environment. Pictures are noticed
/// by the display's own report of what was drawn.
namespace {

using bench::Command;

constexpr int rounds = 21;
constexpr int leastSize = 100;  // smaller ones are no windows that anyone looks at
constexpr int patienceSeconds = 20;

class Screen {
 public:
  Screen() : display_(XOpenDisplay(nullptr)) {
    int errors = 0;
    if (display_ == nullptr) throw std::runtime_error("no display; start one with xvfb-run");
    if (XDamageQueryExtension(display_, &firstEvent_, &errors) == 0)
      throw std::runtime_error("the display does not tell what is drawn");
    damage_ = XDamageCreate(display_, DefaultRootWindow(display_), XDamageReportRawRectangles);
  }
  ~Screen() {
    XDamageDestroy(display_, damage_);
    XCloseDisplay(display_);
  }
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  /// Waits until nothing was drawn for a while: the window before is gone.
  void settle() {
    const struct timespec pause = {0, 60'000'000};
    do {
      forget();
      ::nanosleep(&pause, nullptr);
      XSync(display_, False);
    } while (XPending(display_) > 0);
  }
  void waitForPicture() {
    const double end = bench::nowMicros() + patienceSeconds * 1e6;
    while (bench::nowMicros() < end) {
      XEvent event;
      if (XPending(display_) == 0) continue;  // waits awake: a sleep would be seen in the figures
      XNextEvent(display_, &event);
      if (event.type != firstEvent_ + XDamageNotify) continue;
      const auto& drawn = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
      if (drawn.width >= leastSize && drawn.height >= leastSize) return;
    }
    throw std::runtime_error("no window came");
  }

 private:
  void forget() {
    XEvent event;
    while (XPending(display_) > 0) XNextEvent(display_, &event);
  }
  Display* display_;
  int firstEvent_ = 0;
  Damage damage_ = 0;
};

double microsToPicture(Screen& screen, const Command& command) {
  screen.settle();
  const double begin = bench::nowMicros();
  const pid_t child = bench::start(command);
  screen.waitForPicture();
  const double micros = bench::nowMicros() - begin;
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
  return micros;
}

/// Medians of commands that take turns.
std::vector<double> compare(Screen& screen, const std::vector<Command>& commands) {
  std::vector<std::vector<double>> times(commands.size());
  for (int round = 0; round < rounds; ++round)
    for (std::size_t i = 0; i < commands.size(); ++i)
      times[i].push_back(microsToPicture(screen, commands[i]));
  std::vector<double> medians;
  for (const std::vector<double>& each : times) medians.push_back(bench::median(each));
  return medians;
}

bool isRow(const char* work, const char* peer, double ours, double peers, double atMost) {
  const double ratio = ours / peers;
  std::printf("%-44s %-26s %8.1f ms %8.1f ms %6.2f %6.2f%s\n", work, peer, ours / 1000,
              peers / 1000, ratio, atMost, ratio > atMost ? "  MISSED" : "");
  return ratio <= atMost;
}

int measure(const std::string& folder, const std::string& desktop, const std::string& minimal,
            const std::string& linguist, const std::string& inih) {
  Screen screen;
  const std::string big = folder + "/big.GN7";
  const std::vector<double> times =
      compare(screen, {{{desktop}}, {{minimal}}, {{linguist}}, {{desktop, big}}});
  std::vector<double> parses;
  for (int i = 0; i < rounds; ++i) parses.push_back(bench::runOnce({{inih, big}}).micros);
  std::printf("%-44s %-26s %11s %11s %6s %6s\n", "work", "peer", "ours", "peer's", "ratio", "most");
  bool met = isRow("start to the first picture", "minimal Qt program", times[0], times[1], 1.8);
  met &= isRow("start to the first picture", "Qt Linguist", times[0], times[2], 1.0);
  met &= isRow("what BIG adds to it", "inih's bare parse of it", times[3] - times[0],
               bench::median(parses), 0.5);
  return met ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 6) return 2;
  try {
    return measure(argv[1], argv[2], argv[3], argv[4], argv[5]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
