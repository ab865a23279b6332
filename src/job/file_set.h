// The job's name and its files.
#pragma once

#include <string>

namespace zema {

struct Job;

/// Places of the file table.
namespace entry {
inline constexpr int deck = 1;
inline constexpr int listing = 2;
inline constexpr int restart = 3;
inline constexpr int dynamicData = 5;
inline constexpr int pairs = 6;
inline constexpr int log = 8;
inline constexpr int postMesh = 10;
inline constexpr int postResults = 11;
inline constexpr int listingAgain = 21;
}  // namespace entry

/// `FILEDEF`: the deck's name with its extension from the environment variable FOR005, cut to 60 characters;
/// empty when the variable is not set.
[[nodiscard]] std::string FILEDEF(const Job& job);

/// `INICIA`: sets the run record, forms the file names from the job name CPROB1, opens the channels, writes the
/// banners and starts the clock. Throws FileFault for a file that cannot be opened.
void INICIA(Job& job, const std::string& CPROB1);

/// File name of curve i (from 1): the job name up to the first dot behind its folders, a dot and two letters, AA, AB
/// ... AY, BA ...
[[nodiscard]] std::string curveFileName(const Job& job, int i);

}  // namespace zema
