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

std::int64_t lengthOf(const std::string& path) {
  std::error_code none;
  const std::uintmax_t length = std::filesystem::file_size(path, none);
  return none ? -1 : static_cast<std::int64_t>(length);
}

/// Checksum of a text without its bytes from `from` to `to`.
std::uint64_t fingerprint(std::string_view text, std::size_t from, std::size_t to) {
  Checksum checksum;
  checksum.add(text.substr(0, from));
  checksum.add(text.substr(to));
  return checksum.value();
}

ReadPosition positionIn(const std::optional<CardReader>& reader) {
  if (!reader) return {};
  const long position = reader->position();
  return {position, fingerprint(reader->text().substr(0, static_cast<std::size_t>(position)), 0, 0)};
}

ReadPosition positionInDeck(const Job& job, std::int64_t position) {
  const auto [from, to] = job.startWord;
  const std::string_view before = job.deck->text().substr(0, static_cast<std::size_t>(position));
  return {position - static_cast<std::int64_t>(to), fingerprint(before, from, to)};
}

[[noreturn]] void otherText(const std::string& file, std::int64_t position) {
  throw InputFault(file + " is not the file that the restart data belong to: its text up to byte " +
                   std::to_string(position) + " has changed (of a deck only the start word may)");
}

void checkText(const std::string& file, std::string_view text, const ReadPosition& saved) {
  const auto position = static_cast<std::size_t>(saved.position);
  if (position > text.size() || fingerprint(text.substr(0, position), 0, 0) != saved.fingerprint)
    otherText(file, saved.position);
}

void openAndCheck(std::optional<CardReader>& reader, const std::string& file, const ReadPosition& saved) {
  if (saved.position < 0) return;
  reader.emplace(file);
  checkText(file, reader->text(), saved);
  reader->seek(static_cast<long>(saved.position));
}

}  // namespace

FilePositions filePositions(Job& job, const Model& model) {
  FilePositions now{positionInDeck(job, job.deck->position()), positionIn(job.dynamicData), positionIn(job.pairs), {}};
  job.channels.flushAll();
  for (const std::string& file : continuedFiles(job, model)) now.lengths.push_back(lengthOf(file));
  return now;
}

void transfer(Archive& archive, FilePositions& positions) {
  archive.section("files");
  for (ReadPosition* read : {&positions.IPOS1, &positions.IPOS16, &positions.pairs})
    archive(read->position, read->fingerprint);
  archive(positions.lengths);
}

void checkPositions(const Job& job, const Model& model, const FilePositions& saved) {
  const std::int64_t position = saved.IPOS1.position + static_cast<std::int64_t>(job.startWord.second);
  if (position > static_cast<std::int64_t>(job.deck->size()) ||
      positionInDeck(job, position).fingerprint != saved.IPOS1.fingerprint)
    otherText(job.deck->fileName(), position);
  const std::vector<std::string> files = continuedFiles(job, model);
  if (files.size() != saved.lengths.size()) otherText(job.deck->fileName(), position);
  for (std::size_t i = 0; i < files.size(); ++i) {
    const Channel* open = job.channels.find(files[i]);
    const std::int64_t length = open == nullptr ? lengthOf(files[i]) : open->lengthWhenOpened();
    if (length < saved.lengths[i])
      throw FileFault("cannot go on with " + files[i] + ": the restart data belong to " +
                      std::to_string(saved.lengths[i]) + " bytes of it, and it has " +
                      std::to_string(std::max<std::int64_t>(length, 0)));
  }
}

void takeUp(Job& job, const Model& model, const FilePositions& saved) {
  openAndCheck(job.dynamicData, job.CFILE[entry::dynamicData], saved.IPOS16);
  openAndCheck(job.pairs, job.CFILE[entry::pairs], saved.pairs);
  job.deck->seek(static_cast<long>(saved.IPOS1.position) + static_cast<long>(job.startWord.second));
  const std::vector<std::string> files = continuedFiles(job, model);
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (saved.lengths[i] < 0) {
      std::filesystem::remove(files[i]);
    } else if (Channel* open = job.channels.find(files[i])) {
      open->cutTo(saved.lengths[i]);
    } else {
      std::filesystem::resize_file(files[i], static_cast<std::uintmax_t>(saved.lengths[i]));
    }
  }
}

}  // namespace zema
