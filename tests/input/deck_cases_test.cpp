// Cards of a section, how reading them ends, and the lines that they leave: the cases of tests/data/deck_cases.txt.
#include <fstream>
#include <functional>
#include <sstream>

#include "input/curve_cards.h"
#include "input/fixity_cards.h"
#include "input/increment_cards.h"
#include "input/input_fixture.h"
#include "input/load_cards.h"
#include "input/mesh_cards.h"

namespace zema::test {
namespace {

/// "== section: title" with values of the control record behind the section, cards, "-- end", lines of the listing or
/// the frequency records.
struct DeckCase {
  std::string section, title, cards, end, lines;

  friend std::ostream& operator<<(std::ostream& out, const DeckCase& one) { return out << one.title; }
};

std::vector<DeckCase> deckCases() {
  std::ifstream in(ZEMA_SOURCE "/tests/data/deck_cases.txt");
  std::vector<DeckCase> all;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("== "))
      all.push_back({line.substr(3, line.find(": ") - 3), line.substr(line.find(": ") + 2), "", "", ""});
    else if (line.starts_with("-- "))
      all.back().end = line.substr(3);
    else if (all.back().end.empty())
      all.back().cards += line + "\n";
    else
      all.back().lines += "\n" + line;
  }
  return all;
}

class DeckCases : public InputTest, public testing::WithParamInterface<DeckCase> {
 protected:
  template <class Section>
  void readBy(Section section, const std::string& cards) {
    deck(cards);
    static_cast<void>(section(job, model, kernel));
  }
  void read(const std::string& cards) override {
    std::istringstream words(GetParam().section);
    std::string section, name;
    words >> section;
    for (int value = 0; words >> name >> value;) model.control.*controls.at(name) = value;
    if (model.control.KFREC == 1) job.channels.open(channel::frequencies);
    sections.at(section)(cards);
  }

  const std::map<std::string, int ControlRecord::*> controls{{"KFREC", &ControlRecord::KFREC},
                                                             {"LARGE", &ControlRecord::LARGE},
                                                             {"NMATS", &ControlRecord::NMATS},
                                                             {"NSOLV", &ControlRecord::NSOLV}};
  const std::map<std::string, std::function<void(const std::string&)>> sections{
      {"model", [&](auto& cards) { readBy(INPU, cards); }},
      {"elements", [&](auto& cards) { readBy(INPU, ModelCards{.elements = cards}); }},
      {"composites", [&](auto& cards) { readBy(INPU, ModelCards{.composites = cards}); }},
      {"nodes", [&](auto& cards) { readBy(INPU, ModelCards{.nodes = cards}); }},
      {"materials", [&](auto& cards) { readBy(INPU, ModelCards{.materials = cards}); }},
      {"curves", [&](auto& cards) { readBy(INPCU, cards); }},
      {"loads", [&](auto& cards) { readBy(LOADPS, cards); }},
      {"fixities", [&](auto& cards) { readBy(INPU3, cards); }},
      {"increment", [&](auto& cards) {
         readBy(readIncrementCard, cards);
         echoIncrement(job, model);
       }}};
};

TEST_P(DeckCases, EndAndLines) {
  EXPECT_THAT(endOf(GetParam().cards), testing::HasSubstr(GetParam().end));
  const std::string all = "\n" + listing() + written(channel::frequencies);
  EXPECT_TRUE(all.find(GetParam().lines) != std::string::npos) << "expected:" << GetParam().lines << "\nfound:" << all;
}

INSTANTIATE_TEST_SUITE_P(Deck, DeckCases, testing::ValuesIn(deckCases()), [](const auto& test) {
  std::string name;
  for (const char c : test.param.title) name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
  return name;
});

}  // namespace
}  // namespace zema::test
