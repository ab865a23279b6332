// Reads the free-format cards of a deck: items, repeat counts, null values, slashes, quoted texts.
#include "foundation/card_reader.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

#include "foundation/layout.h"

namespace zema {
namespace {

enum CharacterKind : unsigned char { blank = 1, itemEnd = 2, control = 4 };

constexpr std::array<unsigned char, 256> characterKinds = [] {
  std::array<unsigned char, 256> kinds{};
  for (std::size_t c = 0; c < 0x20; ++c) kinds[c] = control;
  kinds[0x7F] = control;
  for (const char c : {' ', '\t', '\r', '\n'}) kinds[static_cast<unsigned char>(c)] = blank | itemEnd;
  for (const char c : {',', '/'}) kinds[static_cast<unsigned char>(c)] = itemEnd;
  return kinds;
}();

bool is(CharacterKind kind, char c) {
  return (characterKinds[static_cast<unsigned char>(c)] & kind) != 0;
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isControl(char c) {
  return is(control, c);
}

std::string readWholeFile(const std::string& fileName) {
  const auto fail = [&fileName] { throw FileFault("cannot read " + fileName + ": " + std::strerror(errno)); };
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(fileName.c_str(), "rb"), std::fclose);
  if (!file) fail();
  std::string text;
  constexpr std::size_t block = std::size_t{1} << 20;
  for (std::size_t got = block; got == block;) {
    const std::size_t size = text.size();
    text.resize(size + block);
    got = std::fread(text.data() + size, 1, block, file.get());
    text.resize(size + got);
  }
  if (std::ferror(file.get()) != 0) fail();
  return text;
}

/// Text as a message shows it: in quotes, control characters as \xNN, cut when long.
std::string quoted(std::string_view text) {
  constexpr std::size_t longest = 60;
  std::string shown = "\"";
  for (const char c : text.substr(0, longest)) {
    if (!isControl(c) && c != '\n' && c != '\r') {
      shown += c;
      continue;
    }
    constexpr std::string_view hexadecimal = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(c);
    shown += {'\\', 'x', hexadecimal[code / 16], hexadecimal[code % 16]};
  }
  return shown + (text.size() > longest ? "...\"" : "\"");
}

/// Sign and digits only. Returns what was expected when token is no integer of 32 bits, else nothing.
std::string_view parseInteger(std::string_view token, int& value) {
  if (token.size() > 1 && token[0] == '+' && isDigit(token[1])) token.remove_prefix(1);
  const char* end = token.data() + token.size();
  const auto [stop, error] = std::from_chars(token.data(), end, value);
  if (stop != end || error == std::errc::invalid_argument) return "an integer";
  return error == std::errc() ? "" : "an integer from -2147483648 to 2147483647";
}

/// A number with a point or an `e` exponent if any. Returns what was expected when it is none, else nothing.
std::string_view parseDecimal(std::string_view number, double& value) {
  const char* end = number.data() + number.size();
  const auto [stop, error] = std::from_chars(number.data(), end, value);
  if (stop != end || error == std::errc::invalid_argument) return "a real";
  // The C library tells a number that is too small, and what it is rounded to, from one that is too large.
  if (error == std::errc::result_out_of_range) value = std::strtod(std::string(number).c_str(), nullptr);
  return std::isfinite(value) ? "" : "a real up to 1.79E+308";
}

/// A real as Fortran reads it: the exponent has the letter E, D or Q, or only its sign. Returns what was expected when
/// token is none, else nothing.
std::string_view parseReal(std::string_view token, double& value) {
  if (token.size() > 1 && token[0] == '+' && token[1] != '-') token.remove_prefix(1);
  const std::size_t first = token[0] == '-' ? 1 : 0;
  if (first == token.size() || !(isDigit(token[first]) || token[first] == '.')) return "a real";
  const std::size_t exponent = token.find_first_not_of("0123456789.", first);
  if (exponent == std::string_view::npos || token[exponent] == 'e' || token[exponent] == 'E')
    return parseDecimal(token, value);
  const bool letter = std::string_view("dDqQ").find(token[exponent]) != std::string_view::npos;
  if (!letter && token[exponent] != '+' && token[exponent] != '-') return "a real";
  std::string plain(token.substr(0, exponent));
  plain += 'e';
  plain += token.substr(letter ? exponent + 1 : exponent);
  return parseDecimal(plain, value);
}

}  // namespace

CardReader::CardReader(const std::string& fileName) : CardReader(fileName, readWholeFile(fileName)) {}

CardReader::CardReader(std::string name, std::string text) : fileName_(std::move(name)), text_(std::move(text)) {
  if (text_.starts_with("\xEF\xBB\xBF")) text_.erase(0, 3);  // the byte order mark that some editors write
}

CardReader CardReader::fromText(std::string name, std::string text) {
  return {std::move(name), std::move(text)};
}

void CardReader::begin(std::string_view card) {
  finishCard();
  card_ = card;
  cardOpen_ = true;
  itemLine_ = line_;
}

void CardReader::finishCard() {
  if (!cardOpen_) return;
  const std::size_t end = lineEnd();
  if (end < text_.size()) ++line_;
  cursor_ = std::min(end + 1, text_.size());
  cardOpen_ = slashed_ = commaAllowed_ = false;
  repeats_ = 0;
}

std::size_t CardReader::lineEnd() const {
  return std::min(text_.find('\n', cursor_), text_.size());
}

void CardReader::skipBlanks() {
  for (; cursor_ < text_.size() && is(blank, text_[cursor_]); ++cursor_)
    if (text_[cursor_] == '\n') ++line_;
}

std::string_view CardReader::token() const {
  std::size_t end = cursor_;
  while (end < text_.size() && !is(itemEnd, text_[end])) ++end;
  return std::string_view(text_).substr(cursor_, end - cursor_);
}

/// A text without quotes, to the next blank or comma: a slash inside it is part of it.
std::string_view CardReader::plainText() const {
  std::size_t end = cursor_;
  while (end < text_.size() && text_[end] != ',' && !is(blank, text_[end])) ++end;
  return std::string_view(text_).substr(cursor_, end - cursor_);
}

/// Goes to the next item; false when it is a null value.
bool CardReader::startItem(std::string_view field, std::string_view expected) {
  assert(cardOpen_ && "an item is read before its card is begun");
  if (slashed_) return false;
  if (repeats_ > 0) return startRepeated();
  skipBlanks();
  if (commaAllowed_ && cursor_ < text_.size() && text_[cursor_] == ',') {
    ++cursor_;
    skipBlanks();
  }
  commaAllowed_ = true;
  if (cursor_ == text_.size()) faultAtEnd(field, expected);
  itemLine_ = line_;
  itemStart_ = cursor_;
  slashed_ = text_[cursor_] == '/';
  if (slashed_ || text_[cursor_] == ',') return false;
  return startRepeat(field);
}

/// Takes the repeat count in front of an item, if there is one; false when no item follows it.
bool CardReader::startRepeat(std::string_view field) {
  std::size_t star = cursor_;
  while (star < text_.size() && isDigit(text_[star])) ++star;
  if (star == cursor_ || star == text_.size() || text_[star] != '*') return true;
  int count = 0;
  if (!parseInteger(std::string_view(text_).substr(cursor_, star - cursor_), count).empty() || count == 0)
    fault(field, token(), "a repeat count from 1 to 2147483647");
  cursor_ = repeatedAt_ = star + 1;
  repeatedLine_ = line_;
  repeatedIsNull_ = cursor_ == text_.size() || is(itemEnd, text_[cursor_]);
  repeats_ = count - 1;
  return !repeatedIsNull_;
}

/// Goes back to an item that is repeated; false when it is a null value.
bool CardReader::startRepeated() {
  --repeats_;
  cursor_ = repeatedAt_;
  line_ = itemLine_ = repeatedLine_;
  return !repeatedIsNull_;
}

template <class Number, class Parse>
void CardReader::readNumber(std::string_view field, std::string_view expected, Number& value, Parse parse) {
  if (!startItem(field, expected)) return;
  const std::string_view text = token();
  Number number{};
  if (const std::string_view instead = parse(text, number); !instead.empty()) fault(field, text, instead);
  value = number;
  cursor_ += text.size();
}

void CardReader::read(std::string_view field, int& value) {
  readNumber(field, "an integer", value, parseInteger);
}

void CardReader::read(std::string_view field, double& value) {
  readNumber(field, "a real", value, parseReal);
}

void CardReader::read(std::string_view field, std::string& value) {
  if (!startItem(field, "a text")) return;
  if (text_[cursor_] == '\'' || text_[cursor_] == '"') {
    value = quotedText(field);
    return;
  }
  const std::string_view text = plainText();
  if (std::ranges::any_of(text, isControl)) fault(field, text, "a text without control characters");
  value = text;
  cursor_ += text.size();
}

/// Reads a text in quotes, which may run over line ends; they are no part of it.
std::string CardReader::quotedText(std::string_view field) {
  const std::size_t start = cursor_;
  const char delimiter = text_[start];
  const auto found = [this, start] { return std::string_view(text_).substr(start, cursor_ - start); };
  std::string value;
  for (++cursor_; cursor_ < text_.size(); ++cursor_) {
    const char c = text_[cursor_];
    if (c == delimiter) {
      const bool last = cursor_ + 1 == text_.size();
      if (last || text_[cursor_ + 1] != delimiter) {
        ++cursor_;
        if (!last && !is(itemEnd, text_[cursor_])) fault(field, found(), "a separator after the closing quote");
        return value;
      }
      ++cursor_;
    }
    if (isControl(c)) fault(field, found(), "a text without control characters");
    if (c == '\n') ++line_;
    if (c != '\n' && c != '\r') value += c;
  }
  fault(field, found(), "a closing quote");
}

TextPiece CardReader::lastItem() const {
  const std::string_view item = std::string_view(text_).substr(itemStart_, cursor_ - itemStart_);
  return {item.find('*') != std::string_view::npos ? cursor_ : itemStart_, cursor_};
}

int CardReader::integer(std::string_view field) {
  int value = 0;
  read(field, value);
  return value;
}

double CardReader::real(std::string_view field) {
  double value = 0.0;
  read(field, value);
  return value;
}

std::string CardReader::word(std::string_view field) {
  std::string value;
  read(field, value);
  return value;
}

int CardReader::integer(std::string_view field, int low, int high) {
  const int value = integer(field);
  if (value < low || value > high)
    fault(field, value, "an integer from " + std::to_string(low) + " to " + std::to_string(high));
  return value;
}

std::string CardReader::line(std::string_view card, int width) {
  begin(card);
  if (cursor_ == text_.size()) faultAtEnd("", "a line");
  const std::size_t end = lineEnd();
  std::string_view text = std::string_view(text_).substr(cursor_, end - cursor_);
  if (text.ends_with('\r')) text.remove_suffix(1);
  cursor_ = end;
  if (std::ranges::any_of(text, isControl)) fault("", text, "a line without control characters");
  return std::string(text.substr(0, static_cast<std::size_t>(std::max(width, 0))));
}

void CardReader::unreadLines(int most, const std::function<void(std::string_view)>& visit) const {
  const std::string_view text = text_;
  std::size_t at = static_cast<std::size_t>(position());
  for (int shown = 0; shown < most && at < text.size(); ++shown) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    std::string_view line = text.substr(at, end - at);
    if (line.ends_with('\r')) line.remove_suffix(1);
    visit(line);
    at = std::min(end + 1, text.size());
  }
}

