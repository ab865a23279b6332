// Decks and machines with faults: every run ends with a clear message, none crashes, hangs or claims a success.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <tuple>

#include "jobs/job_runner.h"
#include "jobs/solid_deck.h"

namespace zema::test {
namespace {

constexpr int inputFault = 2, fileFault = 3;

SolidDeck pulledCube() {
  SolidDeck deck = symmetricCube(MaterialCards::isotropic(1000.0, 0.3));
  for (const int n : {2, 4, 6, 8}) deck.steps[0].pointLoads[n] = {0.25, 0, 0};
  deck.steps[0].increments = {Increment{}, Increment{}};
  return deck;
}

TEST(CutDeck, EveryCutBeforeTheFirstIncrementCardIsAFaultThatNamesTheEnd) {
  const std::string text = pulledCube().text();
  const std::size_t lastCard = text.rfind('\n', text.size() - 2), firstCard = text.rfind('\n', lastCard - 1) + 1;
  for (std::size_t kept = 0; kept < text.size(); kept = text.find('\n', kept) + 1) {
    const JobFolder folder;
    const JobOutcome outcome = runDeck(folder, text.substr(0, kept));

    SCOPED_TRACE(testing::Message() << kept << " letters kept: " << outcome.console.substr(outcome.console.size() / 2));
    if (kept >= firstCard) {
      EXPECT_EQ(outcome.status, 0);  // a load step may end with its increment cards
      EXPECT_NE(outcome.console.find("the deck ends before increment"), std::string::npos);
      continue;
    }
    const bool noCurveCard = folder.read("job.mec.sal").find("No encuentro: CURV") != std::string::npos;
    EXPECT_TRUE(noCurveCard || outcome.status == inputFault);
    EXPECT_TRUE(noCurveCard || outcome.console.find("end of the file") != std::string::npos);
  }
}

TEST(WrongValue, ALetterInAnyNumericFieldIsAFaultThatNamesLineAndFinding) {
  const std::string text = pulledCube().text();
  int tried = 0;
  for (std::size_t at = 0, end = 0; at < text.size(); at = end + 1) {
    end = text.find_first_of(" \n", at);
    const bool numeric = end > at && (std::isdigit(static_cast<unsigned char>(text[at])) != 0 || text[at] == '-');
    if (!numeric || text.compare(text.rfind('\n', at) + 1, 5, "CURV,") == 0) continue;
    const JobFolder folder;
    const JobOutcome outcome = runDeck(folder, std::string(text).replace(at, end - at, "q7"));

    SCOPED_TRACE(outcome.console.substr(outcome.console.size() / 2));
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n');
    EXPECT_EQ(outcome.status, inputFault);
    EXPECT_NE(outcome.console.find("line " + std::to_string(line) + ","), std::string::npos);
    EXPECT_NE(outcome.console.find("found \"q7\""), std::string::npos);
    EXPECT_NE(folder.read("job.mec.sal").find("found \"q7\""), std::string::npos);
    ++tried;
  }
  EXPECT_GT(tried, 150);
}

/// Runs the cube after `change`: how it ends, and the console with the listing.
std::pair<int, std::string> runChanged(const std::function<void(SolidDeck&)>& change) {
  SolidDeck deck = pulledCube();
  change(deck);
  const JobFolder folder;
  const JobOutcome outcome = runDeck(folder, deck.text());
  return {outcome.status, outcome.console + folder.read("job.mec.sal")};
}

TEST(WrongModel, EachKindOfStopHasItsStatusAndItsWords) {
  // status 0: a stop by a check of the program is a normal end for the shell
  using Fault = std::tuple<std::function<void(SolidDeck&)>, int, std::vector<std::string>>;
  for (const auto& [change, status, words] :
       {Fault{[](auto& deck) { deck.elements[0].nodes[3] = 9; },
              0,
              {" *** DIAGNOSTICO DE CHECK2, ERROR 16", "  >>>> DETENIDO EN LA RUTINA CHECK2",
               " SIGUE LA LISTA DE TARJETAS POST-ERROR "}},
        Fault{[](auto& deck) { deck.steps[0].fixities[1].node = 99; }, 0, {"  >>>> DETENIDO EN LA RUTINA CHECK3"}},
        Fault{[](auto& deck) { deck.composites[0][0].components[0].first = 5; }, inputFault, {"LCPRO: found 5"}},
        Fault{[](auto& deck) { deck.materials[0].NTINT = Law::damageFriction; }, inputFault, {"has no routine"}},
        Fault{[](auto& deck) { deck.elements[0].nodes = {1, 3, 4, 2, 5, 7, 8, 6}; },
              1,  // a mirrored brick
              {" PROGRAMA DETENIDO EN LA SUBROUTINA JACOB3D\n            AREA CERO O NEGATIVA \n"
               "           ELEMENTO NUMER     1\n"}}}) {
    const auto [found, text] = runChanged(change);
    EXPECT_EQ(found, status) << words[0];
    for (const std::string& one : words) EXPECT_NE(text.find(one), std::string::npos) << one << text;
  }
}

TEST(WrongModel, ABodyWithoutSupportsNeverConverges) {
  for (const int NSOLV : {1, 2, 4, 5, 6}) {
    const auto [status, text] = runChanged([&](SolidDeck& deck) {
      deck.NSOLV = NSOLV;
      deck.steps[0].fixities = {{1, 0, {}}};
    });

    const bool pivot = text.find("  >>>> MATRIZ DEFINIDA NEGATIVA O PIVOT NULO ") != std::string::npos ||
                       text.find("The following ERROR was detected:  -10") != std::string::npos;
    const bool diverged = text.find(" >>>>  DETENIDO en CONVER POR FALTA DE CONVERGENCIA ") != std::string::npos;
    EXPECT_TRUE(diverged || (NSOLV % 2 == 0 && pivot)) << NSOLV << text;
    EXPECT_LT(status, 5);
  }
}

TEST(WrongModel, ABodyWithoutLoadsConvergesAtOnceWithAWarning) {
  const auto [status, text] = runChanged([](SolidDeck& deck) { deck.steps[0].pointLoads.clear(); });

  EXPECT_EQ(status, 0);
  EXPECT_NE(text.find("WARNING: TOTAL FORCES EQUAL            CERO :"), std::string::npos);
  EXPECT_EQ(text.find("AN ERROR HAS BEEN DETECTED"), std::string::npos);
}

TEST(FrequencyStudy, LeavesItsFilesWhereTheJobRuns) {
  const std::string counts = replaced(pulledCube().text(), " 4 0 0 1 0 0\n", " 4 0 0 1 0 1\n");  // KFREC
  const JobFolder folder;
  EXPECT_EQ(runDeck(folder, replaced(counts, "CURV,    0\n", "CURV,    0\n1 0.0 1 1\n")).status, 0);
  for (const char* name : {"frecuencias.dts", "Co.txt", "job.mec.38"}) EXPECT_TRUE(folder.has(name)) << name;
}

TEST(WrongFiles, EndTheRunWithAMessageButNotAClosedConsole) {
  struct Case {
    std::string deck, text;
    int status;
    std::string words;
    std::string limits{};
  };
  const JobFolder folder;
  std::filesystem::create_directory(folder.path() / "folder.dts");
  std::filesystem::create_symlink("/dev/full", folder.path() / "full.post.res");
  const std::string junk = std::string("MEC3D\n\0\x01\xff\xfe\n", 11) + std::string(100000, '\x80');
  const std::string cube = pulledCube().text();
  for (const auto& [deck, text, status, words, limits] :
       {Case{"nothing.dts", "", fileFault, "nothing.dts: No such file"},
        {"folder.dts", "", fileFault, "folder.dts: "},
        {"", "", fileFault, "FOR005"},
        {"empty.dts", "\n", inputFault, "end of the file"},
        {"junk.dts", junk, inputFault, "line 2"},
        {"odd.dts", "mec3d\n1 0 0 1 0\nSTART1\n'title'\n", 1, "--> UNKNOWN PROBLEM TYPE..........S:INPU1"},
        {"again.dts", replaced(cube, "START1", "start2"), 0, "the start word 'start2' is neither START1 nor START2"},
        {"full.dts", cube, fileFault, "full.post.res: No space left on device"},
        {"limited.dts", cube, fileFault, "File too large", "ulimit -f 8"},
        {"silent.dts", cube, 0, "", "exec >&-"}}) {  // a closed console is no reason to fail
    if (!text.empty()) folder.write(deck, text);

    const JobOutcome outcome = runJob(folder, deck, limits);

    EXPECT_EQ(outcome.status, status) << deck;
    EXPECT_NE(outcome.console.find(words), std::string::npos) << deck << outcome.console;
  }
  EXPECT_FALSE(folder.has("nothing.dts"));
  EXPECT_NE(folder.read("silent.post.res").find("STRESSES"), std::string::npos);
}

}  // namespace
}  // namespace zema::test
