// Texts and numbers in columns.
#include "results/columns.h"

#include <algorithm>

namespace zema {

std::string rightInColumns(int number, int columns) {
  const std::string digits = std::to_string(number);
  return std::string(std::max(static_cast<std::size_t>(columns), digits.size()) - digits.size(), ' ') + digits;
}

std::string leftInColumns(std::string_view text, int columns) {
  std::string padded(text);
  padded.resize(std::max(static_cast<std::size_t>(columns), text.size()), ' ');
  return padded;
}

std::string twoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

void appendRow(std::string& out, std::string_view front, const Layout& layout, std::span<const double> values) {
  out += front;
  const std::size_t before = out.size();
  layout.append(out, values);
  if (out.find('*', before) != std::string::npos) {
    out.resize(before);
    for (const double value : values) {
      out += ' ';
      appendShortest(out, value);
    }
  }
  out += '\n';
}

}  // namespace zema
