// Forms the names of the job's files and connects them to their channels.
#include "job/file_set.h"

#include <array>
#include <cstdlib>
#include <string_view>

#include "job/banners.h"
#include "job/job.h"
#include "job/time_lines.h"

namespace zema {

namespace {

constexpr std::size_t longestJobName = 60;

/// Extension table; the entry number is the place plus 1.
constexpr std::array<std::string_view, 11> extensions = {
    ".dts", ".mec.sal", ".rst", ".mec.pos", ".din", ".arc", ".sec", ".mec.log", ".mec.sec", ".post.msh", ".post.res"};

/// Where the name proper begins, behind the folders: only its dots count.
std::size_t nameStart(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? 0 : slash + 1;
}

void formNames(Job& job, const std::string& CPROB1) {
  const std::size_t dot = CPROB1.rfind('.');
  const bool hasExtension = dot != std::string::npos && dot >= nameStart(CPROB1);
  const std::string stem = CPROB1.substr(0, hasExtension ? dot : nameStart(CPROB1));
  for (std::size_t i = 0; i < extensions.size(); ++i) {
    job.CFILE[static_cast<int>(i) + 1] = stem + std::string(extensions[i]);
  }
  const std::string& listing = job.CFILE[entry::listing];
  job.CFILE[entry::listingAgain] = listing;
  job.IRUN.LNAME = static_cast<int>(listing.find('.', nameStart(listing)));
  job.channels.setStem(stem);
}

/// Connects a channel to a file that must exist from now on but keeps what it holds until it is written to.
void reserve(Job& job, int number, const std::string& path, OpenMode firstWrite) {
  Channel::open(path, OpenMode::append).close();
  job.channels.assign(number, path, firstWrite);
}

void openDeck(Job& job, const std::string& CPROB1) {
  try {
    job.deck.emplace(job.CFILE[entry::deck]);
  } catch (const FileFault& fault) {
    const std::string hint = CPROB1.empty() ? " (the environment variable FOR005 names no deck)"
                             : job.CFILE[entry::deck] == CPROB1
                                 ? ""
                                 : " (FOR005 is " + CPROB1 + "; a deck's name ends in .dts)";
    throw FileFault(fault.what() + hint);
  }
}

void openChannels(Job& job, const std::string& CPROB1) {
  openDeck(job, CPROB1);
  reserve(job, channel::postMesh, job.CFILE[entry::postMesh], OpenMode::fromStart);
  reserve(job, channel::postResults, job.CFILE[entry::postResults], OpenMode::append);
  reserve(job, channel::pairs, job.CFILE[entry::pairs], OpenMode::fromStart);
  job.channels.assign(job.IRUN.LUSAL, job.CFILE[entry::listing], OpenMode::append);
  job.channels.open(job.IRUN.LUSAL);
  job.channels.assign(job.IRUN.LULOG, job.CFILE[entry::log], OpenMode::append);
  job.channels.open(job.IRUN.LULOG);
}

}  // namespace

std::string FILEDEF(const Job& job) {
  const char* value = std::getenv("FOR005");
  std::string name = value == nullptr ? "" : value;
  if (name.size() > longestJobName) {
    job.console.warn("the job name in FOR005 is longer than 60 characters and is cut: " + name);
    name.resize(longestJobName);
  }
  return name;
}

void INICIA(Job& job, const std::string& CPROB1) {
  job.IRUN = RunRecord{};
  CARTEL(job.console);
  formNames(job, CPROB1);
  openChannels(job, CPROB1);
  MAKINA(job, ClockTask::start);
  MAKINA(job, ClockTask::timeLine);
  MAKINA(job, ClockTask::progress);
}

std::string curveFileName(const Job& job, int i) {
  constexpr int secondLetters = 25;
  const int first = (i - 1) / secondLetters;
  const int second = (i - 1) % secondLetters;
  std::string name = job.CFILE[entry::listingAgain].substr(0, static_cast<std::size_t>(job.IRUN.LNAME));
  name += '.';
  name += static_cast<char>('A' + first);
  name += static_cast<char>('A' + second);
  return name;
}

}  // namespace zema
