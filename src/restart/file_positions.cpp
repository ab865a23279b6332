// Lengths, places and checksums of the files of a run.
#include "restart/file_positions.h"

#include <algorithm>
#include <filesystem>

#include "foundation/checksum.h"
#include "job/file_set.h"
#include "job/job.h"
#include "model/model.h"
#include "restart/archive.h"

namespace zema {
namespace {

/// The files that a restart goes on with, always in the same order.
std::vector<std::string> continuedFiles(const Job& job, const Model& model) {
  std::vector<std::string> files = {job.CFILE[entry::listing], job.CFILE[entry::postResults], job.CFILE[entry::log]};
  for (const int number : {channel::iterations, channel::thermalListing, channel::thermalLog, channel::elasticRecords})
    files.push_back(job.channels.pathOf(number));
  if (model.control.KFREC == 1) files.insert(files.end(), {"Danyo.txt", "Co.txt", "Csec.txt", "Strsg.txt"});
  for (int i = 1; i <= static_cast<int>(model.curves.size()) + 1; ++i) files.push_back(curveFileName(job, i));
  return files;
}

std::int64_t changeableBytes(const std::vector<TextPiece>& pieces) {
  std::int64_t bytes = 0;
  for (const TextPiece& piece : pieces) bytes += static_cast<std::int64_t>(piece.end - piece.begin);
  return bytes;
}

std::int64_t lengthOf(const std::string& path) {
  std::error_code none;
  const std::uintmax_t length = std::filesystem::file_size(path, none);
  return none ? -1 : static_cast<std::int64_t>(length);
}

/// End of a text without some pieces of it, and its checksum.
ReadPosition measure(std::string_view text, const std::vector<TextPiece>& without = {}) {
  Checksum checksum;
  std::size_t from = 0;
  for (const TextPiece& piece : without) {
    checksum.add(text.substr(from, piece.begin - from));
    from = piece.end;
  }
  checksum.add(text.substr(from));
  return {static_cast<std::int64_t>(text.size()) - changeableBytes(without), checksum.value()};
}

ReadPosition positionIn(const std::optional<CardReader>& reader) {
  return reader ? measure(reader->text().substr(0, static_cast<std::size_t>(reader->position()))) : ReadPosition{};
}

ReadPosition positionInDeck(const Job& job, std::int64_t position) {
  return measure(job.deck->text().substr(0, static_cast<std::size_t>(position)), job.changeable);
}

/// Where reading of the deck in hand goes on.
std::int64_t placeInDeck(const Job& job, const FilePositions& saved) {
  return saved.IPOS1.position + changeableBytes(job.changeable);
}

[[noreturn]] void otherText(const std::string& file, std::int64_t position) {
  throw InputFault(file + " is not the file that the restart data belong to: its text up to byte " +
                   std::to_string(position) + " has changed (of a deck only start word, NINCM and NLOAD may)");
}

void checkText(const std::string& file, std::string_view text, const ReadPosition& saved) {
  const auto position = static_cast<std::size_t>(saved.position);
  if (position > text.size() || measure(text.substr(0, position)).fingerprint != saved.fingerprint)
    otherText(file, saved.position);
}

void openAndCheck(std::optional<CardReader>& reader, const std::string& file, const ReadPosition& saved) {
  if (saved.position < 0) return;
  reader.emplace(file);
  checkText(file, reader->text(), saved);
  reader->seek(static_cast<long>(saved.position));
}

/// A file that a restart goes on with: long enough and writable.
void checkContinued(const std::string& file, std::int64_t saved, const Channel* open) {
  const std::int64_t length = open == nullptr ? lengthOf(file) : open->lengthWhenOpened();
  if (length < saved)
    throw FileFault("cannot go on with " + file + ": the restart data belong to " + std::to_string(saved) +
                    " bytes of it, and it " + (length < 0 ? "is missing" : "has " + std::to_string(length)));
  if (open == nullptr) Channel::open(file, OpenMode::append).close();
}

/// A file that did not exist when the state was saved.
void removeFile(const std::string& file) {
  std::error_code fault;
  std::filesystem::remove(file, fault);
  if (fault) throw FileFault("cannot remove " + file + ": " + fault.message());
}

}  // namespace

FilePositions filePositions(Job& job, const Model& model) {
  FilePositions now{positionInDeck(job, job.deck->position()), positionIn(job.dynamicData), positionIn(job.pairs), {}};
  job.channels.flushAll();
  for (const std::string& file : continuedFiles(job, model)) now.lengths.push_back(lengthOf(file));
  return now;
}

void bringToDisk(const Job& job, const Model& model, const FilePositions& now) {
  const std::vector<std::string> files = continuedFiles(job, model);
  for (std::size_t i = 0; i < files.size(); ++i)
    if (now.lengths[i] >= 0) Channel::open(files[i], OpenMode::append).sync();
}

void transfer(Archive& archive, FilePositions& positions) {
  archive.section("files");
  for (ReadPosition* read : {&positions.IPOS1, &positions.IPOS16, &positions.pairs})
    archive(read->position, read->fingerprint);
  archive(positions.lengths);
}

void checkPositions(const Job& job, const Model& model, const FilePositions& saved) {
  const std::int64_t position = placeInDeck(job, saved);
  if (position > static_cast<std::int64_t>(job.deck->size()) ||
      position < static_cast<std::int64_t>(job.changeable.back().end) ||
      positionInDeck(job, position).fingerprint != saved.IPOS1.fingerprint)
    otherText(job.deck->fileName(), position);
  const std::vector<std::string> files = continuedFiles(job, model);
  if (files.size() != saved.lengths.size()) otherText(job.deck->fileName(), position);
  for (std::size_t i = 0; i < files.size(); ++i)
    if (saved.lengths[i] >= 0) checkContinued(files[i], saved.lengths[i], job.channels.find(files[i]));
}

void takeUp(Job& job, const Model& model, const FilePositions& saved) {
  openAndCheck(job.dynamicData, job.CFILE[entry::dynamicData], saved.IPOS16);
  openAndCheck(job.pairs, job.CFILE[entry::pairs], saved.pairs);
  job.deck->seek(placeInDeck(job, saved));
  const std::vector<std::string> files = continuedFiles(job, model);
  for (std::size_t i = 0; i < files.size(); ++i)
    if (saved.lengths[i] < 0) removeFile(files[i]);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (saved.lengths[i] < 0) continue;
    if (Channel* open = job.channels.find(files[i])) {
      open->cutTo(saved.lengths[i]);
    } else {
      Channel::open(files[i], OpenMode::append).cutTo(saved.lengths[i]);
    }
  }
}

}  // namespace zema
