// Saves the state of a run after an increment, and takes a run up from there.
#pragma once

namespace zema {

struct Analysis;

enum class RestartTask { restore = 0, save = 1 };

/// `SAVE_START`: save writes the whole state to the restart file in one step that cannot be seen half done. restore
/// reads it into an analysis that has been prepared, sets the loops to the increment after it, goes on reading the deck
/// where it was saved, and cuts the files that the run wrote beyond it. Throws FileFault and InputFault, before
/// any file is changed, for restart data that are missing, damaged or of another deck or program.
void SAVE_START(Analysis& analysis, RestartTask task);

}  // namespace zema
