// Orthotropic elastic matrices, and the maps between a real material and its isotropic stand-in.
#include "constitutive/elastic_moduli.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "constitutive/temperature_curve.h"
#include "foundation/errors.h"
#include "foundation/layout.h"

namespace zema {
namespace {

constexpr std::array<int, 6> mapSlots{slot::mapXX, slot::mapYY, slot::mapXY, slot::mapZZ, slot::mapXZ, slot::mapYZ};

/// Factors of the moduli and of the Poisson coefficients at a temperature.
struct TemperatureFactors {
  double E = 1.0;
  double V = 1.0;
};

double greatestModulus(const Material& material) {
  return std::max(material(slot::youngX), material(slot::youngY));
}

TemperatureFactors factorsAt(const Material& material, std::optional<double> temperature) {
  TemperatureFactors f;
  if (!temperature || *temperature == material(slot::referenceTemperature)) return f;
  if (material(slot::youngCurvePoints) != 0.0)
    f.E = CAMBIOPORTEMP(*temperature, material.young) / greatestModulus(material);
  // A coefficient of 0 stays 0 whatever its curve says.
  if (material(slot::poissonCurvePoints) != 0.0 && material(slot::poissonXY) != 0.0)
    f.V = CAMBIOPORTEMP(*temperature, material.poisson) / material(slot::poissonXY);
  return f;
}

/// Refuses moduli that a curve takes to 0 or below.
void checkModuli(const Material& material, int m, double temperature, double factor) {
  for (const int place : {slot::youngX, slot::youngY, slot::youngZ}) {
    const double modulus = material(place) * factor;
    if (modulus > 0.0) continue;
    std::string fault = "material " + std::to_string(m) + ": at the temperature ";
    appendShortest(fault, temperature);
    fault += " the Young modulus of slot " + std::to_string(place) + " is ";
    appendShortest(fault, modulus);
    throw InputFault(fault + "; it must be above 0");
  }
}

OrthotropicConstants realConstants(const Material& material, const TemperatureFactors& f) {
  OrthotropicConstants c{.Ex = material(slot::youngX) * f.E,
                         .NUxy = material(slot::poissonXY) * f.V,
                         .NUyx = material(slot::poissonYX) * f.V,
                         .Ey = material(slot::youngY) * f.E,
                         .NUxz = material(slot::poissonXZ) * f.V,
                         .NUzx = material(slot::poissonZX) * f.V,
                         .Ez = material(slot::youngZ) * f.E,
                         .NUyz = material(slot::poissonYZ) * f.V,
                         .NUzy = material(slot::poissonZY) * f.V,
                         .Gxy = material(slot::shearXY) * f.E,
                         .Gxz = material(slot::shearXZ) * f.E,
                         .Gyz = material(slot::shearYZ) * f.E};
  if (c.Gxy == 0.0) c.Gxy = 1.0 / ((c.NUyx + 1.0) / c.Ex + (c.NUxy + 1.0) / c.Ey);
  if (c.Gxz == 0.0) c.Gxz = 1.0 / ((c.NUzx + 1.0) / c.Ex + (c.NUxz + 1.0) / c.Ez);
  if (c.Gyz == 0.0) c.Gyz = 1.0 / ((c.NUzy + 1.0) / c.Ey + (c.NUyz + 1.0) / c.Ez);
  return c;
}

template <int N>
void formStressMap(const Material& material, int m, ElasticRecord<N>& record) {
  constexpr std::array<const char*, 6> directions{"xx", "yy", "xy", "zz", "xz", "yz"};
  for (std::size_t i = 0; i < N; ++i) {
    const double value = material(mapSlots[i]);
    if (value == 0.0) {
      throw InputFault("material " + std::to_string(m) + ": the stress map is 0 in direction " + directions[i] +
                       "; it must not be 0, and is 1 in every direction for an isotropic material");
    }
    record.ASMT[i] = value;
    record.ASMTI[i] = 1.0 / value;
  }
}

template <int N>
Matrix<N> inverseOf(const Matrix<N>& A, int m) {
  Matrix<N> inverse;
  if (!INVMTX(A, inverse)) {
    throw InputFault("material " + std::to_string(m) +
                     ": its elastic matrix has no inverse; check its moduli and Poisson coefficients");
  }
  return inverse;
}

/// Whether a matrix differs from the identity by no more than the rounding of the product that formed it.
template <int N>
bool isIdentity(const Matrix<N>& A) {
  constexpr double rounding = 64.0 * std::numeric_limits<double>::epsilon();
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j)
      if (!(std::abs(A(i, j) - (i == j ? 1.0 : 0.0)) <= rounding)) return false;
  return true;
}

/// AEMX = C^-1 ASMT VDMANX with the isotropic matrix C.
template <int N>
void formStrainMap(const Matrix<N>& C, int m, ElasticRecord<N>& record) {
  Matrix<N> mapped = record.VDMANX;
  for (int i = 0; i < N; ++i)
    for (int j = 0; j < N; ++j) mapped(i, j) *= record.ASMT[static_cast<std::size_t>(i)];
  record.AEMX = PROMA1(inverseOf(C, m), mapped);
  if (isIdentity(record.AEMX)) record.AEMX = Matrix<N>::identity();
  record.AEMXI = inverseOf(record.AEMX, m);
}

}  // namespace

