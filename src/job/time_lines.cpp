// Time lines and the progress line.
#include "job/time_lines.h"

#include <cmath>

#include "job/banners.h"
#include "job/job.h"

namespace zema {

namespace {

struct HoursMinutesSeconds {
  int hours;
  int minutes;
  int seconds;
};

HoursMinutesSeconds split(long seconds) {
  return {static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60)};
}

void startClock(Job& job) {
  static constexpr Layout startLine(R"(" -->>> TIEMPO " 5X I2 ":" I2 ":" I2)");
  PRESENT(job.listing());
  PRESENT(job.log());
  job.clock.TSTAR = job.clock.TIMUSE();
  const auto time = split(std::lround(job.clock.TSTAR));
  job.listing().write(startLine, time.hours, time.minutes, time.seconds);
  job.listing().blank();
}

void writeTimeLine(Job& job) {
  static constexpr Layout timeLine(R"(" -->>> TIEMPO " F15.7 20X "HORA:  " I2 ":" I2 ":" I2)");
  const auto time = split(std::lround(job.clock.TNOW));
  for (Channel* channel : {&job.listing(), &job.log()}) {
    channel->write(timeLine, job.clock.TNOW - job.clock.TSTAR, time.hours, time.minutes, time.seconds);
  }
}

void showProgress(Job& job, const Progress& progress) {
  static constexpr Layout progressLine(
      R"(" C.P.U: " I3 ":" I4 ":" I4 "  PASO :" I5 "  ITER :" I4 "   RATIO:" F8.2 "  REMAX:" F8.2)");
  const auto time = split(static_cast<long>(job.clock.TNOW - job.clock.TSTAR));
  std::string line;
  progressLine.append(line, time.hours, time.minutes, time.seconds, progress.INCRE, progress.IITER, progress.RATIO,
                      progress.REMAX);
  job.progress.show(line);
}

}  // namespace

void MAKINA(Job& job, ClockTask task, const Progress& progress) {
  job.IRUN.LUSAL = channel::listing;
  job.IRUN.LULOG = channel::log;
  if (task == ClockTask::start) {
    startClock(job);
    return;
  }
  job.clock.TNOW = job.clock.TIMUSE();
  if (task == ClockTask::timeLine) {
    writeTimeLine(job);
  } else {
    showProgress(job, progress);
  }
}

}  // namespace zema