void CardReader::fault(std::string_view field, std::string_view found, std::string_view expected) const {
  throw InputFault(message(field, quoted(found), expected));
}

void CardReader::fault(std::string_view field, int found, std::string_view expected) const {
  throw InputFault(message(field, std::to_string(found), expected));
}

void CardReader::fault(std::string_view field, double found, std::string_view expected) const {
  std::string number;
  appendShortest(number, found);
  throw InputFault(message(field, number, expected));
}

void CardReader::faultAtEnd(std::string_view field, std::string_view expected) {
  itemLine_ = text_.ends_with('\n') ? line_ - 1 : line_;  // the last line that there is
  throw EndOfDeck(message(field, "the end of the file", expected));
}

std::string CardReader::message(std::string_view field, std::string_view found, std::string_view expected) const {
  std::string text = fileName_ + ", line " + std::to_string(itemLine_) + ", " + card_ + " card";
  if (!field.empty()) text.append(", field ").append(field);
  return text.append(": found ").append(found).append(", expected ").append(expected);
}

long CardReader::position() const {
  return static_cast<long>(cardOpen_ ? std::min(lineEnd() + 1, text_.size()) : cursor_);
}

void CardReader::seek(long position) {
  if (position < 0 || static_cast<std::size_t>(position) > text_.size())
    throw InputFault(fileName_ + ": reading cannot go on at byte " + std::to_string(position) + ", the file has " +
                     std::to_string(text_.size()));
  finishCard();
  cursor_ = static_cast<std::size_t>(position);
  if (cursor_ > 0 && cursor_ < text_.size() && text_[cursor_ - 1] != '\n') {
    if (text_[cursor_] != '\n' && std::string_view(text_).substr(cursor_, 2) != "\r\n")
      throw InputFault(fileName_ + ": reading cannot go on at byte " + std::to_string(position) +
                       ", the line there has got longer");
    cursor_ = text_.find('\n', cursor_) + 1;
    position = static_cast<long>(cursor_);
  }
  itemLine_ = line_ = 1 + static_cast<int>(std::count(text_.begin(), text_.begin() + position, '\n'));
}

}  // namespace zema
