// The fields of a layout and the items of a free line.
#include "foundation/layout.h"

#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>

namespace zema {
namespace {

using Code = LayoutStep::Code;

/// Puts text at the right end of a field, or stars when it is too long.
void rightJustify(std::string& out, std::string_view text, std::size_t width) {
  if (text.size() > width) {
    out.append(width, '*');
    return;
  }
  out.append(width - text.size(), ' ');
  out.append(text);
}

void integerField(std::string& out, long long value, const LayoutStep& field) {
  char digits[24];
  const bool negative = value < 0;
  const unsigned long long magnitude =
      negative ? 0ULL - static_cast<unsigned long long>(value) : static_cast<unsigned long long>(value);
  const char* end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
  const std::size_t width = static_cast<std::size_t>(field.width);
  const std::size_t length = value == 0 && field.digits == 0 ? 0 : static_cast<std::size_t>(end - digits);
  const std::size_t zeros = std::max(length, static_cast<std::size_t>(field.digits)) - length;
  const std::size_t used = zeros + length + (negative ? 1 : 0);
  if (used > width) {
    out.append(width, '*');
    return;
  }
  out.append(width - used, ' ');
  if (negative) out += '-';
  out.append(zeros, '0');
  out.append(digits, length);
}

void notFiniteField(std::string& out, double value, std::size_t width) {
  if (std::isnan(value)) return rightJustify(out, "NaN", width);
  if (value > 0) return rightJustify(out, width < 8 ? "Inf" : "Infinity", width);
  rightJustify(out, width < 9 ? "-Inf" : "-Infinity", width);
}

/// Puts sign, an optional leading zero and the rest in a field: the zero is dropped when the width demands it.
void realField(std::string& out, bool negative, bool leadingZero, std::string_view rest, std::size_t width) {
  const std::size_t needed = rest.size() + (negative ? 1 : 0);
  if (needed > width) {
    out.append(width, '*');
    return;
  }
  const bool zeroFits = leadingZero && needed < width;
  out.append(width - needed - (zeroFits ? 1 : 0), ' ');
  if (negative) out += '-';
  if (zeroFits) out += '0';
  out.append(rest);
}

void fixedField(std::string& out, double value, const LayoutStep& field) {
  char text[400];  // 309 digits, the point and the decimals that a layout may have
  char* end = std::to_chars(text, text + sizeof text - 1, std::abs(value), std::chars_format::fixed, field.digits).ptr;
  if (field.digits == 0) *end++ = '.';
  const bool leadingZero = text[0] == '0' && field.digits > 0;
  const std::string_view rest(text + (leadingZero ? 1 : 0), end);
  realField(out, std::signbit(value), leadingZero, rest, static_cast<std::size_t>(field.width));
}

/// Appends +02, -12 or +100 with the letter E only in front of two digits.
char* exponentDigits(char* at, int exponent) {
  const int magnitude = std::abs(exponent);
  if (magnitude < 100) *at++ = 'E';
  *at++ = exponent < 0 ? '-' : '+';
  if (magnitude >= 100) *at++ = static_cast<char>('0' + magnitude / 100);
  *at++ = static_cast<char>('0' + magnitude / 10 % 10);
  *at++ = static_cast<char>('0' + magnitude % 10);
  return at;
}

void exponentField(std::string& out, double value, const LayoutStep& field) {
  char scientific[80];
  char text[80];  // the point, the digits and the exponent
  const char* end = std::to_chars(scientific, scientific + sizeof scientific, std::abs(value),
                                  std::chars_format::scientific, field.digits - 1)
                        .ptr;
  const std::size_t digits = static_cast<std::size_t>(field.digits);
  text[0] = '.';
  text[1] = scientific[0];
  std::memcpy(text + 2, scientific + 2, digits - 1);
  const char* power = scientific + digits + (digits > 1 ? 1 : 0) + 1;  // behind d.ddde or de
  int exponent = 0;
  std::from_chars(*power == '+' ? power + 1 : power, end, exponent);
  const char* textEnd = exponentDigits(text + digits + 1, value == 0.0 ? 0 : exponent + 1);
  realField(out, std::signbit(value), true, {text, textEnd}, static_cast<std::size_t>(field.width));
}

}  // namespace

void LayoutRun::writeBlanks() {
  out_.append(pendingBlanks_, ' ');
  pendingBlanks_ = 0;
}

/// Does the steps up to the next field that is still to be filled; false at the end of the codes.
bool LayoutRun::advance() {
  for (; step_ < layout_.count_; ++step_) {
    const LayoutStep& step = layout_.steps_[static_cast<std::size_t>(step_)];
    switch (step.code) {
      case Code::blanks:
        pendingBlanks_ += static_cast<std::size_t>(step.width);
        break;
      case Code::newLine:
        out_.append(static_cast<std::size_t>(step.repeat), '\n');
        pendingBlanks_ = 0;
        break;
      case Code::literal:
        writeBlanks();
        for (int i = 0; i < step.repeat; ++i)
          out_.append(layout_.codes_, static_cast<std::size_t>(step.at), static_cast<std::size_t>(step.width));
        break;
      case Code::groupBegin:
        groupsDone_[static_cast<std::size_t>(depth_++)] = 0;
        break;
      case Code::groupEnd:
        if (++groupsDone_[static_cast<std::size_t>(depth_ - 1)] < step.repeat)
          step_ = step.target - 1;
        else
          --depth_;
        break;
      default:
        if (timesDone_ < step.repeat) return true;
        timesDone_ = 0;
    }
  }
  return false;
}

const LayoutStep& LayoutRun::nextField() {
  while (!advance()) {
    assert(layout_.revertHasField_ && "a layout has no field for an item");
    out_ += '\n';
    pendingBlanks_ = 0;
    step_ = layout_.revertTo_;
  }
  ++timesDone_;
  writeBlanks();
  return layout_.steps_[static_cast<std::size_t>(step_)];
}

void LayoutRun::putInteger(long long value) {
  const LayoutStep& field = nextField();
  assert(field.code == Code::integer && "an integer meets a field of another kind");
  integerField(out_, value, field);
}

void LayoutRun::putReal(double value) {
  const LayoutStep& field = nextField();
  assert((field.code == Code::fixed || field.code == Code::exponent) && "a real meets a field of another kind");
  if (!std::isfinite(value))
    notFiniteField(out_, value, static_cast<std::size_t>(field.width));
  else if (field.code == Code::fixed)
    fixedField(out_, value, field);
  else
    exponentField(out_, value, field);
}

void LayoutRun::putText(std::string_view value) {
  const LayoutStep& field = nextField();
  assert(field.code == Code::text && "a text meets a field of another kind");
  const std::size_t width = field.width == 0 ? value.size() : static_cast<std::size_t>(field.width);
  rightJustify(out_, value.substr(0, width), width);
}

void appendShortest(std::string& out, double value) {
  if (!std::isfinite(value)) {
    out += std::isnan(value) ? "NaN" : value > 0 ? "Infinity" : "-Infinity";
    return;
  }
  char text[40];
  const std::string_view number(text, std::to_chars(text, text + sizeof text, value).ptr);
  const std::size_t power = number.find('e');
  const std::string_view mantissa = number.substr(0, power);
  out += mantissa;
  if (mantissa.find('.') == std::string_view::npos) out += ".0";
  if (power == std::string_view::npos) return;
  out += 'E';
  out += number.substr(power + 1);
}

void FreeLine::separate(bool isText) {
  if (line_.empty() || !isText || !endsWithText_) line_ += ' ';
  endsWithText_ = isText;
}

void FreeLine::addInteger(long long value) {
  separate(false);
  char digits[24];
  line_.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void FreeLine::addReal(double value) {
  separate(false);
  appendShortest(line_, value);
}

void FreeLine::addText(std::string_view value) {
  separate(true);
  line_ += value;
}

}  // namespace zema
