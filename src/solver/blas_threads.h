// Keeps the matrix library on one thread while the worker pool spreads the work.
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

/// While it lives, every call of the matrix library runs on its caller's thread alone.
class SingleThreadedBlas {
 public:
  SingleThreadedBlas() { openblas_set_num_threads(1); }
  ~SingleThreadedBlas() { openblas_set_num_threads(before_); }
  SingleThreadedBlas(const SingleThreadedBlas&) = delete;
  SingleThreadedBlas& operator=(const SingleThreadedBlas&) = delete;

 private:
  int before_ = openblas_get_num_threads();
};

}  // namespace zema
