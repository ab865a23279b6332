// How a run ends: reports of stops, the summary of times, and the exit status.
#pragma once

#include <exception>
#include <string_view>

#include "foundation/errors.h"

namespace zema {

class Channel;
struct Job;

/// How far the run had come when it stopped.
enum class RunStage { beforeKernel, inKernel };

/// Exit status of the process.
enum class ExitStatus : int {
  normal = 0,       ///< a normal end, or a stop through `RUNEND`
  stopped = 1,      ///< a stop on the spot or in the constitutive block
  inputFault = 2,   ///< a fault of the deck
  fileFault = 3,    ///< a file that cannot be opened, read or written
  programFault = 4  ///< memory exhausted, or a mistake of the program
};

/// `CHECK4`: writes the message on the listing and ends the run through `RUNEND` with the "stopped in" line.
/// A, B: two numbers shown with it. Throws RunEnd.
[[noreturn]] void CHECK4(Channel& listing, std::string_view CMESS, std::string_view CPARA, double A = 0.0,
                         double B = 0.0);

/// `SUMMAR`: the summary of times, with the words of a stop.
void SUMMAR(Job& job);

/// Reports the exception that ended the run where it belongs (listing, log, console, "ErrMsg.dat"), closes the files
/// and says the exit status. Never throws.
[[nodiscard]] ExitStatus reportStop(Job& job, RunStage stage, const std::exception_ptr& reason) noexcept;

}  // namespace zema
