// Texts and numbers in columns.
#include "results/columns.h"

#include <algorithm>

namespace zema {

std::string rightInColumns(int number, int columns) {
  std::string text = std::to_string(number);
  if (const std::size_t width = static_cast<std::size_t>(columns); text.size() < width)
    text.insert(0, width - text.size(), ' ');
  return text;
}

std::string leftInColumns(std::string_view text, int columns) {
  std::string padded(text);
  padded.resize(std::max(static_cast<std::size_t>(columns), text.size()), ' ');
  return padded;
}

std::string twoDigits(int number) {
  std::string text = std::to_string(number);
  if (number < 10) text.insert(text.begin(), '0');
  return text;
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
