// Reading a deck and writing points, each beside the C library doing the same.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "foundation/card_reader.h"
#include "foundation/layout.h"

namespace {

using Point = std::array<double, 6>;

std::vector<Point> points() {
  std::vector<Point> all(20'000);
  double angle = 0.0;
  for (Point& point : all)
    for (double& value : point) value = 1000.0 * std::sin(angle += 1.0);
  return all;
}

std::string deck() {
  static constexpr zema::Layout layout("6F25.15");
  std::string text;
  for (const Point& point : points()) {
    layout.append(text, point);
    text += '\n';
  }
  return text;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void readDeck(benchmark::State& state) {
  const std::string text = deck();
  for (auto _ : state) {
    zema::CardReader reader = zema::CardReader::fromText("deck", text);
    double sum = 0.0;
    for (int card = 0; card < 20'000; ++card) {
      reader.begin("node");
      for (int item = 0; item < 6; ++item) sum += reader.real("COORD");
    }
    benchmark::DoNotOptimize(sum);
  }
  countBytes(state, text.size());
}
BENCHMARK(readDeck);

void readDeckByStrtod(benchmark::State& state) {
  const std::string text = deck();
  for (auto _ : state) {
    double sum = 0.0;
    const char* at = text.c_str();
    for (int item = 0; item < 6 * 20'000; ++item) {
      char* end = nullptr;
      sum += std::strtod(at, &end);
      at = end;
    }
    benchmark::DoNotOptimize(sum);
  }
  countBytes(state, text.size());
}
BENCHMARK(readDeckByStrtod);

void writePoints(benchmark::State& state, const zema::Layout& layout) {
  const std::vector<Point> all = points();
  std::string out;
  for (auto _ : state) {
    out.clear();
    for (const Point& point : all) layout.append(out, point);
    benchmark::DoNotOptimize(out.data());
  }
  countBytes(state, out.size());
}

void writePointsByPrintf(benchmark::State& state, const char* format) {
  const std::vector<Point> all = points();
  std::string out;
  for (auto _ : state) {
    out.clear();
    for (const Point& p : all) {
      std::array<char, 200> line{};
      const int length = std::snprintf(line.data(), line.size(), format, p[0], p[1], p[2], p[3], p[4], p[5]);
      out.append(line.data(), static_cast<std::size_t>(length));
    }
    benchmark::DoNotOptimize(out.data());
  }
  countBytes(state, out.size());
}

constexpr zema::Layout fixedPoint("6F25.15");
constexpr zema::Layout exponent("6E13.6");
BENCHMARK_CAPTURE(writePoints, F25_15, fixedPoint);
BENCHMARK_CAPTURE(writePointsByPrintf, F25_15, "%25.15f%25.15f%25.15f%25.15f%25.15f%25.15f");
BENCHMARK_CAPTURE(writePoints, E13_6, exponent);
BENCHMARK_CAPTURE(writePointsByPrintf, E13_6, "%13.5e%13.5e%13.5e%13.5e%13.5e%13.5e");

}  // namespace
