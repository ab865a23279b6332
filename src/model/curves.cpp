// The keywords of the axes of curves.
#include "model/curves.h"

#include <algorithm>
#include <utility>

namespace zema {
namespace {

constexpr std::array<std::pair<std::string_view, CurveQuantity>, 11> keywords{{
    {"IINCS", CurveQuantity::time},
    {"DISPL", CurveQuantity::displacement},
    {"TREAC", CurveQuantity::reaction},
    {"RCTOT", CurveQuantity::reactionSum},
    {"FORCE", CurveQuantity::elementForce},
    {"STRES", CurveQuantity::stress},
    {"STRAI", CurveQuantity::strain},
    {"STRAP", CurveQuantity::plasticStrain},
    {"EHIST", CurveQuantity::internalVariable},
    {"ANGLE", CurveQuantity::principalDirection},
    {"TEMPE", CurveQuantity::temperature},
}};

}  // namespace

CurveQuantity curveQuantity(std::string_view axisWord) {
  const std::string_view keyword = axisWord.size() > 2 ? axisWord.substr(2, 5) : std::string_view();
  const auto found = std::ranges::find(keywords, keyword, &decltype(keywords)::value_type::first);
  return found != keywords.end() ? found->second : CurveQuantity::none;
}

}  // namespace zema
