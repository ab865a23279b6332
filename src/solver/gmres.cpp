// The GMRES iteration: Arnoldi's process by modified Gram-Schmidt, and Givens rotations of the small system.
#include "solver/gmres.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "foundation/channel.h"
#include "foundation/layout.h"

namespace zema {
namespace {

std::size_t index(int i) {
  return static_cast<std::size_t>(i);
}

}  // namespace

GmresIteration::GmresIteration(ElementProducts& products, int NEQNS, const GmresSettings& settings, double TOLER,
                               WorkerPool& pool, Channel& log)
    : products_(products), NEQNS_(NEQNS), settings_(settings), TOLER_(TOLER), log_(log), vectors_(NEQNS, pool) {}

void GmresIteration::GMR_PRE(std::span<const double> B, std::span<double> XGMRES) {
  log_.line(std::string(61, '='));
  if (reports()) {
    log_.line(FreeLine("WELCOME IN GMRES SUBROUTINE...."));
    log_.line(FreeLine("EQUATIONS", NEQNS_, "  KRYLOV DIM:", settings_.NKRYLO));
  }
  std::ranges::fill(XGMRES, 0.0);
  do {
    Values& r = basis(1);
    products_.AX(XGMRES, r, B);
    const double beta = std::sqrt(vectors_.SCALPR(r, r));
    if (count_ == 0) {
      first_ = beta;
      if (reports()) log_.line(FreeLine("INITIAL RESIDUAL :              ", beta));
    }
    relative_ = 0.0;
    if (beta == 0.0) break;
    vectors_.SCTVEC(1.0 / beta, r, r);
    G_.assign(1, beta);
    const int K = cycle();
    SOLVE(K);
    for (int i = 1; i <= K; ++i) vectors_.ADVECT(1.0, XGMRES, Y_[index(i - 1)], basis(i), XGMRES);
  } while (relative_ > TOLER_ && count_ < settings_.NITER);
  if (reports()) log_.line(FreeLine("FINAL RELATIVE RESIDUAL =", relative_));
}

// One round of inner iterations; the number of basis vectors that it has used.
int GmresIteration::cycle() {
  int j = 0;
  R_.clear();
  C_.clear();
  S_.clear();
  do {
    ++j;
    products_.AX(basis(j), basis(j + 1));
    orthogonalise(j);
    rotate(j);
    ++count_;
    relative_ = std::abs(G_[index(j)] / first_);
    if (reports()) log_.line(FreeLine("RELATIVE RESIDUAL NUMBER", count_, "=", relative_));
  } while (relative_ > TOLER_ && count_ < settings_.NITER && j < settings_.NKRYLO);
  return j;
}

// Column j of R, with the norm of what is left of v(j+1) as its entry j + 1, and the unit vector v(j+1).
void GmresIteration::orthogonalise(int j) {
  Values& next = basis(j + 1);
  for (int i = 1; i <= j; ++i) {
    const double h = vectors_.SCALPR(next, basis(i));
    R_.push_back(h);
    vectors_.ADVECT(1.0, next, -h, basis(i), next);
  }
  const double norm = std::sqrt(vectors_.SCALPR(next, next));
  vectors_.SCTVEC(1.0 / norm, next, next);
  S_.push_back(norm);  // until it has become the sine of rotation j
}

// Rotations 1 to j - 1 act on column j, and rotation j takes its last entry away.
void GmresIteration::rotate(int j) {
  for (int i = 1; i < j; ++i) {
    const double a = R(i, j), b = R(i + 1, j), cosine = C_[index(i - 1)], sine = S_[index(i - 1)];
    R(i, j) = cosine * a + sine * b;
    R(i + 1, j) = cosine * b - sine * a;
  }
  const double norm = S_.back();
  const double w = std::sqrt(R(j, j) * R(j, j) + norm * norm);
  C_.push_back(R(j, j) / w);
  S_.back() = norm / w;
  R(j, j) = w;
  G_.push_back(-S_.back() * G_.back());
  G_[index(j - 1)] *= C_.back();
}

// R Y = G over the first K columns, from the last row up.
void GmresIteration::SOLVE(int K) {
  Y_.assign(G_.begin(), G_.begin() + K);
  for (int i = K; i >= 1; --i) {
    for (int l = i + 1; l <= K; ++l) Y_[index(i - 1)] -= Y_[index(l - 1)] * R(i, l);
    Y_[index(i - 1)] /= R(i, i);
  }
}

GmresIteration::Values& GmresIteration::basis(int j) {
  while (basis_.size() < index(j)) basis_.emplace_back(index(NEQNS_));
  return basis_[index(j - 1)];
}

double& GmresIteration::R(int i, int j) {
  return R_[index(j) * index(j - 1) / 2 + index(i - 1)];
}

}  // namespace zema
