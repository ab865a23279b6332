// How many threads the matrix library takes: one while the worker pool spreads the work, all otherwise.
#pragma once

#include <cblas.h>

#include <cstddef>
#include <memory>

namespace zema {

/// Throws std::bad_alloc unless the memory that the matrix library takes at its first call is to be had; the library
/// itself would ask for it again and again.
inline void requireBlasMemory() {
  constexpr std::size_t bytesOfABuffer = std::size_t{128} << 20;
  const std::unique_ptr<char[]> probe(new char[2 * bytesOfABuffer]);
  static_cast<volatile char*>(probe.get())[0] = 0;  // keeps the compiler from leaving the request out
}

/// While it lives, a call of the matrix library runs on so many threads.
class BlasThreads {
 public:
  explicit BlasThreads(int threads) { openblas_set_num_threads(threads); }
  ~BlasThreads() { openblas_set_num_threads(before_); }
  BlasThreads(const BlasThreads&) = delete;
  BlasThreads& operator=(const BlasThreads&) = delete;

 private:
  int before_ = openblas_get_num_threads();
};

}  // namespace zema
