// The deck reader: list-directed items, null values, and faults that name their place.
#include "foundation/card_reader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <vector>

namespace zema {
namespace {

CardReader deck(std::string text) {
  return CardReader::fromText("deck.dts", std::move(text));
}

/// The message of the InputFault that reading a value of type Value as field "X" of card "test" throws.
template <class Value>
std::string faultOf(std::string text) {
  CardReader reader = deck(std::move(text));
  reader.begin("test");
  Value value{};
  try {
    reader.read("X", value);
  } catch (const InputFault& fault) {
    return fault.what();
  }
  return "no fault";
}

TEST(CardReader, ReadsItemsOverSeveralLinesAndDropsTheRestOfTheLast) {
  CardReader reader = deck("1, 2\r\n\t3 rest of the line\n4 rest\n5");

  reader.begin("first");
  const std::vector<int> first{reader.integer("A"), reader.integer("B"), reader.integer("C")};
  reader.begin("second");
  const int second = reader.integer("A");
  reader.begin("third");
  const int third = reader.integer("A");

  EXPECT_EQ(first, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(second, 4);
  EXPECT_EQ(third, 5);
}

TEST(CardReader, CardWithoutItemsTakesOneLine) {
  CardReader reader = deck("skipped\n7\n");

  reader.begin("empty");
  reader.begin("next");

  EXPECT_EQ(reader.integer("A"), 7);
}

TEST(CardReader, ReadsEveryFormOfReal) {
  const std::vector<std::pair<std::string, double>> forms{
      {"1", 1.0},      {"1.", 1.0},           {".5", 0.5},     {"-1.5E3", -1500.0}, {"+2", 2.0},
      {"1D3", 1000.0}, {"1d-3", 1e-3},        {"1+3", 1000.0}, {"2.5-1", .25},      {"-.5e+1", -5.0},
      {"1E-400", 0.0}, {"1.7D+308", 1.7e308}, {"1q2", 100.0},  {"007", 7.0},        {"-0", -0.0},
      {"0.1", 0.1},    {"4.9E-324", 4.9e-324}};
  for (const auto& [text, expected] : forms) {
    CardReader reader = deck(text);
    reader.begin("test");

    EXPECT_EQ(reader.real("X"), expected) << text;
  }
}

TEST(CardReader, RefusesWhatIsNoReal) {
  for (const std::string text :
       {".", "-", "+-1", "1E", "1D", "1e+", "1dd3", "1.2.3", "Inf", "NaN", "-inf", "0x1p3", "1E3.0", "'1'", "1+-3"})
    EXPECT_EQ(faultOf<double>(text), "deck.dts, line 1, test card, field X: found \"" + text + "\", expected a real");
  EXPECT_EQ(faultOf<double>("1D400"),
            "deck.dts, line 1, test card, field X: found \"1D400\", expected a real up to 1.79E+308");
}

TEST(CardReader, RefusesWhatIsNoInteger) {
  for (const std::string text : {"1.0", "x8", "1e3", "--1", "+-1", "0x10", "12a"})
    EXPECT_EQ(faultOf<int>("\n\n" + text),
              "deck.dts, line 3, test card, field X: found \"" + text + "\", expected an integer");
  EXPECT_NE(faultOf<int>("2147483648").find("expected an integer from -2147483648 to 2147483647"), std::string::npos);
  EXPECT_EQ(faultOf<int>("-2147483648"), "no fault");
}

TEST(CardReader, NullValuesKeepTheVariable) {
  CardReader reader = deck(",2,,\n4 , , 6");
  std::vector<int> values(6, -1);

  reader.begin("test");
  for (int& value : values) reader.read("A", value);

  EXPECT_EQ(values, (std::vector<int>{-1, 2, -1, 4, -1, 6}));
}

TEST(CardReader, SlashEndsTheCard) {
  CardReader reader = deck("1 2/ 3 4\n5\n");
  std::vector<int> values(4, -1);

  reader.begin("test");
  for (int& value : values) reader.read("A", value);
  reader.begin("next");

  EXPECT_EQ(values, (std::vector<int>{1, 2, -1, -1}));
  EXPECT_EQ(reader.integer("A"), 5);
}

TEST(CardReader, RepeatCountsRunOnOverReads) {
  CardReader reader = deck("2*1.5,2*,3*'a\n b' 9\n");
  std::vector<double> reals(4, -1.0);
  std::vector<std::string> texts(3);

  reader.begin("test");
  for (double& value : reals) reader.read("A", value);
  for (std::string& value : texts) reader.read("B", value);

  EXPECT_EQ(reals, (std::vector<double>{1.5, 1.5, -1.0, -1.0}));
  EXPECT_EQ(texts, (std::vector<std::string>{"a b", "a b", "a b"}));
  EXPECT_EQ(reader.integer("C"), 9);
  EXPECT_EQ(reader.lineNumber(), 2);
}

TEST(CardReader, RepeatCountsEndWithTheCard) {
  CardReader reader = deck("5*1\n2\n");

  reader.begin("first");
  EXPECT_EQ(reader.integer("A"), 1);
  reader.begin("second");

  EXPECT_EQ(reader.integer("A"), 2);
  EXPECT_NE(faultOf<int>("0*5").find("found \"0*5\", expected a repeat count"), std::string::npos);
  EXPECT_NE(faultOf<int>("99999999999*5").find("expected a repeat count"), std::string::npos);
}

TEST(CardReader, TextsEndAtSeparatorsOrStandInQuotes) {
  CardReader reader = deck("MEC3D,'two words, 1/2' \"it's\" 'it''s' '' a'b 3D x/y");
  std::vector<std::string> texts;

  reader.begin("test");
  for (int i = 0; i < 8; ++i) texts.push_back(reader.word("A"));

  EXPECT_EQ(texts, (std::vector<std::string>{"MEC3D", "two words, 1/2", "it's", "it's", "", "a'b", "3D", "x/y"}));
}

TEST(CardReader, RefusesBrokenTexts) {
  EXPECT_EQ(faultOf<std::string>("\n'no end\n1 2"),
            "deck.dts, line 2, test card, field X: found \"'no end\\x0A1 2\", expected a closing quote");
  EXPECT_EQ(faultOf<std::string>("'ab'c d"),
            "deck.dts, line 1, test card, field X: found \"'ab'\", expected a separator after the closing quote");
  EXPECT_EQ(faultOf<std::string>(std::string("a\0b", 3)),
            "deck.dts, line 1, test card, field X: found \"a\\x00b\", expected a text without control characters");
  EXPECT_EQ(faultOf<int>(std::string("\0\x7F", 2)),
            "deck.dts, line 1, test card, field X: found \"\\x00\\x7F\", expected an integer");
}

TEST(CardReader, LongJunkIsCutInTheMessage) {
  const std::string message = faultOf<double>(std::string(5'000'000, 'z'));

  EXPECT_EQ(message,
            "deck.dts, line 1, test card, field X: found \"" + std::string(60, 'z') + "...\", expected a real");
}

TEST(CardReader, EndOfTheFileIsAFaultOfItsOwn) {
  CardReader reader = deck("1\n2\n");

  reader.begin("short");
  reader.integer("A", 1, 1);
  reader.integer("B", 1, 2);

  try {
    reader.real("C");
    FAIL();
  } catch (const EndOfDeck& fault) {
    EXPECT_STREQ(fault.what(), "deck.dts, line 2, short card, field C: found the end of the file, expected a real");
  }
  EXPECT_EQ(faultOf<int>(""), "deck.dts, line 1, test card, field X: found the end of the file, expected an integer");
}

TEST(CardReader, SubscriptsAreTested) {
  CardReader reader = deck("8 12");

  reader.begin("element");
  EXPECT_EQ(reader.integer("NNODE", 1, 8), 8);

  try {
    reader.integer("NNODE", 1, 8);
    FAIL();
  } catch (const InputFault& fault) {
    EXPECT_STREQ(fault.what(),
                 "deck.dts, line 1, element card, field NNODE: found 12, expected an integer from 1 to 8");
  }
}

TEST(CardReader, LinesAreReadAsText) {
  CardReader reader = deck("1 rest\n  A title, 'with' all / of it\r\n\nlast");

  reader.begin("first");
  reader.integer("A", 1, 1);

  EXPECT_EQ(reader.line("title", 64), "  A title, 'with' all / of it");
  EXPECT_EQ(reader.lineNumber(), 2);
  EXPECT_EQ(reader.line("empty", 64), "");
  EXPECT_EQ(reader.line("cut", 3), "las");
  EXPECT_THROW(reader.line("none", 64), EndOfDeck);
}

TEST(CardReader, ShowsUnreadLinesAndLeavesThem) {
  CardReader reader = deck("1 2\n3\r\n\n4\n5\n");
  std::vector<std::string> lines;

  reader.begin("first");
  reader.integer("A", 1, 1);
  reader.unreadLines(3, [&lines](std::string_view line) { lines.emplace_back(line); });
  reader.begin("second");

  EXPECT_EQ(lines, (std::vector<std::string>{"3", "", "4"}));
  EXPECT_EQ(reader.integer("A"), 3);
}

TEST(CardReader, GoesOnAtASavedPosition) {
  const std::string text = "1 2\n3 4\n5 6\n";
  CardReader first = deck(text);
  first.begin("one");
  first.integer("A", 1, 1);
  first.begin("two");
  first.integer("A", 3, 3);
  const long position = first.position();
  CardReader second = deck(text);

  second.seek(position);
  second.begin("three");

  EXPECT_EQ(position, 8);
  EXPECT_EQ(second.integer("A"), 5);
  EXPECT_EQ(second.lineNumber(), 3);
  EXPECT_THROW(second.seek(13), InputFault);
}

TEST(CardReader, ReadsAFileAndTellsWhyItCannot) {
  const std::string path = testing::TempDir() + "card_reader_test.dts";
  std::ofstream(path) << "\xEF\xBB\xBF"
                      << "42\n";

  CardReader reader(path);
  reader.begin("first");

  EXPECT_EQ(reader.integer("A"), 42);
  EXPECT_EQ(reader.fileName(), path);
  try {
    CardReader missing("/no/such/deck.dts");
    FAIL();
  } catch (const FileFault& fault) {
    EXPECT_STREQ(fault.what(), "cannot read /no/such/deck.dts: No such file or directory");
  }
  EXPECT_THROW(CardReader{testing::TempDir()}, FileFault);
}

}  // namespace
}  // namespace zema
