// Starts the program as a child process and parses its post results.
#include "jobs/job_runner.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zema::test {

namespace {

std::string quotedText(const std::string& line) {
  const std::size_t open = line.find('"');
  const std::size_t close = line.find('"', open + 1);
  return open == std::string::npos ? "" : line.substr(open + 1, close - open - 1);
}

/// The values of a line that begins with a node or element in its own field, or with blanks.
std::vector<double> valuesOf(const std::string& line) {
  std::istringstream in(line);
  int id = 0;
  if (line[4] != ' ') in >> id;
  std::vector<double> row;
  for (double value = 0.0; in >> value;) row.push_back(value);
  return row;
}

bool isNamed(const ResultBlock& block, const std::string& name) {
  return block.name == name || block.name == name + "//COMPOSITE";
}

}  // namespace

JobFolder::JobFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "zema-job-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the job");
  path_ = pattern;
}

JobFolder::~JobFolder() {
  std::error_code ignored;
  std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
  std::filesystem::remove_all(path_, ignored);
}

void JobFolder::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
}

std::string JobFolder::read(const std::string& name) const {
  return readFile(path_ / name);
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream all;
  all << in.rdbuf();
  return all.str();
}

std::string dataFile(const std::string& name) {
  std::string text = readFile(std::filesystem::path(ZEMA_SOURCE) / "tests/data" / name);
  EXPECT_FALSE(text.empty()) << name;
  return text;
}

std::string replaced(std::string text, const std::string& old, const std::string& by) {
  return text.replace(text.find(old), old.size(), by);
}

std::filesystem::path exampleFolder(const std::string& name) {
  return std::filesystem::path(ZEMA_SOURCE) / "examples" / name;
}

std::vector<std::string> exampleNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(exampleFolder("")))
    if (entry.is_directory() && !entry.path().filename().string().starts_with("_"))
      names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

JobOutcome runJob(const JobFolder& folder, const std::string& deck, const std::string& limits) {
  const std::string command = "cd '" + folder.path().string() + "' && { " + (limits.empty() ? ":" : limits) +
                              "; FOR005='" + deck + "' timeout 120 " ZEMA_PROGRAM " </dev/null; } 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  JobOutcome outcome;
  std::array<char, 4096> piece{};
  for (std::size_t n = 0; (n = fread(piece.data(), 1, piece.size(), pipe)) > 0;)
    outcome.console.append(piece.data(), n);
  const int status = pclose(pipe);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

JobOutcome runDeck(const JobFolder& folder, const std::string& deckText) {
  folder.write("job.dts", deckText);
  return runJob(folder, "job.dts");
}

std::vector<ResultBlock> readPostResults(const JobFolder& folder, const std::string& stem) {
  std::istringstream in(folder.read(stem + ".post.res"));
  std::vector<ResultBlock> all;
  bool inValues = false;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("Result ")) {
      all.push_back({quotedText(line), {}});
    } else if (line.starts_with(" End Values")) {
      inValues = false;
    } else if (line.starts_with(" Values")) {
      inValues = true;
    } else if (inValues) {
      all.back().rows.push_back(valuesOf(line));
    }
  }
  return all;
}

std::vector<ResultBlock> solve(const JobFolder& folder, const std::string& deckText) {
  const JobOutcome outcome = runDeck(folder, deckText);
  EXPECT_EQ(outcome.status, 0) << outcome.console;
  const std::string listing = folder.read("job.mec.sal");
  EXPECT_EQ(listing.find("AN ERROR HAS BEEN DETECTED"), std::string::npos)
      << outcome.console << listing.substr(listing.size() < 2000 ? 0 : listing.size() - 2000);
  return readPostResults(folder, "job");
}

std::vector<ResultBlock> solve(const std::string& deckText) {
  return solve(JobFolder(), deckText);
}

const ResultBlock& block(const std::vector<ResultBlock>& all, const std::string& name, int n) {
  for (const ResultBlock& candidate : all)
    if (isNamed(candidate, name) && n-- == 0) return candidate;
  throw std::runtime_error("no result block " + name);
}

const ResultBlock& lastBlock(const std::vector<ResultBlock>& all, const std::string& name) {
  const auto last = std::ranges::find_if(all.rbegin(), all.rend(), [&](const auto& one) { return isNamed(one, name); });
  if (last == all.rend()) throw std::runtime_error("no result block " + name);
  return *last;
}

void expectRows(const ResultBlock& block, std::span<const double> expected, double tolerance) {
  EXPECT_FALSE(block.rows.empty()) << block.name;
  for (const auto& row : block.rows)
    for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(row[i], expected[i], tolerance) << block.name << i;
}

double largest(const ResultBlock& block) {
  double most = 0.0;
  for (const auto& row : block.rows)
    for (const double value : row) most = std::max(most, std::abs(value));
  return most;
}

std::vector<std::array<double, 2>> readCurve(const JobFolder& folder, const std::string& name) {
  std::istringstream in(folder.read(name));
  std::vector<std::array<double, 2>> points;
  for (std::string line; std::getline(in, line);) {
    std::array<double, 2> point{};
    if (!line.starts_with('#') && std::istringstream(line) >> point[0] >> point[1]) points.push_back(point);
  }
  return points;
}

const std::vector<double>& atNode(const ResultBlock& displacements, int node) {
  return displacements.rows.at(static_cast<std::size_t>(node - 1));
}

}  // namespace zema::test
