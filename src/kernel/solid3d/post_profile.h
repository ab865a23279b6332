// Words, headings and layouts of the results of three-dimensional solids.
#pragma once

#include "results/result_profile.h"

namespace zema::solid3d {

/// What the results of this kernel look like; constant.
[[nodiscard]] const ResultProfile& resultProfile();

}  // namespace zema::solid3d
