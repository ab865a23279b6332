// Runs that stop and are taken up again leave the files of a run that never stopped.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

/// Lines of a file without those that may differ: times of day and the mark of a restart.
std::string comparable(const std::string& text) {
  std::istringstream in(text);
  std::string kept;
  std::string line;
  for (std::string last; std::getline(in, line); last = line) {
    if (line.find("RESTART   Nro.:") != std::string::npos)
      kept.resize(kept.size() - last.size() - 1);
    else if (line.find("-->>> TIEMPO") == std::string::npos)
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
  [[nodiscard]] std::string restart() const {
    std::string again = text;
    return again.replace(again.find("START1"), 6, "START2");
  }
};

void stopAndGoOn(const Cards& cards, const std::vector<std::size_t>& stops, const std::string& pairs = "") {
  const JobFolder whole;
  const JobFolder parts;
  for (const JobFolder* folder : {&whole, &parts}) folder->write("job.arc", pairs);
  solve(whole, cards.text);

  std::string deck = cards.text;
  for (const std::size_t stop : stops) {
    parts.write("job.dts", deck.substr(0, cards.ends.at(stop - 1) - 1));  // without its last line end
    runJob(parts, "job.dts");  // which ends with a fault where another load step should follow
    deck = cards.restart();
  }
  solve(parts, deck);
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
      stopAndGoOn(cards, {stop}, "1 2\n3 4\n");
    }
  }
}

TEST(Restart, EveryExampleStopsAtEachThird) {
  for (const std::string& name : exampleNames()) {
    SCOPED_TRACE(name);
    const Cards cards(readFile(exampleFolder(name) / (name + ".dts")));
    const std::size_t n = cards.ends.size();
    if (n < 2 || std::filesystem::exists(exampleFolder(name) / (name + ".din"))) continue;
    stopAndGoOn(cards, n < 3 ? std::vector<std::size_t>{1} : std::vector<std::size_t>{n / 3, 2 * n / 3});
  }
}

TEST(Restart, AKillAtAnyMomentLeavesAStateToGoOnFrom) {
  const Cards cards(busyDeck(5).text());
  const JobFolder whole;
  const JobFolder parts;
  for (const JobFolder* folder : {&whole, &parts}) folder->write("job.arc", "1 2\n3 4\n");
  solve(whole, cards.text);
  const auto nextDeck = [&] {
    if (parts.has("job.rst")) return parts.write("job.dts", cards.restart());
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

TEST(Restart, WhatDoesNotFitIsRefusedAndNothingIsCut) {
  const Cards cards(busyDeck(4).text());
  const std::string whole = cards.restart();
  const JobFolder folder;
  folder.write("job.arc", "1 2\n3 4\n");
  folder.write("job.dts", cards.text.substr(0, cards.ends[1]));
  runJob(folder, "job.dts");
  const std::string saved = folder.read("job.rst");
  const std::string results = folder.read("job.post.res");
  const auto refused = [&](const std::string& restart, const std::string& deck, const std::string& message,
                           int status) {
    folder.write("job.rst", restart);
    folder.write("job.dts", deck);
    const JobOutcome outcome = runJob(folder, "job.dts");
    EXPECT_EQ(outcome.status, status) << message;
    EXPECT_NE(outcome.console.find(message), std::string::npos) << message << outcome.console.substr(2000);
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
  std::string otherDeck = whole;
  otherDeck.replace(otherDeck.find("1000 "), 5, "1001 ");
  refused(saved, otherDeck, "is not the file that the restart data belong to", 2);
  refused(saved, busyDeck(2).text().replace(cards.text.find("START1"), 6, "START2"), "NSOLV = 4, the deck has 2", 2);
  folder.write("job.mec.log", "");
  refused(saved, whole, "cannot go on with job.mec.log", 3);
  std::filesystem::remove(folder.path() / "job.rst");
  folder.write("job.dts", whole);
  EXPECT_EQ(runJob(folder, "job.dts").status, 3);
}

}  // namespace
}  // namespace zema::test
