// A job with a deck in memory, two kernels without mechanics and pieces of decks, for the tests of the deck's sections.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "job/job.h"
#include "jobs/job_runner.h"
#include "model/kernel.h"

namespace zema::test {

/// Sizes of solids (space: NTYPE 6, three directions; plane: NTYPE 3, two directions) and a record of what loads came.
class SizesOnly : public Kernel {
 public:
  enum class Space { solid, plane };
  explicit SizesOnly(Space space) : solid_(space == Space::solid) {}

  [[nodiscard]] const KernelProfile& profile() const override;
  [[nodiscard]] ElementSizes TYPE(int NTYPE, int NNODE, int NGAUS) const override;
  /// Puts the force on the first node of the element, as if its volume were 1.
  void addBodyForce(const Model& model, int e, std::span<const double> force, std::span<double> RLOAD) const override;
  [[nodiscard]] int faceNodes(const ElementData&) const override { return solid_ ? 3 : 2; }
  /// Puts each value at its node, as if the share of every node of the face were 1.
  void addFaceLoad(const Model& model, int e, std::span<const int> places, std::span<const double> values,
                   std::span<double> RLOAD) const override;

  [[nodiscard]] const ResultProfile& results() const override { std::abort(); }
  [[nodiscard]] int pointNumber(const ElementData&, PointIndex) const override { return 0; }
  void prepare(Model&) override {}
  void CALCIN(const Model&, double) override {}
  void IMPORTINFON1(const Model&) override {}
  void RIGI(const Model&, int, std::span<double>) const override {}
  [[nodiscard]] double volume(const Model&, int) const override { return 0.0; }
  EnergySums RESIDU(Model&, int) const override { return {}; }
  void CAUCHY(const Model&, int, PointIndex, int, std::span<double>) const override {}
  void ALMANS(const Model&, int, PointIndex, int, std::span<double>) const override {}

  std::optional<int> dofsOfType20;  ///< gives NTYPE 20 a size

 private:
  bool solid_;
};

class InputTest : public testing::Test {
 protected:
  InputTest();

  /// Makes text the rest of the deck.
  void deck(std::string text) { job.deck.emplace(CardReader::fromText("deck", std::move(text))); }
  /// What stands on a channel so far.
  [[nodiscard]] std::string written(int channelNumber);
  [[nodiscard]] std::string listing() { return written(channel::listing); }
  /// Whether these lines follow each other on the listing.
  [[nodiscard]] testing::AssertionResult listed(const std::string& lines);

  /// Two tetrahedra 1 2 3 4 and 2 3 4 5 with their materials read, the second in construction step 2 of 2.
  void useTwoTetrahedra();

  JobFolder folder;
  Job job;
  Model model;
  SizesOnly kernel{SizesOnly::Space::solid};
};

/// The cards of a material: title, number, six codes, and the records of slots; slots not named are 0, but for the
/// Young moduli of slots 1 and 37, which are 100.
[[nodiscard]] std::string materialCards(int number, const std::string& codes, std::map<int, double> slots = {},
                                        const std::string& curves = "0\n0\n0\n");

/// Cards of five nodes: the origin, the ends of the three axes at 1, and (1, 1, 1).
extern const std::string fiveNodes;

/// Message of the fault that a reading throws; empty when it throws none.
template <class Fault, class Read>
std::string messageOf(Read read) {
  try {
    read();
  } catch (const Fault& fault) {
    return fault.what();
  }
  return "";
}

}  // namespace zema::test
