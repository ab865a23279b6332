// Fatigue: the factor by which a number of cycles lowers the strength of a point.
#pragma once

#include <array>

#include "constitutive/law.h"

namespace zema {

/// Places (from 0) of the seven fatigue values of a point.
namespace fatigue {
inline constexpr int valley = 0;      ///< smin: last valley of the signed stress
inline constexpr int peak = 1;        ///< smax: last peak
inline constexpr int last = 2;        ///< s1: previous signed stress
inline constexpr int beforeLast = 3;  ///< s2: the one before it
inline constexpr int settled = 4;     ///< 1: the constant does not change again
inline constexpr int beta = 5;        ///< fatigue constant
inline constexpr int ratio = 6;       ///< stress ratio in use
}  // namespace fatigue

/// `WOHLERCM`: cycles to failure at a stress S of a material with strength f and stress ratio R: 1 from S = f on, no
/// end from R = 0.681 on. Throws ConstitutiveStop for R below -2.619, where the curve does not exist.
[[nodiscard]] double WOHLERCM(double f, double S, double R);

/// `STRFAT`: the factor phi, 1e-9 to 1, that the strength takes after the cycles of the pass; 1 when fatigue is off
/// (TCYCL 0). limit: strength in force, (1 - d) f or its like; tau: equivalent stress; f: strength, slot 30; sign: a
/// stress whose sign tau takes in the history (0: positive). Changes the point's seven values; those of a point that is
/// loaded beyond its limit, that has settled or has no stress keep their constant. Literature: Oller et al. (2005).
[[nodiscard]] double STRFAT(const PassContext& pass, std::array<double, 7>& values, double limit, double tau, double f,
                            double sign);

}  // namespace zema
