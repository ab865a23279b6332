// Curve files.
#include "results/curves.h"

#include "job/file_set.h"
#include "results/columns.h"
#include "results/curve_values.h"

namespace zema {
namespace {

constexpr Layout pairOfValues{"2F20.8"};

/// The first 16 characters of a text, filled with blanks.
std::string shortText(std::string_view text) {
  return leftInColumns(text.substr(0, 16), 16);
}

void writeHead(Channel& out, const Curve& curve, int output) {
  static constexpr Layout first{R"_("#" I5 1X "(2E20.8)")_"};
  static constexpr Layout second{R"("#" I5 4X "0")"};
  static constexpr Layout title{R"("#" A16)"};
  static constexpr Layout axis{R"("#" A16 5I4)"};
  const std::span<const int> KDATS(curve.KDATS);
  out.write(first, 1);
  out.write(second, output);
  out.write(title, shortText(curve.title));
  out.write(axis, shortText(curve.xWord), KDATS.first(5));
  out.write(axis, shortText(curve.yWord), KDATS.last(5));
  out.write(pairOfValues, 0.0, 0.0);
}

/// Fetches both rows; the first character of its word says which axis a row feeds.
void writeCurve(Channel& out, const Curve& curve, const CurveSource& source, int output, bool withLines) {
  if (output == 1 && withLines) writeHead(out, curve, output);
  double x = 0.0;
  double y = 0.0;
  const std::span<const int> KDATS(curve.KDATS);
  const auto fetch = [&](const std::string& word, std::span<const int> parameters) {
    (word.starts_with('X') ? x : y) = source.BUSCUR(word, parameters);
  };
  fetch(curve.xWord, KDATS.first(5));
  fetch(curve.yWord, KDATS.last(5));
  if (withLines) out.write(pairOfValues, x, y);
}

bool hasTemperature(const Curve& curve) {
  return curveQuantity(curve.xWord) == CurveQuantity::temperature ||
         curveQuantity(curve.yWord) == CurveQuantity::temperature;
}

}  // namespace

void OUTCU(Job& job, const Model& model, const Kernel& kernel, StateSlot slot) {
  const int output = ++job.IRUN.KCURV;
  const bool structural = model.mesh.elements.back().NTYPE < kernel.results().curves.typesBelow;
  const CurveSource source(job, model, kernel, slot);
  int i = 0;
  for (const Curve& curve : model.curves) {
    Channel out = Channel::open(curveFileName(job, ++i), OpenMode::append);
    writeCurve(out, curve, source, output, structural && !hasTemperature(curve));
    out.close();
  }

  static constexpr Layout history{"3F20.8"};
  Channel out = Channel::open(curveFileName(job, i + 1), OpenMode::append);
  if (structural) out.write(history, model.loop.TTIME, model.monitors.DANEN, model.monitors.DANFU);
  out.close();
}

}  // namespace zema
