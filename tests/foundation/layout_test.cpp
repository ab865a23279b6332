// Fixed fields and free lines. The expected fields were written by a Fortran compiler from the same codes and values.
#include "foundation/layout.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <vector>

#include "jobs/job_runner.h"

namespace zema {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

template <class... Items>
std::string laidOut(std::string_view codes, const Items&... items) {
  std::string out;
  Layout(codes).append(out, items...);
  return out;
}

TEST(Layout, IntegersAreRightJustifiedOrStars) {
  EXPECT_EQ(laidOut("I3 I3.2 I2 I1 I3.0 I4.3 I4.4 I5.4", -5, 5, -5, -5, 0, -5, -5, -5), " -5 05-5*   -005****-0005");
  constexpr auto least = std::numeric_limits<long long>::min();
  EXPECT_EQ(laidOut("I20 I19", least, least), "-9223372036854775808*******************");
}

TEST(Layout, RealsHaveTheFieldsOfTheirTable) {
  std::istringstream table(test::dataFile("fields.txt"));
  std::string codes;
  for (std::string line; std::getline(table, line);) {
    const std::size_t colon = line.find(": ");
    if (line.starts_with("== ")) {
      codes = line.substr(3);
    } else {
      EXPECT_EQ(laidOut(codes, std::vector(8, std::stod(line))), line.substr(colon + 2)) << codes << line;
    }
  }
  EXPECT_EQ(laidOut("F25.15 E12.6 E12.6", 0.1, 0.99999996, 9.99999996e98),
            "        0.1000000000000000.100000E+010.100000+100");
}

TEST(Layout, TextsLiteralsAndBlanks) {
  EXPECT_EQ(laidOut("A3 '|' A5 '|' A", "abcd", std::string("abc"), std::string_view("x  ")), "abc|  abc|x  ");
  EXPECT_EQ(laidOut("\"x\" I3 'y' I3 'z'", 1), "x  1y");  // up to the next field
  EXPECT_EQ(laidOut("// 'a' 2/ 3'b' 2('c' X) I3", 1), "\n\na\n\nbbbc c   1");
  EXPECT_EQ(laidOut("A 2X A 3X", "ab", "c"), "ab  c");  // no blanks at the end of a line
  EXPECT_EQ(laidOut("A 5X / A", "ab", "c"), "ab\nc");
}

TEST(Layout, CodesGoOnFromTheLastGroupAndRangesAreWrittenInOrder) {
  const std::vector<int> items{1, 2, 3, 4, 5, 6, 7};
  EXPECT_EQ(laidOut("I2", items), " 1\n 2\n 3\n 4\n 5\n 6\n 7");
  EXPECT_EQ(laidOut("I2 2(I3 'g') I4", items), " 1  2g  3g   4\n  5g  6g   7");
  EXPECT_EQ(laidOut("(I2 2('(' I2 ')')) ';'", items), " 1( 2)( 3);\n 4( 5)( 6);\n 7(");
  const std::array<std::array<double, 2>, 2> rows{{{1.0, 2.0}, {3.0, 4.0}}};
  EXPECT_EQ(laidOut("I2 4F4.1 2A2", std::size_t{7}, rows, std::vector<std::string>{"a", "b"}),
            " 7 1.0 2.0 3.0 4.0 a b");
}

TEST(Layout, WrongCodesAreRefused) {
  for (const char* codes : {"I", "I0", "F8", "E8.0", "Q3", "2", "(I3", "I3)", "'open", "I3.4", "0I3", "F500.1"})
    EXPECT_THROW(static_cast<void>(Layout(codes)), std::logic_error) << codes;
}

TEST(FreeLine, SeparatesNumbersJoinsTextsAndReadsBackTheSame) {
  EXPECT_EQ(FreeLine("Result ", "\"STRESS\" ", 3, 0.5, "Scalar").text(), " Result \"STRESS\"  3 0.5 Scalar");
  EXPECT_EQ(FreeLine(std::vector<int>{1, -2, 3}).text(), " 1 -2 3");
  EXPECT_EQ(FreeLine(1.0, -0.1, 1e20, 1.5e-7, 0.1 + 0.2, 0.0, notANumber, -infinity).text(),
            " 1.0 -0.1 1.0E+20 1.5E-07 0.30000000000000004 0.0 NaN -Infinity");
}

}  // namespace
}  // namespace zema
