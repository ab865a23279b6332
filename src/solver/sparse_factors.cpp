// Sparse factors by MUMPS. Where it is missing, no_sparse_factors.cpp takes the place of this file.
#include "solver/sparse_factors.h"

#include <dmumps_c.h>

#include <cassert>
#include <new>

#include "foundation/errors.h"
#include "foundation/layout.h"
#include "solver/blas_threads.h"

namespace zema {
namespace {

// Jobs, controls and answers of the library, by their numbers in its manual.
enum Job : int { start = -1, release = -2, analysis = 1, factorisation = 2, solution = 3 };
enum Control : int {
  errorChannel = 1,
  warningChannel = 2,
  reportChannel = 3,
  printing = 4,
  columnPermutation = 6,
  ordering = 7,
  spareMemory = 14,
};
enum Answer : int { outcome = 1, factorEntries = 29 };

constexpr int unsymmetricMatrix = 0, symmetricMatrix = 2;
constexpr int orderIsGiven = 1;
constexpr int worldOfOne = -987654;  // the library's communicator of all processes
constexpr int realWorkTooSmall = -9, integerWorkTooSmall = -8, noMemory = -13;
constexpr int mostSpareMemory = 1000;  // percent

}  // namespace

struct SparseFactors::Library {
  Library(const SparsePattern& pattern, bool symmetric) {
    data.sym = symmetric ? symmetricMatrix : unsymmetricMatrix;
    data.par = 1;
    data.comm_fortran = worldOfOne;
    call(start);
    for (const Control channel : {errorChannel, warningChannel, reportChannel, printing}) control(channel) = 0;
    control(columnPermutation) = 0;
    control(ordering) = orderIsGiven;
    data.n = pattern.N_PARD();
    for (int row = 0; row < data.n; ++row)
      for (const int column : pattern.JA_PARD(row))
        if (!symmetric || column <= row) {
          rows.push_back(row + 1);
          columns.push_back(column + 1);
        }
    data.nnz = static_cast<MUMPS_INT8>(rows.size());
    data.irn = rows.data();
    data.jcn = columns.data();
  }
  ~Library() {
    data.job = release;
    dmumps_c(&data);
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  [[nodiscard]] int& control(Control which) { return data.icntl[which - 1]; }
  [[nodiscard]] int answer(Answer which) const { return data.infog[which - 1]; }
  [[nodiscard]] bool symmetric() const { return data.sym == symmetricMatrix; }

  // Runs a phase; says how it ended.
  int attempt(Job job) {
    data.job = job;
    dmumps_c(&data);
    return answer(outcome);
  }

  void call(Job job) {
    if (const int code = attempt(job); code < 0) fail(code);
  }

  [[noreturn]] static void fail(int code) {
    if (code == noMemory) throw std::bad_alloc();
    throw PlainStop(FreeLine("The following ERROR was detected: ", code).text() + '\n', "");
  }

  // The entries that the library takes, in the order of rows and columns.
  void take(const SparseMatrix& matrix) {
    const SparsePattern& pattern = matrix.pattern();
    values.clear();
    values.reserve(rows.size());
    for (int row = 0; row < data.n; ++row) {
      const double* A = matrix.A_PARD().data() + pattern.IA_PARD(row);
      for (const int column : pattern.JA_PARD(row)) {
        if (!symmetric() || column <= row) values.push_back(*A);
        ++A;
      }
    }
    data.a = values.data();
  }

  DMUMPS_STRUC_C data{};
  std::vector<MUMPS_INT> rows, columns;  // from 1
  std::vector<double> values;
};

bool hasSparseLibrary() {
  return true;
}

SparseFactors::SparseFactors(const SparsePattern& pattern, bool symmetric, std::span<const int> order)
    : library_(std::make_unique<Library>(pattern, symmetric)) {
  std::vector<MUMPS_INT> places(order.begin(), order.end());
  library_->data.perm_in = places.data();
  library_->call(analysis);
  library_->data.perm_in = nullptr;
}

SparseFactors::~SparseFactors() = default;

bool SparseFactors::symmetric() const {
  return library_->symmetric();
}

void SparseFactors::factorise(const SparseMatrix& matrix, int threads) {
  const BlasThreads blas(threads);
  library_->take(matrix);
  int code = library_->attempt(factorisation);
  int& spare = library_->control(spareMemory);
  // Row exchanges can need more room than the analysis foresaw.
  while ((code == realWorkTooSmall || code == integerWorkTooSmall) && spare < mostSpareMemory) {
    spare *= 2;
    code = library_->attempt(factorisation);
  }
  if (code < 0) Library::fail(code);
  library_->values = {};
}

long long SparseFactors::entries() const {
  constexpr long long million = 1'000'000;  // negative answers count millions
  const int found = library_->answer(factorEntries);
  return found < 0 ? -million * found : found;
}

void SparseFactors::solve(std::span<double> x, int threads) {
  assert(x.size() == static_cast<std::size_t>(library_->data.n));
  const BlasThreads blas(threads);
  library_->data.rhs = x.data();
  library_->data.nrhs = 1;
  library_->data.lrhs = library_->data.n;
  library_->call(solution);
}

}  // namespace zema
