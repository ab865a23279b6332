// Runs that stop and are taken up again leave the files of a run that never stopped.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// Lines of a file without those that may differ: times of day, the mark of a restart, the echo of NINCM.
std::string comparable(const std::string& text) {
  std::istringstream in(text);
  std::string kept, line;
  for (std::string last; std::getline(in, line); last = line) {
    if (line.find("RESTART   Nro.:") != std::string::npos)
      kept.resize(kept.size() - last.size() - 1);
    else if (line.find("-->>> TIEMPO") == std::string::npos && line.find("(NINCM)") == std::string::npos)
      kept += line + '\n';
  }
  return kept;
}

void expectSameFiles(const JobFolder& expected, const JobFolder& found) {
  for (const auto& file : std::filesystem::directory_iterator(expected.path())) {
    const std::string name = file.path().filename().string();
    if (name != "job.dts" && name != "job.rst") {
      EXPECT_TRUE(comparable(expected.read(name)) == comparable(found.read(name))) << name;
    }
  }
}

/// A deck with a card for each increment, and where each of these cards ends.
struct Cards {
  std::string text;
  std::vector<std::size_t> ends;

  explicit Cards(const std::string& deck) {
    std::istringstream in(deck);
    for (std::string line; std::getline(in, line);) {
      const bool isCard = line.ends_with("16*0") && std::ranges::count(line, ' ') > 18;
      for (int n = isCard ? std::stoi(line) : 1; n > 0; --n) {
        text += isCard ? '1' + line.substr(line.find(' ')) + '\n' : line + '\n';
        if (isCard) ends.push_back(text.size());
      }
    }
  }
  /// The text up to a card, without its last line end.
  [[nodiscard]] std::string upTo(std::size_t card) const { return text.substr(0, ends.at(card - 1) - 1); }
};

std::string restarted(const std::string& deck) {
  return replaced(deck, "START1", "START2");
}

/// The deck with another field 7 of its size card, which ends the run early.
std::string withNINCM(std::string deck, int NINCM) {
  std::size_t at = 0;
  for (int line = 1; line < 5; ++line) at = deck.find('\n', at) + 1;
  for (int field = 1; field < 7; ++field) at = deck.find(' ', at) + 1;
  return deck.replace(at, deck.find(' ', at) - at, std::to_string(NINCM));
}

/// Compares a run with runs of shorter decks one after the other and of the whole deck at the end. `beside` is a file
/// that they read.
void stopAndGoOn(const std::string& deck, const std::vector<std::string>& shorter, const std::string& beside = "",
                 const std::string& text = "") {
  const JobFolder whole, parts;
  if (!beside.empty())
    for (const JobFolder* folder : {&whole, &parts}) folder->write(beside, text);
  solve(whole, deck);

  for (std::size_t i = 0; i < shorter.size(); ++i)  // ends with a fault where another load step should follow
    runDeck(parts, i == 0 ? shorter[i] : restarted(shorter[i]));
  solve(parts, restarted(deck));
  expectSameFiles(whole, parts);
}

/// Two load steps with reused factors, arc-length control, finite strain, curves and iteration blocks.
SolidDeck busyDeck(int NSOLV) {
  SolidDeck deck = symmetricCube(MaterialCards::isotropic(1000.0, 0.3), 0.02);
  deck.LARGE = NSOLV % 2;
  deck.NSOLV = NSOLV;
  deck.curveCount = 1;
  deck.curves = {"pull", "X-DISPL", "2 1 1", "Y-RCTOT", "1"};
  deck.steps[0].increments.assign(4, {.factor = 0.25, .tolerance = 1e-6, .output = {0, 3, 1, 1}, .algorithm = 4});
  deck.steps.push_back(deck.steps[0]);
  deck.steps[1].KLOAD = 1;
  for (Increment& card : deck.steps[1].increments) card.algorithm = deck.LARGE != 0 ? 3 : 1;
  deck.steps[1].increments[2].arc = deck.steps[1].increments[3].arc = "5 0.01 1 1";
  return deck;
}

TEST(Restart, EveryStopOfEverySolverGoesOnToTheSameBits) {
  for (const int NSOLV : {1, 2, 3, 4, 5, 6}) {
    const Cards cards(busyDeck(NSOLV).text());
    ASSERT_EQ(cards.ends.size(), 8U);
    for (const std::size_t stop : {1U, 4U, 6U, 7U}) {
      SCOPED_TRACE(testing::Message() << "NSOLV " << NSOLV << ", stop " << stop);
      const std::string deck = cards.upTo(stop);
      const std::string shorter = stop == 4 ? replaced(deck, "2\nload step", "1\nload step") : deck;  // NLOAD
      stopAndGoOn(cards.text, {shorter}, "job.arc", "1 2\n3 4\n");
    }
  }
}

