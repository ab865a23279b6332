// A job with a deck in memory and pieces of decks, for the tests of the deck's sections.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>
#include <vector>

#include "constitutive/sample_materials.h"
#include "job/job.h"
#include "jobs/job_runner.h"
#include "model/fake_kernel.h"

namespace zema::test {

/// Has read two tetrahedra 1 2 3 4 and 2 3 4 5 of one composite, the second in construction step 2 of 2.
class InputTest : public testing::Test {
 protected:
  InputTest();

  void deck(std::string text) { job.deck.emplace(CardReader::fromText("deck", std::move(text))); }
  /// Makes cards the rest of the deck and reads the section under test.
  virtual void read(const std::string& cards) = 0;
  /// How reading cards ends: "goes on", or "run end", "fault" or "stop" with the message.
  [[nodiscard]] std::string endOf(const std::string& cards);

  /// What stands on a channel so far.
  [[nodiscard]] std::string written(int channelNumber);
  [[nodiscard]] std::string listing() { return written(channel::listing); }

  JobFolder folder;
  Job job;
  Model model;
  FakeKernel kernel;
};

/// The tests of one section of the deck.
template <auto section>
class SectionTest : public InputTest {
 protected:
  void read(const std::string& cards) override {
    deck(cards);
    section(job, model, kernel);
  }
};

/// The cards of a material: title, number, six codes, and the records of slots; slots not named are 0, but for the
/// Young moduli of slots 1 and 37, which are 100.
[[nodiscard]] std::string materialCards(int number, const std::string& codes, const Slots& slots = {},
                                        const std::string& curves = "0\n0\n0\n");

/// Cards of the model section; each part can be replaced.
struct ModelCards {
  std::string elements = "1 1 0 1.5 6 1 4 1 1 1 2 3 4/\n2 1 0 2.5 6 2 4 1 1 2 3 4 5/\n";
  std::string composites = "1 1\nP 0.5 0 0 0\n1 1 1\n";
  std::string nodes = "1 0 0 0\n2 1 0 0\n3 0 1 0\n4 0 0 1\n5 1 1 1\n";
  std::string materials = materialCards(1, "2 2 0 2 1 1", {{4, 3.0}, {57, 8.0}}) + materialCards(2, "2 2 0 2 1 1");

  operator std::string() const { return elements + composites + nodes + materials + "end\nCURV,    0\n"; }
};

}  // namespace zema::test
