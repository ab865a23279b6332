// The front matrix: packed or full rows, taking an equation out, and the reduction of the others.
#include "solver/front_matrix.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

// NFUNS(1, i + 1) - 1: where row i of a packed lower triangle begins.
std::size_t packedRow(int i) {
  return index(i) * (index(i) + 1) / 2;
}

}  // namespace

FrontMatrix::FrontMatrix(int NFRMX, FrontForm form)
    : NFRMX_(NFRMX),
      form_(form),
      GSTIF_(form == FrontForm::symmetric ? packedRow(NFRMX) : index(NFRMX) * index(NFRMX)) {}

void FrontMatrix::clear() {
  std::ranges::fill(GSTIF_, 0.0);
}

double* FrontMatrix::row(int i) {
  return GSTIF_.data() + (form_ == FrontForm::symmetric ? packedRow(i) : index(i) * index(NFRMX_));
}

void FrontMatrix::add(std::span<const int> NDEST, std::span<const double> ESTIF) {
  const std::size_t n = NDEST.size();
  for (std::size_t i = 0; i < n; ++i) {
    const double* values = &ESTIF[i * n];
    if (form_ == FrontForm::symmetric)
      for (std::size_t j = 0; j <= i; ++j) row(std::max(NDEST[i], NDEST[j]))[std::min(NDEST[i], NDEST[j])] += values[j];
    else
      for (std::size_t j = 0; j < n; ++j) row(NDEST[i])[NDEST[j]] += values[j];
  }
}

void FrontMatrix::takeOut(int p, FrontEquation equation) {
  const auto take = [](double& entry) { return std::exchange(entry, 0.0); };
  for (int j = 0; j < NFRMX_; ++j) {
    if (form_ == FrontForm::symmetric) {
      equation.EQUAT[index(j)] = take(row(std::max(p, j))[std::min(p, j)]);
    } else {
      equation.EQCOL[index(j)] = j == p ? row(p)[p] : take(row(j)[p]);
      equation.EQUAT[index(j)] = take(row(p)[j]);
    }
  }
}

void FrontMatrix::reduce(int NFRON, double pivot, const FrontEquation& equation) {
  const std::span<const double> column = equation.column();
  for (int i = 0; i < NFRON; ++i) {
    if (column[index(i)] == 0.0) continue;
    const double factor = column[index(i)] / pivot;
    const int end = form_ == FrontForm::symmetric ? i + 1 : NFRON;
    double* values = row(i);
    const double* EQUAT = equation.EQUAT.data();
    for (int j = 0; j < end; ++j) values[j] -= factor * EQUAT[j];
  }
}

}  // namespace zema
