// The deck reader: list-directed items, null values, and faults that name their place.
#include "foundation/card_reader.h"

#include <gmock/gmock.h>

#include <vector>

#include "jobs/job_runner.h"

namespace zema {
namespace {

using testing::ElementsAre, testing::HasSubstr, testing::ThrowsMessage;

CardReader deck(std::string text) {
  return CardReader::fromText("deck.dts", std::move(text));
}

/// Reads a card of `count` items into variables that hold `before`.
template <class Value = int>
std::vector<Value> card(CardReader& reader, int count, const Value& before = -1) {
  std::vector<Value> values(static_cast<std::size_t>(count), before);
  reader.begin("test");
  for (Value& value : values) reader.read("X", value);
  return values;
}

/// Reads the first item of a text as field X of a card.
template <class Value>
auto reading(const std::string& text) {
  return [text] {
    CardReader reader = deck(text);
    card<Value>(reader, 1, {});
  };
}

auto refuses(const std::string& found, const std::string& expected, const std::string& line = "1") {
  return ThrowsMessage<InputFault>("deck.dts, line " + line + ", test card, field X: found \"" + found +
                                   "\", expected " + expected);
}

TEST(CardReader, ACardGoesOverAsManyLinesAsItsItemsNeedAndDropsTheRestOfTheLast) {
  CardReader reader = deck("1, 2\r\n\t3 rest\n4 rest\na card without items\n5 6/ 7\n8");

  EXPECT_THAT(card(reader, 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(card(reader, 1), ElementsAre(4));
  EXPECT_THAT(card(reader, 0), ElementsAre());
  EXPECT_THAT(card(reader, 4), ElementsAre(5, 6, -1, -1));  // a slash ends a card
  EXPECT_THAT(card(reader, 1), ElementsAre(8));
}

TEST(CardReader, NullValuesAndRepeatCounts) {
  CardReader nulls = deck(",2,,\n4 , , 6");
  EXPECT_THAT(card(nulls, 6), ElementsAre(-1, 2, -1, 4, -1, 6));

  CardReader repeats = deck("2*1.5,2*\n3*'a\n b'\n5*1\n2\n");
  EXPECT_THAT(card(repeats, 4, -1.0), ElementsAre(1.5, 1.5, -1.0, -1.0));
  EXPECT_THAT(card<std::string>(repeats, 3, ""), ElementsAre("a b", "a b", "a b"));
  EXPECT_THAT(card(repeats, 1), ElementsAre(1));
  EXPECT_EQ(repeats.lineNumber(), 4);
  EXPECT_THAT(card(repeats, 1), ElementsAre(2));  // they end with the card
  for (const std::string text : {"0*5", "99999999999*5"})
    EXPECT_THAT(reading<int>(text), refuses(text, "a repeat count from 1 to 2147483647"));
}

TEST(CardReader, ReadsEveryFormOfReal) {
  CardReader reader = deck("1 1. .5 -1.5E3 +2 1D3 1d-3 1+3 2.5-1 -.5e+1 1E-400 1.7D+308 1q2 007 -0 0.1 4.9E-324");
  EXPECT_THAT(card(reader, 17, -1.0), ElementsAre(1.0, 1.0, 0.5, -1500.0, 2.0, 1000.0, 1e-3, 1000.0, 0.25, -5.0, 0.0,
                                                  1.7e308, 100.0, 7.0, 0.0, 0.1, 4.9e-324));
}

TEST(CardReader, RefusesWhatIsNoNumber) {
  for (const std::string text :
       {".", "-", "+-1", "1E", "1D", "1e+", "1dd3", "1.2.3", "Inf", "NaN", "-inf", "0x1p3", "1E3.0", "'1'", "1+-3"})
    EXPECT_THAT(reading<double>(text), refuses(text, "a real"));
  for (const std::string text : {"1.0", "x8", "1e3", "--1", "+-1", "0x10", "12a"})
    EXPECT_THAT(reading<int>("\n\n" + text), refuses(text, "an integer", "3"));
  EXPECT_THAT(reading<double>("1D400"), refuses("1D400", "a real up to 1.79E+308"));
  EXPECT_THAT(reading<int>("2147483648"), refuses("2147483648", "an integer from -2147483648 to 2147483647"));
  EXPECT_NO_THROW(reading<int>("-2147483648")());
  EXPECT_THAT(reading<int>({"\0\x7F", 2}), refuses("\\x00\\x7F", "an integer"));
  EXPECT_THAT(reading<double>(std::string(500'000, 'z')), refuses(std::string(60, 'z') + "...", "a real"));
}

TEST(CardReader, TextsEndAtSeparatorsOrStandInQuotes) {
  CardReader reader = deck("MEC3D,'two words, 1/2' \"it's\" 'it''s' '' a'b 3D x/y");
  EXPECT_THAT(card<std::string>(reader, 8, "-"),
              ElementsAre("MEC3D", "two words, 1/2", "it's", "it's", "", "a'b", "3D", "x/y"));
  EXPECT_THAT(reading<std::string>("\n'no end\n1 2"), refuses("'no end\\x0A1 2", "a closing quote", "2"));
  EXPECT_THAT(reading<std::string>("'ab'c d"), refuses("'ab'", "a separator after the closing quote"));
  EXPECT_THAT(reading<std::string>({"a\0b", 3}), refuses("a\\x00b", "a text without control characters"));
}

TEST(CardReader, SubscriptsAndTheEndOfTheFileAreTested) {
  CardReader reader = deck("8 12");
  reader.begin("element");
  EXPECT_EQ(reader.integer("NNODE", 1, 8), 8);
  EXPECT_THAT([&] { reader.integer("NNODE", 1, 8); },
              ThrowsMessage<InputFault>(HasSubstr("field NNODE: found 12, expected an integer from 1 to 8")));
  EXPECT_THAT(reading<int>("\n\n"),
              ThrowsMessage<EndOfDeck>(HasSubstr("line 2, test card, field X: found the end of the file, expected")));
}

TEST(CardReader, LinesAreReadAsTextOrShownAndGoneBackTo) {
  CardReader reader = deck("1 rest\n  A title, 'with' all / of it\r\n\nlast");
  std::vector<std::string> shown;
  card(reader, 1);
  reader.unreadLines(2, [&shown](std::string_view line) { shown.emplace_back(line); });
  EXPECT_THAT(shown, ElementsAre("  A title, 'with' all / of it", ""));
  EXPECT_EQ(reader.position(), 7);

  EXPECT_EQ(reader.line("title", 64), "  A title, 'with' all / of it");
  EXPECT_EQ(reader.line("empty", 64), "");
  EXPECT_EQ(reader.line("cut", 3), "las");
  EXPECT_EQ(reader.lineNumber(), 4);
  EXPECT_THROW(reader.line("none", 64), EndOfDeck);

  reader.seek(7);
  EXPECT_EQ(reader.line("title", 3), "  A");
  EXPECT_EQ(reader.lineNumber(), 2);
  EXPECT_THROW(reader.seek(100), InputFault);
}

TEST(CardReader, ReadsAFileAndTellsWhyItCannot) {
  const test::JobFolder folder;
  folder.write("a.dts", "\xEF\xBB\xBF 42\n");

  CardReader reader(folder.path() / "a.dts");

  EXPECT_THAT(card(reader, 1), ElementsAre(42));
  EXPECT_THAT([] { CardReader("/no/such.dts"); },
              ThrowsMessage<FileFault>("cannot read /no/such.dts: No such file or directory"));
  EXPECT_THROW(CardReader(folder.path()), FileFault);
}

}  // namespace
}  // namespace zema
