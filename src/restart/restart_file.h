// The restart file: written beside the old one and put in its place when it is whole; read only when it is undamaged.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "foundation/channel.h"
#include "foundation/checksum.h"
#include "restart/archive.h"

namespace zema {

/// Writes `<path>.new`. At any moment the file at `path` is the old one or the new one, each of them whole.
class RestartWriter final : public Archive {
 public:
  /// Throws FileFault.
  explicit RestartWriter(std::string path);
  /// Removes the new file when it has not taken the place of the old one, as after a full disk.
  ~RestartWriter() override;
  RestartWriter(const RestartWriter&) = delete;
  RestartWriter& operator=(const RestartWriter&) = delete;

  void bytes(void* data, std::size_t count) override;
  [[nodiscard]] bool restores() const override { return false; }
  /// Values that stay as they are; to be restored as a vector.
  void put(std::span<const double> values);
  /// Puts the new file in the place of the old one; toDisk: not before all of it is on the disk, so that it survives
  /// the end of the machine and not only that of the program. Throws FileFault.
  void replace(bool toDisk);

 private:
  void append(const void* data, std::size_t count);

  std::string path_;
  Channel file_;
  Checksum checksum_;
  bool replaced_ = false;
};

/// Reads what a RestartWriter wrote.
class RestartReader final : public Archive {
 public:
  /// Throws FileFault for a file that cannot be read, InputFault for one that is damaged or of another version.
  explicit RestartReader(const std::string& path);

  void bytes(void* data, std::size_t count) override;
  [[nodiscard]] bool restores() const override { return true; }
  /// Throws InputFault when something is left in the file.
  void finish();

 private:
  struct Close {
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): this is what owns the file
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  void read(void* data, std::size_t count);
  void checkHead();
  void checkSum(std::uint64_t size);

  std::string path_;
  std::unique_ptr<std::FILE, Close> file_;
  std::uint64_t left_ = 0;  // bytes of values that have not been read
};

}  // namespace zema
