// What the process asks of the system before anything else.
#pragma once

namespace zema {

/// Lets a write to a closed console or beyond a file-size limit fail with an error instead of ending the process.
void reportFailedWritesAsErrors();

/// Connects standard streams that the caller has closed to nowhere: otherwise the first files of the job would take
/// their place and receive what is meant for the console.
void secureStandardStreams();

}  // namespace zema
