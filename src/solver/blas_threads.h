// Keeps the matrix library on one thread while the worker pool spreads the work.
#pragma once

#include <cblas.h>

namespace zema {

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
