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

/// One step of a layout: a field, blanks, a new line, a literal, or the begin or end of a group.
struct LayoutStep {
  enum class Code : std::uint8_t { integer, fixed, exponent, text, blanks, newLine, literal, groupBegin, groupEnd };

  Code code = Code::blanks;
  int repeat = 1;  // of a field, a new line, a literal or a group
  int width = 0;   // columns; 0 with text: its own length
  int digits = 0;  // decimals of a real, least digits of an integer
  int target = 0;  // of a group's end: the step after its begin
  int at = 0;      // of a literal: its first character in the codes

  [[nodiscard]] constexpr bool isField() const { return code <= Code::text; }
};

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
  /// begun and the codes go on from the last group of the top level, or from the start. Blanks of nX at the end of a
  /// line are not written. An item that does not suit its field (an integer in a real field, for one) is a mistake of
  /// the program.
  template <class... Items>
  void append(std::string& out, const Items&... items) const;

 private:
  friend class LayoutParser;
  friend class LayoutRun;

  static constexpr int mostSteps = 64;
  static constexpr int deepest = 6;  // groups inside each other

  std::string_view codes_;
  std::array<LayoutStep, mostSteps> steps_{};
  int count_ = 0;
  int revertTo_ = 0;             // step where the codes go on when items are left
  bool revertHasField_ = false;  // whether a field stands there or later
};

/// Parses the codes of a layout into its steps.
class LayoutParser {
 public:
  constexpr explicit LayoutParser(Layout& layout) : layout_(layout), codes_(layout.codes_) {}

  constexpr void parse() {
    for (skipSeparators(); at_ < codes_.size(); skipSeparators()) parseCode();
    check(depth_ == 0, "a group of a layout is not closed");
    for (int i = layout_.revertTo_; i < layout_.count_; ++i)
      layout_.revertHasField_ |= layout_.steps_[static_cast<std::size_t>(i)].isField();
  }

 private:
  using Code = LayoutStep::Code;

  static constexpr int widest = 400;
  static constexpr int mostDigits = 60;

  static constexpr void check(bool right, const char* mistake) {
    if (!right) throw std::logic_error(mistake);
  }
  [[nodiscard]] constexpr bool atDigit() const {
    return at_ < codes_.size() && codes_[at_] >= '0' && codes_[at_] <= '9';
  }

  constexpr void skipSeparators() {
    while (at_ < codes_.size() && (codes_[at_] == ' ' || codes_[at_] == ',')) ++at_;
  }

  constexpr int number() {
    check(atDigit(), "a number is missing in a layout");
    int value = 0;
    for (; atDigit(); ++at_) {
      value = 10 * value + (codes_[at_] - '0');
      check(value <= 10000, "a number is too large in a layout");
    }
    return value;
  }

  constexpr LayoutStep& add(Code code, int repeat) {
    check(layout_.count_ < Layout::mostSteps, "a layout has too many codes");
    LayoutStep& step = layout_.steps_[static_cast<std::size_t>(layout_.count_++)];
    step.code = code;
    step.repeat = repeat;
    return step;
  }

  constexpr void parseCode() {
    const int repeat = atDigit() ? number() : 1;
    check(repeat > 0 && at_ < codes_.size(), "a repeat count of a layout stands alone or is 0");
    const char code = codes_[at_++];
    switch (code) {
      case 'I':
        return integerField(add(Code::integer, repeat));
      case 'F':
        return realField(add(Code::fixed, repeat), 0);
      case 'E':
        return realField(add(Code::exponent, repeat), 1);
      case 'A':
        add(Code::text, repeat).width = atDigit() ? fieldWidth() : 0;
        return;
      case 'X':
        add(Code::blanks, 1).width = repeat;
        return;
      case '/':
        add(Code::newLine, repeat);
        return;
      case '"':
      case '\'':
        return literal(add(Code::literal, repeat), code);
      case '(':
        return beginGroup(repeat);
      case ')':
        return endGroup();
      default:
        check(false, "a layout holds an unknown code");
    }
  }

  constexpr int fieldWidth() {
    const int width = number();
    check(width > 0 && width <= widest, "a field of a layout has width 0 or is too wide");
    return width;
  }

  constexpr void integerField(LayoutStep& step) {
    step.width = fieldWidth();
    step.digits = 1;
    if (at_ >= codes_.size() || codes_[at_] != '.') return;
    ++at_;
    step.digits = number();
    check(step.digits <= step.width, "an integer field of a layout has more digits than columns");
  }

