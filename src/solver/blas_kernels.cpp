// A new start with other kernels of the matrix library.
#include "solver/blas_kernels.h"

#include <cblas.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace zema {
namespace {

constexpr const char* choice = "OPENBLAS_CORETYPE";

bool hasWideVectors() {
#ifdef __x86_64__
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
         __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512cd");
#else
  return false;
#endif
}

bool runsNarrowKernels() {
  const std::string_view name = openblas_get_corename();
  return name == "Haswell" || name == "Zen";
}

}  // namespace

void takeWidestKernels(char** arguments) {
  if (std::getenv(choice) != nullptr || !runsNarrowKernels() || !hasWideVectors()) return;
  std::error_code fault;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", fault);
  if (fault || setenv(choice, "SkylakeX", 1) != 0) return;
  execv(program.c_str(), arguments);
  unsetenv(choice);
}

}  // namespace zema
