// Writes lines of fixed fields told by field codes such as "I9 3E12.6", and lines of free items.
#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ranges>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace zema {

/// A line layout, parsed once from its field codes; make it `static constexpr` where it is used.
///
/// Codes: In, In.m integer; Fw.d fixed-point real; Ew.d real with exponent; A, An text; nX blanks; / new line; "text"
/// or 'text' literal; n before a code or before ( ) repeats it; blanks or commas between. A code that is wrong is a
/// mistake of the program: it does not compile in a constexpr layout and throws std::logic_error in others.
class Layout {
 public:
  /// codes must outlive the layout (a string literal does).
  constexpr explicit Layout(std::string_view codes);
  template <class Text>
  requires std::same_as<Text, std::string>
  explicit Layout(Text&& temporary) = delete;

  /// Appends the items to out in their fields, without a line end. Items are integers, doubles, texts and contiguous
  /// ranges of them. A number that does not fit gives stars. When items are left at the end of the codes, a new line is
  /// begun and the codes go on from the last group of the top level, or from the start.
  template <class... Items>
  void append(std::string& out, const Items&... items) const;

 private:
  friend class LayoutParser;
  friend class LayoutRun;

  enum class Code : std::uint8_t { integer, fixed, exponent, text, blanks, newLine, literal, groupBegin, groupEnd };
  struct Step {
    Code code = Code::blanks;
    int repeat = 1;      // of a code or a group
    int width = 0;       // columns; 0 with text: its own length
    int digits = -1;     // decimals of a real, least digits of an integer
    int target = 0;      // of a group's end: the step after its begin
    std::size_t at = 0;  // of a literal: first character in codes_
  };

  static constexpr int mostSteps = 64;
  static constexpr int deepest = 6;  // groups inside each other

  std::string_view codes_;
  std::array<Step, mostSteps> steps_{};
  int count_ = 0;
  int revertTo_ = 0;  // step where the codes go on when items are left
  bool hasData_ = false;
};

/// One pass of items through a layout. Only Layout::append makes it.
class LayoutRun {
 public:
  LayoutRun(const Layout& layout, std::string& out) : layout_(layout), out_(out) {}

  void integer(long long value);
  void real(double value);
  void text(std::string_view value);
  void finish();

 private:
  const Layout::Step& nextField();
  bool advance();

  const Layout& layout_;
  std::string& out_;
  int step_ = 0;                                   // the step that is being done
  int timesDone_ = 0;                              // how often a repeated code has been done
  int pendingBlanks_ = 0;                          // of nX: written only when something follows in the line
  int depth_ = 0;                                  // open groups
  std::array<int, Layout::deepest> groupsDone_{};  // how often each of them has been done
};

/// Builds a line of free items: one blank, then the items in list order; numbers have minimum width and a blank
/// between, texts follow each other without separator. A free line without items is empty.
class FreeLine {
 public:
  template <class... Items>
  explicit FreeLine(const Items&... items) {
    add(items...);
  }

  /// Adds further items: integers, doubles (shortest form that reads back the same, always one token with a point),
  /// texts and contiguous ranges of them.
  template <class... Items>
  FreeLine& add(const Items&... items);

  /// The line so far, without a line end.
  [[nodiscard]] const std::string& text() const { return line_; }
  operator std::string_view() const { return line_; }

 private:
  void addInteger(long long value);
  void addReal(double value);
  void addText(std::string_view value);
  void separate(bool isText);

  std::string line_;
  bool endsWithText_ = false;
};

/// Appends the shortest form of value that reads back the same, with a point or an exponent: 0.1, 3.0, 1.0E+20, NaN,
/// -Infinity.
void appendShortest(std::string& out, double value);

}  // namespace zema
