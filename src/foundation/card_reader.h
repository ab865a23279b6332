// Reads the free-format cards of a deck, and names file, line, card and field in every fault.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "foundation/errors.h"

namespace zema {

/// The deck ended where an item was still expected.
class EndOfDeck : public InputFault {
  using InputFault::InputFault;
};

/// A piece of a text: its first byte, and the one behind it.
struct TextPiece {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// List-directed reading of a text file that is held in memory.
///
/// Items are separated by blanks, tabs, line ends or one comma. `3*0.5` repeats a value, `3*` and `,,` are null values
/// that leave the variable as it is, and a slash in place of an item does so for all that is left of the card. Texts
/// end at a blank, comma or line end unless they stand in '...' or "...", where a doubled delimiter stands for one.
/// Reading throws InputFault, or EndOfDeck when the text runs out.
class CardReader {
 public:
  /// Reads the whole file at once; throws FileFault when that fails. An empty file is legal.
  explicit CardReader(const std::string& fileName);

  /// A reader of text that is already in memory; name stands for the file name in messages.
  [[nodiscard]] static CardReader fromText(std::string name, std::string text);

  /// Starts a card; card is its name for messages, without the word card. What is left of the line where the card
  /// before ended is dropped; a card without items takes one line.
  void begin(std::string_view card);

  /// Read the next item into value; a null value leaves it as it is.
  void read(std::string_view field, int& value);
  void read(std::string_view field, double& value);
  void read(std::string_view field, std::string& value);

  /// The next item; a null value gives 0, 0.0 or an empty text.
  int integer(std::string_view field);
  double real(std::string_view field);
  std::string word(std::string_view field);

  /// The next item as a subscript; throws InputFault when it is outside low..high.
  int integer(std::string_view field, int low, int high);

  /// One whole line as a card of its own: its first `width` columns, without padding and line end.
  std::string line(std::string_view card, int width);

  /// Shows the lines after the current card to visit, `most` of them at most, and leaves them unread.
  void unreadLines(int most, const std::function<void(std::string_view)>& visit) const;

  /// Throws InputFault: `deck.dts, line 12, element card, field NNODE: found "x8", expected an integer`. A text found
  /// is shown in quotes, a number without.
  [[noreturn]] void fault(std::string_view field, std::string_view found, std::string_view expected) const;
  [[noreturn]] void fault(std::string_view field, int found, std::string_view expected) const;
  [[noreturn]] void fault(std::string_view field, double found, std::string_view expected) const;

  [[nodiscard]] const std::string& fileName() const { return fileName_; }
  /// Bytes of the whole text.
  [[nodiscard]] std::size_t size() const { return text_.size(); }
  /// The whole text, without a byte order mark.
  [[nodiscard]] std::string_view text() const { return text_; }
  /// The item read last; an empty piece when it was read for other fields too, by a repeat count.
  [[nodiscard]] TextPiece lastItem() const;
  /// Line of the item read last, from 1.
  [[nodiscard]] int lineNumber() const { return itemLine_; }

  /// Byte offset of the line after the current card, for the restart data.
  [[nodiscard]] long position() const;
  /// Goes on at an offset that position() gave for this text, or for one that ended in the line before; throws
  /// InputFault when no line begins there.
  void seek(long position);

 private:
  CardReader(std::string name, std::string text);

  [[nodiscard]] bool startItem(std::string_view field, std::string_view expected);
  [[nodiscard]] bool startRepeat(std::string_view field);
  [[nodiscard]] bool startRepeated();
  template <class Number, class Parse>
  void readNumber(std::string_view field, std::string_view expected, Number& value, Parse parse);
  [[nodiscard]] std::string quotedText(std::string_view field);
  void skipBlanks();
  void finishCard();
  [[nodiscard]] std::string_view token() const;
  [[nodiscard]] std::string_view plainText() const;
  [[nodiscard]] std::size_t lineEnd() const;
  [[noreturn]] void faultAtEnd(std::string_view field, std::string_view expected);
  [[nodiscard]] std::string message(std::string_view field, std::string_view found, std::string_view expected) const;

  std::string fileName_;
  std::string text_;
  std::string card_;
  std::size_t cursor_ = 0;       // where reading goes on
  int line_ = 1;                 // line of the cursor
  std::size_t itemStart_ = 0;    // where the last item began
  int itemLine_ = 1;             // line where the last item began
  bool cardOpen_ = false;        // the cursor stands in a line of a card that was begun
  bool slashed_ = false;         // a slash has ended the card's items
  bool commaAllowed_ = false;    // the separator after the last item has had no comma yet
  int repeats_ = 0;              // further reads that take the repeated item again
  std::size_t repeatedAt_ = 0;   // where the repeated item stands
  int repeatedLine_ = 1;         // and its line
  bool repeatedIsNull_ = false;  // a repeat count without an item
};

}  // namespace zema
