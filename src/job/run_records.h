// The four records of a run that the entry fills and hands to a kernel's driver.
#pragma once

#include <array>
#include <string>

namespace zema {

/// Run record: first increment and load step, pass and curve counters, channels of the two text outputs.
struct RunRecord {
  int IINCS = 1;  ///< first increment of this run
  int ILOAS = 1;  ///< first load step of this run
  int NPASS = 0;  ///< pass counter; the head of the deck is read at pass 1
  int KCOUN = 0;  ///< count of beam curve writings
  int KCURV = 0;  ///< count of curve writings
  int LUSAL = 2;  ///< channel of the listing
  int LULOG = 8;  ///< channel of the log
  int LNAME = 0;  ///< length of the job name up to the first dot of the listing's name
};

/// Text record, 64 characters each.
struct TextRecord {
  std::string CPROB;   ///< problem word, at most 10 characters
  std::string CSTART;  ///< start word: "START1" new job, "START2" restart
  std::string CTITLE;  ///< title of the job
};

/// Control record: sizes and switches of the job, fixed for the run.
struct ControlRecord {
  int KPATH = 0;       ///< 1: state committed after convergence; 2: after every iteration
  int LARGE = 0;       ///< 0: infinitesimal strain; other: finite strain, total Lagrangian
  int ISIME = 0;       ///< 0: symmetric frontal solver; other: unsymmetric
  int KTANP = 0;       ///< with KPUSH 2: 1 pushes the constitutive tangent too
  int KPUSH = 0;       ///< with LARGE: 2 runs the law in the current configuration, Cauchy stress is reported
  int NPOIN = 0;       ///< number of nodes
  int NELEM = 0;       ///< number of elements
  int NMATC = 0;       ///< number of composite materials
  int NMATS = 0;       ///< number of simple materials
  int NINCM = 0;       ///< the run ends when the increment number passes it
  int KMASS = 0;       ///< dynamics: 0 mass with each stiffness, 1 once
  int NSOLV = 0;       ///< code of the equation solver
  int KRENU = 0;       ///< 0: the deck's node numbering, 1: renumbered
  int KSMOO = 0;       ///< 1: smoothed nodal results of three-node elements
  int NLAYM = 0;       ///< greatest number of layers of a composite, as the deck states it
  int KACOP = 0;       ///< 2: coupled problem
  int NKRYLO = 0;      ///< GMRES: dimension of the Krylov subspace
  int NITER = 0;       ///< GMRES: greatest number of iterations
  double GMTOL = 0.0;  ///< GMRES: tolerance
  int NGPRI = 0;       ///< GMRES: above 0 reports on the log
  int NNODM = 0;       ///< greatest number of nodes of an element, by problem word
  int NFASE = 0;       ///< number of construction steps
  int unread27 = 0;    ///< read from the deck and kept; no reader
  int KFREC = 0;       ///< 1: the job takes part in the frequency records
};

/// Names of the job's files, by entry; the entry numbers are those of the extension table (1 to 21).
struct FileTable {
  std::array<std::string, 22> name;  ///< name[1] the deck, name[2] the listing, ...; name[0] unused

  [[nodiscard]] const std::string& operator[](int entry) const { return name[static_cast<std::size_t>(entry)]; }
  [[nodiscard]] std::string& operator[](int entry) { return name[static_cast<std::size_t>(entry)]; }
};

}  // namespace zema
