// The direction of the greater principal value in the plane of x and y.
#pragma once

namespace zema {

/// Its angle against x, radians, from tensor components; 45 degrees when xx and yy nearly agree.
[[nodiscard]] double principalDirection(double xx, double yy, double xy);

}  // namespace zema
