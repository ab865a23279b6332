// Reports of stops: `RUNEND`, `ENDSERROR` and the summary of times.
#include "job/run_end.h"

#include <new>
#include <string>

#include "job/job.h"

namespace zema {

namespace {

constexpr Layout messageLine(R"(" -->" A70)");
constexpr Layout stopLines(R"(" -->" A70 / 10X 2(3X F12.4))");

/// A message as a variable of 64 characters, padded with blanks.
std::string padded(std::string_view message) {
  std::string text(message.substr(0, 64));
  text.resize(64, ' ');
  return text;
}

void writeStopHeading(Channel& channel) {
  static constexpr Layout stars(R"(5X 34("* "))");
  channel.blank(2);
  channel.write(stars);
}

/// `RUNEND`: the reason of a stop on the listing.
void RUNEND(Job& job, RunStage stage, const RunEnd& stop) {
  Channel& listing = job.listing();
  writeStopHeading(listing);
  listing.blank();
  listing.line(std::string(25, ' ') + "AN ERROR HAS BEEN DETECTED :");
  listing.blank();
  listing.write(stopLines, padded(stop.what()), stop.A(), stop.B());
  if (stage == RunStage::inKernel) {
    SUMMAR(job);
  }
  job.console.warn("the run was stopped, see the end of " + listing.path() + ":" + stop.what() +
                   (stop.explanation().empty() ? "" : "\n" + stop.explanation()));
  job.channels.closeAll();
}

/// `ENDSERROR`: the reason of a stop in the constitutive block, on a file of its own.
void ENDSERROR(Job& job, const ConstitutiveStop& stop) {
  Channel file = Channel::open("ErrMsg.dat", OpenMode::fromStart);
  writeStopHeading(file);
  file.write(stopLines, padded(stop.what()), stop.A(), stop.B());
  file.close();
  job.console.warn(stop.what() + std::string("\n") + stop.explanation());
  job.channels.closeAll();
}

void stopOnTheSpot(Job& job, const PlainStop& stop) {
  job.console.say(stop.console());
  if (!stop.listing().empty()) {
    if (stop.console().empty()) {
      const std::size_t first = stop.listing().find_first_not_of(" \n");
      job.console.warn(stop.listing().substr(first == std::string::npos ? 0 : first));
    }
    job.listing().buffer() += stop.listing();
    job.listing().commitBuffer();
  }
  job.channels.closeAll();
}

void reportFault(Job& job, std::string_view text) {
  job.console.warn(text);
  if (job.channels.isOpen(channel::listing)) {
    job.listing().line("zema: " + std::string(text));
  }
  job.channels.closeAll();
}

ExitStatus report(Job& job, RunStage stage, const std::exception_ptr& reason) {
  try {
    std::rethrow_exception(reason);
  } catch (const RunEnd& stop) {
    RUNEND(job, stage, stop);
    return ExitStatus::normal;
  } catch (const ConstitutiveStop& stop) {
    ENDSERROR(job, stop);
    return ExitStatus::stopped;
  } catch (const PlainStop& stop) {
    stopOnTheSpot(job, stop);
    return ExitStatus::stopped;
  } catch (const InputFault& fault) {
    reportFault(job, fault.what());
    return ExitStatus::inputFault;
  } catch (const FileFault& fault) {
    reportFault(job, fault.what());
    return ExitStatus::fileFault;
  } catch (const std::bad_alloc&) {
    reportFault(job, "the machine's memory does not hold a model of this size");
  } catch (const std::exception& mistake) {
    reportFault(job, std::string("a mistake of the program itself: ") + mistake.what());
  }
  return ExitStatus::programFault;
}

double share(double part, double whole) {
  return whole > 0.0 ? 100.0 * part / whole : 0.0;
}

void writeTimes(Channel& channel, const PhaseTimes& times, double total) {
  static constexpr Layout heading(R"(10X "SUMMARY OF COMPUTING TIMES :" / 10X 26("="))");
  static constexpr Layout totalLine(R"(15X "TOTAL CPU TIME             :" E10.2)");
  static constexpr Layout mainLine(R"(15X A E10.2 " (" E6.2 ' % )')");
  static constexpr Layout partLine(R"(20X A E10.2 " (" E6.2 ' % )')");
  const auto phase = [&](std::string_view label, double time) {
    channel.write(mainLine, label, time, share(time, total));
  };
  const auto part = [&](std::string_view label, double time, double group) {
    channel.write(partLine, label, time, share(time, group));
  };
  channel.write(heading);
  channel.write(totalLine, total);
  phase("COMPUTING MATRICES         :", times.matrices());
  part("INITIAL COMPUTATIONS       :", times.initial, times.matrices());
  part("STIFFNESS MATRIX           :", times.stiffness, times.matrices());
  part("ASSEMBLY PROCESS           :", times.assembly, times.matrices());
  phase("SOLVING EQUATIONS          :", times.solving());
  part("COMPUTING DECOMPOSITION    :", times.decomposition, times.solving());
  part("SOLVING LOWER MATRIX       :", times.lower, times.solving());
  part("SOLVING UPPER MATRIX       :", times.upper, times.solving());
  phase("UPDATING DISPLACEMENTS     :", times.updating);
  phase("EVALUATING RESIDUAL FORCES :", times.residual);
  phase("CHECKING CONVERGENCE       :", times.convergence);
  phase("I/O   OPERATIONS           :", times.transfers());
  part("INPUT OPERATIONS           :", times.input, times.transfers());
  part("OUTPUT TO EXTERNAL FILES   :", times.output, times.transfers());
  part("I/O RESTART FILE           :", times.restart, times.transfers());
  phase("RENUMBERING OPERATIONS     :", times.renumbering);
  phase("OTHER OPERATIONS           :", total - times.counted());
}

}  // namespace

void CHECK4(Channel& listing, std::string_view CMESS, std::string_view CPARA, double A, double B) {
  listing.write(messageLine, padded(CMESS));
  throw RunEnd(std::string(CPARA), A, B);
}

void SUMMAR(Job& job) {
  static constexpr Layout stopCard(R"(// 25X 30("=") / 33X "STOP CARD FOUND" / 25X 30("=") //)");
  const double total = job.clock.TIMUSE() - job.clock.TSTAR;
  for (Channel* channel : {&job.listing(), &job.log()}) {
    channel->write(stopCard);
  }
  for (Channel* channel : {&job.log(), &job.channels[channel::thermalLog]}) {
    writeTimes(*channel, job.times, total);
  }
  for (Channel* channel : {&job.listing(), &job.log()}) {
    channel->line(" ZEMA: * * * END OF ANALYSIS * * *");
  }
}

ExitStatus reportStop(Job& job, RunStage stage, const std::exception_ptr& reason) noexcept {
  job.progress.finish();
  try {
    return report(job, stage, reason);
  } catch (const FileFault& fault) {
    job.console.warn(fault.what());
    return ExitStatus::fileFault;
  } catch (...) {
    job.console.warn("the end of the run could not be reported");
    return ExitStatus::programFault;
  }
}

}  // namespace zema