  constexpr void realField(LayoutStep& step, int leastDigits) {
    step.width = fieldWidth();
    check(at_ < codes_.size() && codes_[at_] == '.', "a real field of a layout has no decimals");
    ++at_;
    step.digits = number();
    check(step.digits >= leastDigits && step.digits <= mostDigits,
          "a real field of a layout has a wrong count of decimals");
  }

  constexpr void literal(LayoutStep& step, char delimiter) {
    const std::size_t end = codes_.find(delimiter, at_);
    check(end != std::string_view::npos, "a literal of a layout is not closed");
    step.at = static_cast<int>(at_);
    step.width = static_cast<int>(end - at_);
    at_ = end + 1;
  }

  constexpr void beginGroup(int repeat) {
    check(depth_ < Layout::deepest, "the groups of a layout are too deep");
    if (depth_ == 0) layout_.revertTo_ = layout_.count_;
    begins_[static_cast<std::size_t>(depth_++)] = layout_.count_;
    add(Code::groupBegin, repeat);
  }

  constexpr void endGroup() {
    check(depth_ > 0, "a group of a layout is closed twice");
    const int begin = begins_[static_cast<std::size_t>(--depth_)];
    add(Code::groupEnd, layout_.steps_[static_cast<std::size_t>(begin)].repeat).target = begin + 1;
  }

  Layout& layout_;
  std::string_view codes_;
  std::size_t at_ = 0;
  int depth_ = 0;
  std::array<int, Layout::deepest> begins_{};
};

constexpr Layout::Layout(std::string_view codes) : codes_(codes) {
  LayoutParser(*this).parse();
}

/// One pass of items through a layout; Layout::append makes it.
class LayoutRun {
 public:
  LayoutRun(const Layout& layout, std::string& out) : layout_(layout), out_(out) {}

  template <class Item>
  void put(const Item& item) {
    if constexpr (std::integral<Item>) {
      static_assert(!std::same_as<Item, bool> && !std::same_as<Item, char>, "write a number or a text");
      putInteger(static_cast<long long>(item));
    } else if constexpr (std::same_as<Item, double>) {
      putReal(item);
    } else if constexpr (std::convertible_to<const Item&, std::string_view>) {
      putText(item);
    } else {
      static_assert(std::ranges::contiguous_range<const Item>,
                    "an item is an integer, a double, a text or a range of them");
      for (const auto& one : item) put(one);
    }
  }

  /// Writes what stands between the last item and the next field.
  void finish() { advance(); }

 private:
  void putInteger(long long value);
  void putReal(double value);
  void putText(std::string_view value);
  [[nodiscard]] const LayoutStep& nextField();
  bool advance();
  void writeBlanks();

  const Layout& layout_;
  std::string& out_;
  int step_ = 0;                                   // the step that is being done
  int timesDone_ = 0;                              // how often the field at this step has been filled
  std::size_t pendingBlanks_ = 0;                  // of nX: written only when something follows in the line
  int depth_ = 0;                                  // open groups
  std::array<int, Layout::deepest> groupsDone_{};  // how often each of them has been done
};

template <class... Items>
void Layout::append(std::string& out, const Items&... items) const {
  LayoutRun run(*this, out);
  (run.put(items), ...);
  run.finish();
}

/// Builds a line of free items: one blank, then the items in list order; numbers have minimum width and a blank around,
/// texts follow each other without separator. A free line without items is empty.
class FreeLine {
 public:
  template <class... Items>
  explicit FreeLine(const Items&... items) {
    (add(items), ...);
  }

  /// Adds an integer, a double (see appendShortest), a text or a contiguous range of them.
  template <class Item>
  FreeLine& add(const Item& item) {
    if constexpr (std::integral<Item>) {
      static_assert(!std::same_as<Item, bool> && !std::same_as<Item, char>, "write a number or a text");
      addInteger(static_cast<long long>(item));
    } else if constexpr (std::same_as<Item, double>) {
      addReal(item);
    } else if constexpr (std::convertible_to<const Item&, std::string_view>) {
      addText(item);
    } else {
      static_assert(std::ranges::contiguous_range<const Item>,
                    "an item is an integer, a double, a text or a range of them");
      for (const auto& one : item) add(one);
    }
    return *this;
  }

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

/// Appends the shortest form of value that reads back the same, as one token with a point: 0.1, 3.0, 1.0E+20, NaN,
/// -Infinity.
void appendShortest(std::string& out, double value);

}  // namespace zema
