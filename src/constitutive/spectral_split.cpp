// Spectral split of a stress.
#include "constitutive/spectral_split.h"

namespace zema {
namespace {

/// A += factor p p^T, where the transposed side is a strain: its shears count twice.
template <int N>
void addDyad(Matrix<N>& A, double factor, const Stress<N>& p) {
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) A(i, j) += factor * p[i] * (isShear(j) ? 2.0 * p[j] : p[j]);
}

/// (<a> - <b>) / (a - b) for a not below b, with its limit for equal values.
double dividedDifference(double a, double b) {
  if (b > 0.0) return 1.0;
  return a > 0.0 ? a / (a - b) : 0.0;
}

}  // namespace

template <int N>
Stress<N> directionProduct(const PrincipalAxes& axes, int i, int j) {
  Stress<N> product;
  for (int place = 0; place < N; ++place) {
    const int k = KF[static_cast<std::size_t>(place)], l = LF[static_cast<std::size_t>(place)];
    product[place] =
        0.5 * (axes.directions(k, i) * axes.directions(l, j) + axes.directions(l, i) * axes.directions(k, j));
  }
  return product;
}

template <int N>
SpectralSplit<N>::SpectralSplit(const Stress<N>& SIGMA) : axes(JACOBIEIGEN(SIGMA)) {
  for (int i = 0; i < 3; ++i) {
    const double value = axes.values[static_cast<std::size_t>(i)];
    if (value > 0.0) positive.add(value, directionProduct<N>(axes, i, i));
  }
  negative = SIGMA - positive;
}

template <int N>
Matrix<N> SpectralSplit<N>::positiveDerivative() const {
  // dpositive = sum_ij (<s_i> - <s_j>) / (s_i - s_j) p_i (p_i dSIGMA p_j) p_j
  Matrix<N> Q;
  for (int i = 0; i < 3; ++i) {
    for (int j = i; j < 3; ++j) {
      const double share =
          dividedDifference(axes.values[static_cast<std::size_t>(i)], axes.values[static_cast<std::size_t>(j)]);
      if (share != 0.0) addDyad(Q, i == j ? share : 2.0 * share, directionProduct<N>(axes, i, j));
    }
  }
  return Q;
}

template Stress<4> directionProduct<4>(const PrincipalAxes&, int, int);
template Stress<6> directionProduct<6>(const PrincipalAxes&, int, int);
template struct SpectralSplit<4>;
template struct SpectralSplit<6>;

}  // namespace zema
