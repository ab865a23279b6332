// Output files: buffered, checked writing, and the run's files by number.
#include "foundation/channel.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <utility>

#include "foundation/errors.h"

namespace zema {
namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 20;

[[noreturn]] void failed(std::string_view action, const std::string& path) {
  const int reason = errno;
  throw FileFault("cannot " + std::string(action) + " " + path + ": " + std::strerror(reason));
}

/// Writes all of text; false with errno set when the system refuses.
bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

Channel::Channel(std::string path, int descriptor, long length)
    : path_(std::move(path)), descriptor_(descriptor), lengthWhenOpened_(length) {}

Channel Channel::open(std::string path, OpenMode mode) {
  const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_APPEND | (mode == OpenMode::fromStart ? O_TRUNC : 0);
  const int descriptor = ::open(path.c_str(), flags, 0666);
  if (descriptor < 0) failed("open", path);
  return {std::move(path), descriptor, std::max(::lseek(descriptor, 0, SEEK_END), off_t{0})};
}

Channel::Channel(Channel&& other) noexcept
    : path_(std::move(other.path_)),
      buffer_(std::exchange(other.buffer_, {})),
      descriptor_(std::exchange(other.descriptor_, -1)),
      lengthWhenOpened_(other.lengthWhenOpened_) {}

Channel& Channel::operator=(Channel&& other) noexcept {
  std::swap(path_, other.path_);
  std::swap(buffer_, other.buffer_);
  std::swap(descriptor_, other.descriptor_);
  std::swap(lengthWhenOpened_, other.lengthWhenOpened_);
  return *this;
}

Channel::~Channel() {
  if (descriptor_ < 0) return;
  writeAll(descriptor_, buffer_);
  ::close(descriptor_);
}

void Channel::line(std::string_view text) {
  buffer_ += text;
  endLine();
}

void Channel::blank(int lines) {
  for (int i = 0; i < lines; ++i) endLine();
}

void Channel::endLine() {
  buffer_ += '\n';
  commitBuffer();
}

void Channel::commitBuffer() {
  assert(descriptor_ >= 0 && "a closed channel is written to");
  if (buffer_.size() >= bufferSize) flush();
}

void Channel::flush() {
  const bool written = writeAll(descriptor_, buffer_);
  buffer_.clear();  // after a fault too, or the destructor would write the front part of it once more
  if (!written) failed("write", path_);
}

void Channel::sync() {
  flush();
  if (::fsync(descriptor_) != 0) failed("write", path_);
}

void Channel::close() {
  if (descriptor_ < 0) return;
  const int descriptor = std::exchange(descriptor_, -1);
  const bool written = writeAll(descriptor, std::exchange(buffer_, {}));
  const int reason = errno;
  const bool closed = ::close(descriptor) == 0;
  if (!written) errno = reason;
  if (!written || !closed) failed("write", path_);
}

long Channel::position() {
  flush();
  const off_t end = ::lseek(descriptor_, 0, SEEK_END);
  if (end < 0) failed("measure", path_);
  return end;
}

void Channel::cutTo(long bytes) {
  if (const long length = position(); bytes < 0 || length < bytes)
    throw FileFault("cannot cut " + path_ + " to " + std::to_string(bytes) + " bytes: it has " +
                    std::to_string(length));
  if (::ftruncate(descriptor_, bytes) != 0) failed("cut", path_);
}

void Channels::assign(int number, std::string path, OpenMode mode) {
  close(number);
  assigned_.insert_or_assign(number, Assignment{std::move(path), mode});
}

std::string Channels::pathOf(int number) const {
  const auto assignment = assigned_.find(number);
  return assignment == assigned_.end() ? stem_ + ".mec." + std::to_string(number) : assignment->second.path;
}

const Channel* Channels::find(const std::string& path) const {
  const auto found = std::ranges::find_if(open_, [&path](const auto& one) { return one.second.path() == path; });
  return found == open_.end() ? nullptr : &found->second;
}

Channel* Channels::find(const std::string& path) {
  return const_cast<Channel*>(std::as_const(*this).find(path));  // NOLINT: this is not const
}

void Channels::open(int number) {
  static_cast<void>((*this)[number]);
}

Channel& Channels::operator[](int number) {
  if (const auto found = open_.find(number); found != open_.end()) return found->second;
  auto assignment = assigned_.find(number);
  if (assignment == assigned_.end()) assignment = assigned_.insert({number, {pathOf(number), OpenMode::append}}).first;
  Channel& channel =
      open_.emplace(number, Channel::open(assignment->second.path, assignment->second.mode)).first->second;
  assignment->second.mode = OpenMode::append;  // when the run comes back to the file it goes on at its end
  return channel;
}

void Channels::close(int number) {
  const auto found = open_.find(number);
  if (found == open_.end()) return;
  Channel channel = std::move(found->second);
  open_.erase(found);
  channel.close();
}

void Channels::flushAll() {
  for (auto& [number, channel] : open_) channel.flush();
}

void Channels::closeAll() {
  while (!open_.empty()) close(open_.begin()->first);
}

}  // namespace zema
