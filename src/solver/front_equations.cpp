// Blocks of eliminated equations on their way to the work files and back.
#include "solver/front_equations.h"

#include <algorithm>
#include <cassert>
#include <span>

#include "foundation/errors.h"

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

std::size_t recordBytes(std::size_t NFRMX, std::size_t NBUFA, FrontForm form) {
  const std::size_t rows = form == FrontForm::symmetric ? 1 : 2;
  return NBUFA * ((rows * NFRMX + 1) * sizeof(double) + 2 * sizeof(int));
}

template <class T>
std::span<const std::byte> bytesOf(const std::vector<T>& values) {
  return std::as_bytes(std::span(values));
}

template <class T>
std::span<std::byte> placeOf(std::vector<T>& values) {
  return std::as_writable_bytes(std::span(values));
}

}  // namespace

FrontEquations::FrontEquations(int NFRMX, int NBUFA, FrontForm form, const std::string& path)
    : NFRMX_(index(NFRMX)),
      NBUFA_(index(NBUFA)),
      EQUAT_(NFRMX_ * NBUFA_),
      EQCOL_(form == FrontForm::symmetric ? 0 : EQUAT_.size()),
      EQRHS_(NBUFA_),
      numbers_(2 * NBUFA_),
      equations_(path + ".equations", recordBytes(NFRMX_, NBUFA_, form)),
      rightHandSides_(path + ".loads", NBUFA_ * sizeof(double)) {}

void FrontEquations::begin(Walk walk) {
  walk_ = walk;
  block_ = 0;
  NBUFF_ = 0;
  std::ranges::fill(EQUAT_, 0.0);
  std::ranges::fill(EQCOL_, 0.0);
  std::ranges::fill(EQRHS_, 0.0);
  if (walk_ == Walk::reuse) readBlock();
}

void FrontEquations::next() {
  if (NBUFF_ == NBUFA_) {
    if (walk_ == Walk::make)
      writeBlock();
    else
      rightHandSides_.write(block_, {bytesOf(EQRHS_)});
    ++block_;
    if (walk_ == Walk::reuse) readBlock();
    NBUFF_ = 0;
  }
  ++NBUFF_;
}

void FrontEquations::finish() {
  if (walk_ == Walk::make) {
    writeBlock();
    blocks_ = block_ + 1;
  }
  ++NBUFF_;
}

bool FrontEquations::previous() {
  if (--NBUFF_ > 0) return true;
  if (block_ == 0) return false;
  --block_;
  readBlock();
  if (walk_ == Walk::reuse) rightHandSides_.read(block_, {placeOf(EQRHS_)});
  NBUFF_ = NBUFA_;
  return true;
}

void FrontEquations::writeBlock() {
  equations_.write(block_, {bytesOf(EQUAT_), bytesOf(EQCOL_), bytesOf(EQRHS_), bytesOf(numbers_)});
}

void FrontEquations::readBlock() {
  equations_.read(block_, {placeOf(EQUAT_), placeOf(EQCOL_), placeOf(EQRHS_), placeOf(numbers_)});
}

// A block: EQUAT, EQCOL and EQRHS as on the file, then the whole numbers.
std::vector<double> FrontEquations::save() const {
  std::vector<double> values(valuesOfABlock() * index(blocks_));
  std::vector<int> numbers(numbers_.size());
  for (int block = 0; block < blocks_; ++block) {
    const std::span<double> all = std::span(values).subspan(valuesOfABlock() * index(block), valuesOfABlock());
    const std::span<double> reals = all.first(all.size() - numbers.size());
    equations_.read(block, {std::as_writable_bytes(reals), placeOf(numbers)});
    std::ranges::copy(numbers, all.last(numbers.size()).begin());
  }
  return values;
}

void FrontEquations::restore(std::span<const double> values) {
  if (values.size() % valuesOfABlock() != 0)
    throw InputFault("the factors of the restart data do not fit the equations of the deck");
  std::vector<int> numbers(numbers_.size());
  blocks_ = static_cast<int>(values.size() / valuesOfABlock());
  for (int block = 0; block < blocks_; ++block) {
    const std::span<const double> all = values.subspan(valuesOfABlock() * index(block), valuesOfABlock());
    std::ranges::transform(all.last(numbers.size()), numbers.begin(), [](double n) { return static_cast<int>(n); });
    equations_.write(block, {std::as_bytes(all.first(all.size() - numbers.size())), bytesOf(numbers)});
  }
}

FrontEquation FrontEquations::equation() {
  const std::size_t first = at() * NFRMX_;
  return {std::span(EQUAT_).subspan(first, NFRMX_),
          EQCOL_.empty() ? std::span<double>() : std::span(EQCOL_).subspan(first, NFRMX_)};
}

}  // namespace zema