OrthotropicConstants OrthotropicConstants::isotropic(double E, double nu) {
  const double G = E / (2.0 * (nu + 1.0));
  return {E, nu, nu, E, nu, nu, E, nu, nu, G, G, G};
}

template <int N>
Matrix<N> MODAN(const OrthotropicConstants& c) {
  const double delta =
      1.0 / ((-c.NUyx - c.NUzx * c.NUyz) * c.NUxy + (-c.NUzx - c.NUyx * c.NUzy) * c.NUxz + (1.0 - c.NUyz * c.NUzy));
  Matrix<N> C;
  C(0, 0) = (1.0 - c.NUyz * c.NUzy) * c.Ex * delta;
  C(0, 1) = (c.NUzx * c.NUyz + c.NUyx) * c.Ex * delta;
  C(0, 3) = (c.NUyx * c.NUzy + c.NUzx) * c.Ex * delta;
  C(1, 0) = (c.NUxz * c.NUzy + c.NUxy) * c.Ey * delta;
  C(1, 1) = (1.0 - c.NUxz * c.NUzx) * c.Ey * delta;
  C(1, 3) = (c.NUxy * c.NUzx + c.NUzy) * c.Ey * delta;
  C(2, 2) = c.Gxy;
  C(3, 0) = (c.NUxy * c.NUyz + c.NUxz) * c.Ez * delta;
  C(3, 1) = (c.NUyx * c.NUxz + c.NUyz) * c.Ez * delta;
  C(3, 3) = (1.0 - c.NUxy * c.NUyx) * c.Ez * delta;
  if constexpr (N == 6) {
    C(4, 4) = c.Gxz;
    C(5, 5) = c.Gyz;
  }
  return C;
}

template <>
std::array<double, 3> materialAngles<6>(const Material& material) {
  return material.MAEULER();
}
template <>
std::array<double, 3> materialAngles<4>(const Material& material) {
  return {material(slot::angleAboutZ), 0.0, 0.0};
}

template <int N>
ElasticMaterial<N> MODPS(const Material& material, int m, std::optional<double> temperature) {
  const TemperatureFactors f = factorsAt(material, temperature);
  if (temperature) checkModuli(material, m, *temperature, f.E);
  ElasticMaterial<N> elastic;
  ElasticRecord<N>& record = elastic.record;
  formStressMap(material, m, record);
  record.VDMANX = MODAN<N>(realConstants(material, f));
  record.VDMANXI = inverseOf(record.VDMANX, m);
  const auto isotropic =
      OrthotropicConstants::isotropic(greatestModulus(material) * f.E, material(slot::poissonXY) * f.V);
  record.VDMATX = packUpper(MODAN<N>(isotropic));
  elastic.D = unpackUpper<N>(record.VDMATX);
  formStrainMap(elastic.D, m, record);
  elastic.plainMap = record.AEMX == Matrix<N>::identity() &&
                     std::all_of(record.ASMT.begin(), record.ASMT.end(), [](double value) { return value == 1.0; });
  elastic.axes = Rotation<N>(materialAngles<N>(material));
  elastic.inLayerAxes = record.VDMANX;
  ROTM(elastic.inLayerAxes, elastic.axes, Direction::toGlobal);
  return elastic;
}

template Matrix<4> MODAN<4>(const OrthotropicConstants&);
template Matrix<6> MODAN<6>(const OrthotropicConstants&);
template ElasticMaterial<4> MODPS<4>(const Material&, int, std::optional<double>);
template ElasticMaterial<6> MODPS<6>(const Material&, int, std::optional<double>);

}  // namespace zema
