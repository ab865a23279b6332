// Head (words, version), values, checksum of all before it.
#include "restart/restart_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "foundation/errors.h"

namespace zema {
namespace {

constexpr std::string_view firstWords = "ZEMA restart data\n";
constexpr std::uint32_t formatVersion = 2;  // to be raised whenever what is written changes
constexpr std::size_t block = std::size_t{1} << 20;

[[noreturn]] void failed(std::string_view action, const std::string& path) {
  const int reason = errno;
  throw FileFault("cannot " + std::string(action) + " " + path + ": " + std::strerror(reason));
}

/// Brings the entry of a file in its folder to the disk.
void syncFolder(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  const std::string folder = parent.empty() ? "." : parent.string();
  const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;  // a folder that may be written but not read: the renaming holds all the same
  ::fsync(descriptor);
  ::close(descriptor);
}

}  // namespace

RestartWriter::RestartWriter(std::string path)
    : path_(std::move(path)), file_(Channel::open(path_ + ".new", OpenMode::fromStart)) {
  append(firstWords.data(), firstWords.size());
  append(&formatVersion, sizeof formatVersion);
}

RestartWriter::~RestartWriter() {
  if (!replaced_) ::unlink(file_.path().c_str());
}

void RestartWriter::append(const void* data, std::size_t count) {
  checksum_.add(data, count);
  const auto* from = static_cast<const char*>(data);
  while (count > 0) {
    const std::size_t piece = std::min(count, block);
    file_.buffer().append(from, piece);
    file_.commitBuffer();
    from += piece;
    count -= piece;
  }
}

void RestartWriter::bytes(void* data, std::size_t count) {
  append(data, count);
}

void RestartWriter::put(std::span<const double> values) {
  const std::uint64_t size = values.size();
  append(&size, sizeof size);
  append(values.data(), values.size_bytes());
}

void RestartWriter::replace(bool toDisk) {
  const std::uint64_t sum = checksum_.value();
  append(&sum, sizeof sum);
  if (toDisk) file_.sync();
  file_.close();
  if (std::rename(file_.path().c_str(), path_.c_str()) != 0) failed("replace", path_);
  replaced_ = true;
  if (toDisk) syncFolder(path_);
}

RestartReader::RestartReader(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "rb")) {
  if (!file_) failed("read", path_);
  std::error_code unknown;
  const std::uint64_t size = std::filesystem::file_size(path_, unknown);
  if (unknown) failed("measure", path_);
  if (size < firstWords.size() + sizeof formatVersion + sizeof(std::uint64_t))
    throw InputFault(path_ + " holds no restart data: it has " + std::to_string(size) + " bytes");
  checkHead();
  checkSum(size);
  std::rewind(file_.get());
  checkHead();
  left_ = size - firstWords.size() - sizeof formatVersion - sizeof(std::uint64_t);
}

void RestartReader::checkHead() {
  std::array<char, firstWords.size()> words{};
  std::uint32_t version = 0;
  read(words.data(), words.size());
  read(&version, sizeof version);
  if (std::string_view(words.data(), words.size()) != firstWords)
    throw InputFault(path_ + " holds no restart data of this program");
  if (version != formatVersion)
    throw InputFault(path_ + " holds restart data of version " + std::to_string(version) + "; this program reads " +
                     std::to_string(formatVersion));
}

void RestartReader::checkSum(std::uint64_t size) {
  std::rewind(file_.get());
  Checksum checksum;
  std::vector<char> piece(block);
  for (std::uint64_t left = size - sizeof(std::uint64_t); left > 0;) {
    const std::size_t count = std::min<std::uint64_t>(left, piece.size());
    read(piece.data(), count);
    checksum.add(piece.data(), count);
    left -= count;
  }
  std::uint64_t sum = 0;
  read(&sum, sizeof sum);
  if (sum != checksum.value())
    throw InputFault(path_ + " is damaged: it was cut short or altered, its checksum does not fit");
}

void RestartReader::read(void* data, std::size_t count) {
  if (std::fread(data, 1, count, file_.get()) != count) failed("read", path_);
}

void RestartReader::bytes(void* data, std::size_t count) {
  if (count > left_) throw InputFault(path_ + " ends too early: another build of the program wrote it");
  read(data, count);
  left_ -= count;
}

void RestartReader::finish() {
  if (left_ > 0) throw InputFault(path_ + " holds more than is expected: another build of the program wrote it");
}

}  // namespace zema
