#include <ini.h>

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "processes.h"
#include "projectfile/project_file.h"

/// compare FOLDER KGEN INIH_PEER UIC: measures kgen against its peers and prints a table.
namespace {

using bench::Command;
using bench::Medians;

struct Paths {
  std::string folder, kgen, inih, uic;

  [[nodiscard]] std::string in(const char* name) const { return folder + "/" + name; }
};

constexpr int roundsOfBig = 31;
constexpr int roundsOfSmall = 401;

class Table {
 public:
  Table() {
    std::printf("%-36s %-34s %10s %10s %7s %7s %5s\n", "work", "peer", "ours", "peer's", "ratio",
                "at most", "aim");
  }
  void row(const char* work, const char* peer, Medians medians, double atMost, double aim,
           const char* unit = "us") {
    const double ratio = medians.ours / medians.peers;
    if (ratio > atMost) missed_ = true;
    std::printf("%-36s %-34s %7.0f %s %7.0f %s %7.2f %7.2f %5.2f%s\n", work, peer, medians.ours,
                unit, medians.peers, unit, ratio, atMost, aim, ratio > atMost ? "  MISSED" : "");
  }
  [[nodiscard]] bool missed() const { return missed_; }

 private:
  bool missed_ = false;
};

int count(void* user, const char*, const char*, const char*) {
  ++*static_cast<long*>(user);
  return 1;
}

double microsOfLoad(const std::string& file) {
  const double begin = bench::nowMicros();
  model::Project project = KGEN_COMMON::newProject();
  if (KGEN_GENFILE::loadInPlace(file, project).error)
    throw std::runtime_error("cannot load " + file);
  return bench::nowMicros() - begin;
}

double microsOfInih(const std::string& file) {
  const double begin = bench::nowMicros();
  long entries = 0;
  ini_parse(file.c_str(), count, &entries);
  return bench::nowMicros() - begin;
}

Medians loadMedians(const std::string& file) {
  std::vector<double> ours, peers;
  for (int i = 0; i < roundsOfBig; ++i) {
    ours.push_back(microsOfLoad(file));
    peers.push_back(microsOfInih(file));
  }
  return {bench::median(ours), bench::median(peers)};
}

Command kgen(const Paths& paths, std::vector<std::string> words) {
  words.insert(words.begin(), paths.kgen);
  return {std::move(words)};
}

Command show(const Paths& paths, const std::string& file) {
  return kgen(paths, {"show", file, "--format", "json"});
}

Command generate(const Paths& paths, const char* name) {
  Command command = kgen(paths, {"generate", paths.in(name), "-o", paths.in("made")});
  command.made = {paths.in("made.KX7"), paths.in("made.KP7"), paths.in("made.TI7")};
  return command;
}

void measureBig(Table& table, const Paths& paths) {
  const std::string big = paths.in("big.GN7");
  table.row("show BIG --format json", "inih's bare parse",
            compare(show(paths, big), {{paths.inih, big}}, roundsOfBig), 0.60, 0.40);
  const Medians load = loadMedians(big);
  table.row("load of BIG, in process", "inih's bare parse, in process", load, 0.35, 0.27);

  Command convert = kgen(paths, {"convert", big, paths.in("copy"), "--no-sync"});
  convert.made = {paths.in("copy.GN7")};
  const Command cp{{"cp", big, paths.in("copy.cp")}, "/dev/null", {paths.in("copy.cp")}};
  Medians copies = compare(convert, cp, roundsOfBig);
  copies.ours -= load.ours;
  table.row("convert BIG beyond the load", "cp", copies, 2.5, 2.0);

  const auto bytes = static_cast<double>(std::filesystem::file_size(big));
  const auto peak = static_cast<double>(runOnce(show(paths, big)).peakBytes);
  table.row("show BIG, peak memory", "size of the file", {peak / 1024, bytes / 1024}, 2.0, 1.0,
            "K ");
}

/// The check that a program passes before it is written costs as much as compiling it.
Medians beyond(const Medians& whole, const Medians& compile) {
  return {whole.ours - compile.ours, whole.peers};
}

void measureUsual(Table& table, const Paths& paths) {
  const std::string usual = paths.in("usual.GN7");
  table.row("show USUAL --format json", "inih's bare parse",
            compare(show(paths, usual), {{paths.inih, usual}}, roundsOfSmall), 1.0, 0.7);
  const Command generateUsual = generate(paths, "usual.GN7");
  runOnce(generateUsual);
  std::filesystem::copy_file(paths.in("made.KX7"), paths.in("result"),
                             std::filesystem::copy_options::overwrite_existing);
  const Command cat{{"cat", paths.in("result")}, paths.in("result.cat"), {paths.in("result.cat")}};
  const Medians compile = compare(kgen(paths, {"compile", paths.in("result")}), cat, roundsOfSmall);
  table.row("compile of USUAL's program", "cat of the program into a file", compile, 3.0, 2.0);
  table.row("generate USUAL beyond one compile", "cat of the program into a file",
            beyond(compare(generateUsual, cat, roundsOfSmall), compile), 1.8, 1.3);
  const Command uic{{paths.uic, paths.in("usual.ui"), "-o", paths.in("made.h")},
                    "/dev/null",
                    {paths.in("made.h")}};
  table.row("generate USUAL beyond one compile", "uic, as many lines",
            beyond(compare(generateUsual, uic, roundsOfSmall), compile), 0.30, 0.20);
}

void measureSmallest(Table& table, const Paths& paths) {
  table.row("generate of the smallest project", "true",
            compare(generate(paths, "smallest.GN7"), {{"/usr/bin/true"}}, roundsOfSmall), 2.6, 1.8);
}

int measureAll(const Paths& paths) {
  Table table;
  measureBig(table, paths);
  measureUsual(table, paths);
  measureSmallest(table, paths);
  return table.missed() ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) return 2;
  try {
    return measureAll({argv[1], argv[2], argv[3], argv[4]});
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 2;
  }
}
