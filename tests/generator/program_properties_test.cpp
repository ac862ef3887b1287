#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "companion/table_information.h"
#include "generator/program_writer.h"
#include "model/stored_outputs.h"
#include "support/demo_project.h"
#include "support/program_reader.h"
#include "support/random_case.h"
#include "text/strings.h"

namespace {

/// The last field number of each table (by its number) in a table information text. Rows are
/// numbered without gaps: a row is "7" or, for the values of a histogram, "12-21".
std::map<std::size_t, std::size_t> lastFields(const std::string& information) {
  std::map<std::size_t, std::size_t> last;
  std::istringstream lines(information);
  std::size_t table = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("TABLE #")) last[table = std::stoul(line.substr(7))] = 0;
    if (line.empty() || !text::isDigit(line[0])) continue;
    EXPECT_EQ(std::stoul(line), last[table] + 1) << line;
    const std::string number = line.substr(0, line.find(' '));
    const std::size_t dash = number.find('-');
    last[table] = std::stoul(dash == std::string::npos ? number : number.substr(dash + 1));
  }
  return last;
}

void expectRecordsAgree(const support::RandomCase& one, const support::ProgramReading& reading) {
  std::map<std::string, support::TableRecord> records;
  for (const support::TableRecord& record : reading.tables) records[record.name] = record;
  const auto fields = lastFields(companion::tableInformation(one.project, one.stamp));
  for (std::size_t t = 1; t <= model::maxTables; ++t) {
    if (!one.project.tables[t - 1].TableOn) continue;
    const support::TableRecord& record = records[text::lower(one.project.tables[t - 1].TableName)];
    std::int32_t bytes = 0;
    KGEN_COMMON::BytesPerRecord(one.project, t, bytes);
    EXPECT_EQ(record.bytes, static_cast<std::size_t>(bytes)) << "table " << t;
    EXPECT_EQ(record.values, KGEN_COMMON::FieldsPerRecord(one.project, t)) << "table " << t;
    EXPECT_EQ(fields.at(t), record.values) << "table " << t;
  }
}

TEST(ProgramProperties, RandomProjectsGiveCorrectProgramsWhoseRecordsAgree) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    const support::RandomCase one = support::randomCase(seed);
    const SAVEDLD::Program program = SAVEDLD::generate(one.project, one.stamp);
    const support::ProgramReading reading = support::readProgram(program.text);
    ASSERT_EQ(support::faultList(program.text, reading.faults), "");
    EXPECT_EQ(SAVEDLD::generate(one.project, one.stamp).text, program.text);
    expectRecordsAgree(one, reading);
    if (HasFailure()) return;
  }
}

/// Many named channels, of which all but the last store values on their own: a line for each bit.
model::Project longProject() {
  model::Project project = support::projectWith(1, {});
  project.configuration.quantity(model::ModuleKindIndex::analog7121) = 12;
  project.tables[0].TableOn = true;
  model::MeasurementBlock& block = support::addBlock(project, model::BlockKind::voltage, 1, 300);
  block.MeasType = "SE";
  for (std::size_t e = 0; e < block.elements.size(); ++e) {
    block.elements[e].AliasName = text::concat("Gauge", e);
    block.elements[e].AliasUnits = "psi";
    block.elements[e].AliasExcept = true;
    block.elements[e].AliasMult = 2;
    block.elements[e].AliasOffset = 3;
  }
  block.elements[0].Table[0] = 1;
  return project;
}

void storeMore(model::Project& project, int values) {
  auto& elements = project.block(model::BlockKind::voltage, 1).elements;
  for (int code = 1; code <= 4; ++code)
    for (std::size_t e = 0; e + 1 < elements.size() && values > 0; ++e, --values)
      elements[e].Table[0] = static_cast<std::uint8_t>(elements[e].Table[0] | 1 << code);
}

TEST(ProgramLength, MayBeThreeThousandLinesAndNoneMore) {
  model::Project project = longProject();
  const int lines = SAVEDLD::generate(project, support::demoStamp()).lines;
  model::Project longer = project;
  storeMore(project, SAVEDLD::maxProgramLines - lines);
  const SAVEDLD::Program program = SAVEDLD::generate(project, support::demoStamp());
  EXPECT_EQ(program.lines, SAVEDLD::maxProgramLines);
  EXPECT_EQ(support::faultList(program.text, support::readProgram(program.text).faults), "");
  storeMore(longer, SAVEDLD::maxProgramLines - lines + 1);
  EXPECT_THROW(SAVEDLD::generate(longer, support::demoStamp()), SAVEDLD::ProgramTooLong);
}

}  // namespace
