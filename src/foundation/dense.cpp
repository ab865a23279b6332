// Principal values and directions of a symmetric 3 x 3 matrix.
#include "foundation/dense.h"

namespace zema {
namespace {

/// Turns the axes p and q so that A(p, q) becomes 0, and the directions with them (Golub & Van Loan, 2013, sec. 8.5.2).
void rotate(Matrix<3, 3>& A, Matrix<3, 3>& directions, int p, int q) {
  const double off = A(p, q);
  if (off == 0.0) return;
  const double ratio = (A(q, q) - A(p, p)) / (2.0 * off);
  const double t = std::copysign(1.0, ratio) / (std::abs(ratio) + std::hypot(1.0, ratio));
  const double c = 1.0 / std::sqrt(1.0 + t * t);
  const double s = t * c;
  A(p, p) -= t * off;
  A(q, q) += t * off;
  A(p, q) = A(q, p) = 0.0;
  const int r = 3 - p - q;
  const double rp = A(r, p), rq = A(r, q);
  A(r, p) = A(p, r) = c * rp - s * rq;
  A(r, q) = A(q, r) = s * rp + c * rq;
  for (int i = 0; i < 3; ++i) {
    const double ip = directions(i, p), iq = directions(i, q);
    directions(i, p) = c * ip - s * iq;
    directions(i, q) = s * ip + c * iq;
  }
}

double offDiagonal(const Matrix<3, 3>& A) {
  return std::abs(A(0, 1)) + std::abs(A(0, 2)) + std::abs(A(1, 2));
}

double diagonal(const Matrix<3, 3>& A) {
  return std::abs(A(0, 0)) + std::abs(A(1, 1)) + std::abs(A(2, 2));
}

}  // namespace

PrincipalAxes principalAxes(const Matrix<3, 3>& A) {
  constexpr int mostSweeps = 20;          // about five suffice
  constexpr double negligible = 1.0e-20;  // far below the rounding of the values
  Matrix<3, 3> work{{A(0, 0), A(0, 1), A(0, 2), A(0, 1), A(1, 1), A(1, 2), A(0, 2), A(1, 2), A(2, 2)}};
  Matrix<3, 3> directions = Matrix<3, 3>::identity();
  for (int sweep = 0; sweep < mostSweeps && offDiagonal(work) > negligible * diagonal(work); ++sweep) {
    rotate(work, directions, 0, 1);
    rotate(work, directions, 0, 2);
    rotate(work, directions, 1, 2);
  }
  std::array<int, 3> order{0, 1, 2};
  if (work(order[0], order[0]) < work(order[1], order[1])) std::swap(order[0], order[1]);
  if (work(order[1], order[1]) < work(order[2], order[2])) std::swap(order[1], order[2]);
  if (work(order[0], order[0]) < work(order[1], order[1])) std::swap(order[0], order[1]);
  PrincipalAxes axes;
  for (int k = 0; k < 3; ++k) {
    const int from = order[static_cast<std::size_t>(k)];
    axes.values[static_cast<std::size_t>(k)] = work(from, from);
    for (int i = 0; i < 3; ++i) axes.directions(i, k) = directions(i, from);
  }
  return axes;
}

Vector<3> principalValues(const Matrix<3, 3>& A) {
  return principalAxes(A).values;
}

}  // namespace zema
