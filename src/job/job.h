// A job in hand: its records, its files, its clock and its console.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/card_reader.h"
#include "foundation/channel.h"
#include "foundation/clock.h"
#include "foundation/parallel.h"
#include "foundation/progress.h"
#include "job/console.h"
#include "job/phase_times.h"
#include "job/run_records.h"

namespace zema {

/// Numbers of the channels that have a file of the job's table.
namespace channel {
inline constexpr int deck = 1;
inline constexpr int listing = 2;
inline constexpr int postMesh = 3;
inline constexpr int postResults = 4;
inline constexpr int pairs = 6;
inline constexpr int log = 8;
inline constexpr int iterations = 26;      ///< iteration blocks of the mechanical field
inline constexpr int thermalListing = 29;  ///< listing of the thermal field
inline constexpr int thermalLog = 31;      ///< log of the thermal field; also takes the summary of times
inline constexpr int curves = 35;          ///< curve i is written on this channel plus i
inline constexpr int elasticRecords = 38;  ///< text of the elastic matrices of a frequency study
inline constexpr int frequencies = 161;    ///< "frecuencias.dts"
}  // namespace channel

/// Everything about the run that is not the problem itself.
struct Job {
  RunRecord IRUN;       ///< counters and channels of the run
  TextRecord CTEXT;     ///< problem word, start word, title
  ControlRecord KCONT;  ///< sizes and switches from the head of the deck
  FileTable CFILE;      ///< names of the job's files
  Channels channels;
  std::optional<CardReader> deck;           ///< channel 1, the data deck
  std::vector<TextPiece> changeable{};      ///< what a restart may change: start word, NINCM, NLOAD, in order
  std::optional<CardReader> dynamicData{};  ///< channel 16, opened at the first dynamic load step
  std::optional<CardReader> pairs{};        ///< channel 6, the .arc file, once a pair table has been read from it
  Clock clock;
  Console console;
  ProgressLine progress;
  WorkerPool workers;
  PhaseTimes times;

  [[nodiscard]] Channel& listing() { return channels[IRUN.LUSAL]; }
  [[nodiscard]] Channel& log() { return channels[IRUN.LULOG]; }
  [[nodiscard]] CardReader& cards() { return *deck; }
};

/// Says on console and log what a user should know although it is no fault.
inline void notify(Job& job, const std::string& text) {
  job.console.warn(text);
  job.log().line(" ---> " + text);
}

}  // namespace zema
