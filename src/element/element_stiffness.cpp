// The two products of the element stiffness, and the tangent of the first Piola-Kirchhoff stress.
#include "element/element_stiffness.h"

#include <cassert>

#include "element/unrolled.h"

namespace zema {

namespace {

constexpr std::size_t at(int i) {
  return static_cast<std::size_t>(i);
}

/// A = F F D + S by components of the gradient.
template <class Kin>
Matrix<Kin::components> finiteTangent(const Matrix<Kin::NSTR1>& D, const Matrix<3>& F, const Stress<Kin::NSTR1>& S) {
  constexpr int C = Kin::components;
  Matrix<Kin::NSTR1, C> DF;
  for (int r = 0; r < Kin::NSTR1; ++r)
    unrolled<C>([&](auto c) {
      unrolled<3>([&](auto q) {
        if constexpr (Kin::coupled(Kin::column(c), q)) DF(r, c) += D(r, placeOf(Kin::column(c), q)) * F(Kin::row(c), q);
      });
    });
  Matrix<C> A;
  unrolled<C>([&](auto c) {
    unrolled<3>([&](auto q) {
      if constexpr (Kin::coupled(Kin::column(c), q))
        for (int d = 0; d < C; ++d) A(c, d) += F(Kin::row(c), q) * DF(placeOf(Kin::column(c), q), d);
    });
    unrolled<C>([&](auto d) {
      if constexpr (Kin::row(c) == Kin::row(d)) A(c, d) += S[placeOf(Kin::column(c), Kin::column(d))];
    });
  });
  return A;
}

template <int R, int C>
Matrix<R, C> scaled(double factor, Matrix<R, C> A) {
  for (double& value : A.values) value *= factor;
  return A;
}

}  // namespace

template <class Kin, int NNODE>
auto StiffnessSum<Kin, NNODE>::next() -> Point& {
  assert(points_ < mostPoints);
  return point_[at(points_++)];
}

template <class Kin, int NNODE>
template <class Coefficient>
void StiffnessSum<Kin, NNODE>::fillRow(Row& row, const Functions& G, const Coefficient& A) {
  constexpr int n = Kin::directions;
  unrolled<n>([&](auto j) {
    constexpr int functions = n + (Kin::hasHoop && j == 0 ? 1 : 0);
    Vector<functions> a;
    unrolled<functions>(
        [&](auto l) { a[l] = A(std::integral_constant < int, l<n ? j * n + l : Kin::components - 1>{}); });
    for (int b = 0; b < NNODE; ++b) {
      double sum = a[0] * G(0, b);
      for (int l = 1; l < functions; ++l) sum += a[at(l)] * G(l, b);
      row[at(j * NNODE + b)] = sum;
    }
  });
}

template <class Kin, int NNODE>
void StiffnessSum<Kin, NNODE>::add(const Functions& G, const Matrix<Kin::NSTR1>& D, double dV) {
  Point& point = next();
  point.G = G;
  const Functions weighted = scaled(dV, G);
  for (int r = 0; r < Kin::NSTR1; ++r)
    fillRow(point.rows[at(r)], weighted, [&](auto c) { return D(r, placeOf(Kin::row(c), Kin::column(c))); });
}

template <class Kin, int NNODE>
void StiffnessSum<Kin, NNODE>::add(const Functions& G, const Matrix<Kin::NSTR1>& D, const Matrix<3>& F,
                                   const Stress<Kin::NSTR1>& S, double dV) {
  Point& point = next();
  point.G = G;
  finite_ = true;
  const Functions weighted = scaled(dV, G);
  const Matrix<Kin::components> A = finiteTangent<Kin>(D, F, S);
  for (int c = 0; c < Kin::components; ++c) fillRow(point.rows[at(c)], weighted, [&](auto d) { return A(c, d); });
}

template <class Kin, int NNODE>
void StiffnessSum<Kin, NNODE>::writeTo(std::span<double> ESTIF) const {
  constexpr int n = Kin::directions;
  constexpr int tile = NNODE % 2 == 0 ? 2 : 1;  // nodes whose rows are summed together in registers
  unrolled<n>([&](auto i) {
    constexpr int functions = n + (Kin::hasHoop && i == 0 ? 1 : 0);
    for (int first = 0; first < NNODE; first += tile) {
      alignas(64) std::array<Row, at(tile)> sum{};
      for (int p = 0; p < points_; ++p) {
        const Point& point = point_[at(p)];
        unrolled<functions>([&](auto k) {
          constexpr int component = k < n ? i * n + k : Kin::components - 1;
          const Row& row = point.rows[at(finite_ ? component : placeOf(Kin::row(component), Kin::column(component)))];
          for (int a = 0; a < tile; ++a)
            for (int b = 0; b < NEVAB; ++b) sum[at(a)][at(b)] += point.G(k, first + a) * row[at(b)];
        });
      }
      for (int a = 0; a < tile; ++a) {
        double* const out = ESTIF.data() + ((first + a) * n + i) * NEVAB;
        for (int b = 0; b < NNODE; ++b)
          for (int j = 0; j < n; ++j) out[b * n + j] = sum[at(a)][at(j * NNODE + b)];
      }
    }
  });
}

template class StiffnessSum<Kinematics<3>, 4>;
template class StiffnessSum<Kinematics<3>, 8>;
template class StiffnessSum<Kinematics<2>, 3>;
template class StiffnessSum<Kinematics<2>, 4>;
template class StiffnessSum<Kinematics<2>, 6>;
template class StiffnessSum<Kinematics<2>, 8>;
template class StiffnessSum<Kinematics<2, true>, 3>;
template class StiffnessSum<Kinematics<2, true>, 4>;
template class StiffnessSum<Kinematics<2, true>, 6>;
template class StiffnessSum<Kinematics<2, true>, 8>;

}  // namespace zema
