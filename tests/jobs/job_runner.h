// Runs whole jobs through the program in a folder of their own, and reads what they leave.
#pragma once

#include <array>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace zema::test {

/// A folder for one test's jobs, removed at its end.
class JobFolder {
 public:
  JobFolder();
  ~JobFolder();
  JobFolder(const JobFolder&) = delete;
  JobFolder& operator=(const JobFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  void write(const std::string& name, const std::string& text) const;
  [[nodiscard]] std::string read(const std::string& name) const;
  [[nodiscard]] bool has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

 private:
  std::filesystem::path path_;
};

/// The text of a file.
std::string readFile(const std::filesystem::path& path);

/// The text of a file of tests/data.
std::string dataFile(const std::string& name);

/// The text with `by` in the place of the first `old`.
std::string replaced(std::string text, const std::string& old, const std::string& by);

/// The folder of an example.
std::filesystem::path exampleFolder(const std::string& name);
/// The names of all examples, in order.
std::vector<std::string> exampleNames();

/// How the program ended.
struct JobOutcome {
  int status = -1;      ///< exit status; 128 + signal when it was killed
  std::string console;  ///< standard output and standard error
};

/// Runs the program with FOR005 = deck inside the folder; limits: shell text such as "ulimit -f 1" run before it.
JobOutcome runJob(const JobFolder& folder, const std::string& deck, const std::string& limits = "");

/// Writes a deck as job "job" and runs it.
JobOutcome runDeck(const JobFolder& folder, const std::string& deckText);

/// One block of a post result file.
struct ResultBlock {
  std::string name;                       ///< the result text, e.g. "STRESSES//COMPOSITE"
  std::vector<std::vector<double>> rows;  ///< values of each line, behind its node or element
};

/// All blocks of a post result file, in file order.
std::vector<ResultBlock> readPostResults(const JobFolder& folder, const std::string& stem);

/// Runs a deck as job "job" and expects a normal, converged end; gives its result blocks.
std::vector<ResultBlock> solve(const JobFolder& folder, const std::string& deckText);
/// The same in a folder that nobody looks at.
std::vector<ResultBlock> solve(const std::string& deckText);

/// The n-th block (from 0) of this name, or of the composites as a whole ("STRESSES"); fails the test when there is
/// none.
const ResultBlock& block(const std::vector<ResultBlock>& all, const std::string& name, int n = 0);
/// The last such block.
const ResultBlock& lastBlock(const std::vector<ResultBlock>& all, const std::string& name);

/// Expects one list of values in every line of a block.
void expectRows(const ResultBlock& block, std::span<const double> expected, double tolerance);

/// Largest magnitude of a block.
double largest(const ResultBlock& block);

/// The points of a curve file.
std::vector<std::array<double, 2>> readCurve(const JobFolder& folder, const std::string& name = "job.AA");

/// Displacement of a node (from 1) in a displacement block.
const std::vector<double>& atNode(const ResultBlock& displacements, int node);

}  // namespace zema::test
