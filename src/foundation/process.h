// Signals that would end a run without a word.
#pragma once

namespace zema {

/// Lets a write to a closed console or beyond a file-size limit fail with an error instead of ending the process.
void reportFailedWritesAsErrors();

}  // namespace zema
