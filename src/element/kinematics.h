// Which displacement gradients an element has, and which places of strain and stress they act on.
#pragma once

#include <array>

#include "tensor/voigt.h"

namespace zema {

namespace detail {

[[nodiscard]] constexpr std::array<std::array<int, 3>, 3> placesOfPairs() {
  std::array<std::array<int, 3>, 3> places{};
  for (std::size_t r = 0; r < KF.size(); ++r) {
    const auto k = static_cast<std::size_t>(KF[r]), l = static_cast<std::size_t>(LF[r]);
    places[k][l] = places[l][k] = static_cast<int>(r);
  }
  return places;
}
inline constexpr auto placeOfPair = placesOfPairs();

}  // namespace detail

/// Place (from 0) in strain and stress of the index pair k, q, each from 0: the inverse of KF and LF.
[[nodiscard]] constexpr int placeOf(int k, int q) {
  return detail::placeOfPair[static_cast<std::size_t>(k)][static_cast<std::size_t>(q)];
}

/// The displacement gradient of a family of elements: all derivatives by the coordinates and, with `hoop`,
/// also the u / r of axisymmetry. Component c varies the entry (row(c), column(c)) of F; its gradient function is row
/// `column(c)` of the functions of the nodes (the derivatives by the coordinates, then N / r).
///
/// The strain-displacement matrix `BMATX` is never stored. Column (a, i) of it is B(kq) = F(i, k) G_q + F(i, q) G_k for
/// a shear place kq and F(i, k) G_k for a normal one, G being the gradient functions of node a and F the unit matrix at
/// small strains, so that products with it are products with G, F and the tensor at the point.
/// Literature: Bonet & Wood (2008), sec. 9.4, 9.5.
template <int dimensions, bool hoop = false>
struct Kinematics {
  static constexpr int directions = dimensions;
  static constexpr bool hasHoop = hoop;
  static constexpr int NSTR1 = dimensions == 3 ? 6 : 4;          ///< places of strain and stress
  static constexpr int functions = dimensions + (hoop ? 1 : 0);  ///< gradient functions of a node
  static constexpr int components = dimensions * dimensions + (hoop ? 1 : 0);

  [[nodiscard]] static constexpr int row(int c) { return c < dimensions * dimensions ? c / dimensions : 2; }
  [[nodiscard]] static constexpr int column(int c) { return c < dimensions * dimensions ? c % dimensions : 2; }
  /// Whether columns k and q of F make a strain together: all in space; in the plane the hoop stands alone.
  [[nodiscard]] static constexpr bool coupled(int k, int q) { return (k < dimensions) == (q < dimensions); }
};

}  // namespace zema