TEST(Restart, EveryExampleStopsAtEachThird) {
  for (const std::string& name : exampleNames()) {
    SCOPED_TRACE(name);
    const std::string deck = readFile(exampleFolder(name) / (name + ".dts"));
    const std::string data = readFile(exampleFolder(name) / (name + ".din"));
    const Cards cards(deck);
    const std::size_t n = cards.ends.size();
    if (!data.empty()) {
      int NSTEP = 0;
      std::istringstream(data.substr(data.find(' ', data.find(' ', data.find(' ') + 1) + 1))) >> NSTEP;
      stopAndGoOn(deck, {withNINCM(deck, NSTEP / 3), withNINCM(deck, 2 * NSTEP / 3)}, "job.din", data);
    } else if (n > 1) {
      stopAndGoOn(cards.text, {cards.upTo(std::max<std::size_t>(n / 3, 1)), cards.upTo(2 * n / 3)});
    }
  }
}

TEST(Restart, AKillAtAnyMomentLeavesAStateToGoOnFrom) {
  const Cards cards(busyDeck(5).text());
  const JobFolder whole, parts;
  for (const JobFolder* folder : {&whole, &parts}) folder->write("job.arc", "1 2\n3 4\n");
  solve(whole, cards.text);
  const auto nextDeck = [&] {
    if (parts.has("job.rst")) return parts.write("job.dts", restarted(cards.text));
    for (const auto& file : std::filesystem::directory_iterator(parts.path()))  // killed before anything was saved
      if (file.path().extension() != ".arc") std::filesystem::remove(file.path());
    parts.write("job.dts", cards.text);
  };
  for (const char* moment : {"0.006", "0.010", "0.014", "0.018", "0.024", "0.030"}) {
    nextDeck();
    const std::string command = "cd '" + parts.path().string() + "' && FOR005=job.dts timeout -s KILL " + moment +
                                " " ZEMA_PROGRAM " > console 2>&1";
    static_cast<void>(std::system(command.c_str()));
  }
  std::filesystem::remove(parts.path() / "console");
  nextDeck();
  solve(parts, parts.read("job.dts"));
  expectSameFiles(whole, parts);
}

TEST(Restart, AFullDiskLeavesTheStateOfBefore) {
  const JobFolder folder;
  folder.write("job.rst", "the state of before");
  std::filesystem::create_symlink("/dev/full", folder.path() / "job.rst.new");

  const JobOutcome outcome = runDeck(folder, busyDeck(4).text());

  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.console.find("cannot write job.rst.new: No space left on device"), std::string::npos);
  EXPECT_EQ(folder.read("job.rst"), "the state of before");
  EXPECT_FALSE(std::filesystem::is_symlink(folder.path() / "job.rst.new"));
}

TEST(Restart, WhatDoesNotFitIsRefusedAndNothingIsCut) {
  const Cards cards(busyDeck(4).text());
  const std::string whole = restarted(cards.text);
  const JobFolder folder;
  folder.write("job.arc", "1 2\n3 4\n");
  runDeck(folder, cards.text.substr(0, cards.ends[1]));
  const std::string saved = folder.read("job.rst"), results = folder.read("job.post.res");
  const auto refused = [&](const auto& restart, const auto& deck, const std::string& message, int status) {
    folder.write("job.rst", restart);
    const JobOutcome outcome = runDeck(folder, deck);
    EXPECT_EQ(outcome.status, status) << message;
    EXPECT_NE(outcome.console.find(message), std::string::npos) << message << outcome.console;
    EXPECT_EQ(folder.read("job.post.res"), results);
  };
  std::string altered = saved;
  altered[saved.size() / 2] ^= 1;
  refused(altered, whole, "is damaged", 2);
  refused(saved.substr(0, saved.size() - 9), whole, "is damaged", 2);
  refused("", whole, "holds no restart data", 2);
  std::string otherVersion = saved;
  otherVersion[18] = 99;
  refused(otherVersion, whole, "restart data of version 99", 2);
  refused(saved, replaced(whole, "1000 ", "1001 "), "is not the file that the restart data belong to", 2);
  refused(saved, restarted(busyDeck(2).text()), "NSOLV = 4, the deck has 2", 2);
  std::filesystem::create_directories(folder.path() / "job.mec.29" / "full");  // no such file when the state was saved
  refused(saved, whole, "cannot remove job.mec.29: ", 3);
  std::filesystem::remove_all(folder.path() / "job.mec.29");
  std::filesystem::remove(folder.path() / "job.AB");
  refused(saved, whole, "of it, and it is missing", 3);
  folder.write("job.mec.log", "");
  refused(saved, whole, "cannot go on with job.mec.log", 3);
  std::filesystem::remove(folder.path() / "job.rst");
  EXPECT_EQ(runDeck(folder, whole).status, 3);
}

}  // namespace
}  // namespace zema::test
