// Where a run stands in the files that it reads and in those that it writes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zema {

class Archive;
struct Job;
struct Model;

/// Place in a file that is read, and a checksum of the text before it; -1 when the file has not been opened.
struct ReadPosition {
  std::int64_t position = -1;
  std::uint64_t fingerprint = 0;
};

/// Positions of the files of a run. Place and checksum of the deck leave out what a restart may change of it.
struct FilePositions {
  ReadPosition IPOS1;   ///< the deck
  ReadPosition IPOS16;  ///< the dynamic data
  ReadPosition pairs;   ///< the pair table
  /// Bytes of the files that a restart goes on with, -1 where there is none: listing (IPOS2), post results (IPOS4), log
  /// (IPOS8), iterations, thermal files, the frequency study's files, and the curve files (ILCUR).
  std::vector<std::int64_t> lengths;
};

/// The positions as they are now; hands all that was written to the system.
[[nodiscard]] FilePositions filePositions(Job& job, const Model& model);

void transfer(Archive& archive, FilePositions& positions);

/// Brings the files that a restart goes on with to the disk, up to the positions as they are now: restart data that
/// outlive the machine must not belong to more of them than it has kept. Throws FileFault.
void bringToDisk(const Job& job, const Model& model, const FilePositions& now);

/// Throws InputFault when the deck is not the one of the saved positions, FileFault when a file that was written is
/// missing, has become shorter or cannot be written. Changes nothing.
void checkPositions(const Job& job, const Model& model, const FilePositions& saved);

/// Takes up reading at the saved positions and cuts what was written at its saved length (`LASTLINE`, `ARC_COMPLEMT`).
/// Throws InputFault, before anything is cut, when another file that is read is not the one of the saved positions.
void takeUp(Job& job, const Model& model, const FilePositions& saved);

}  // namespace zema
