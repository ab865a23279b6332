// Output files: one file with a buffer, and the run's files by number.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "foundation/layout.h"

namespace zema {

enum class OpenMode { fromStart, append };

/// One output file with a buffer of 1 MiB. Every write is checked: FileFault names the path and the system's reason.
class Channel {
 public:
  /// Opens or makes the file; fromStart empties it. Throws FileFault.
  [[nodiscard]] static Channel open(std::string path, OpenMode mode);

  Channel(Channel&& other) noexcept;
  Channel& operator=(Channel&& other) noexcept;
  Channel(const Channel&) = delete;
  Channel& operator=(const Channel&) = delete;
  /// Writes what is left and closes, without throwing: call close() to learn of a fault.
  ~Channel();

  /// Writes the items in the layout's fields, and the line end.
  template <class... Items>
  void write(const Layout& layout, const Items&... items) {
    layout.append(buffer_, items...);
    endLine();
  }
  /// Writes one line as it stands, and the line end.
  void line(std::string_view text);
  void blank(int lines = 1);

  /// For writers of bulk data: append to the buffer, then call commitBuffer() every few lines.
  [[nodiscard]] std::string& buffer() { return buffer_; }
  void commitBuffer();

  /// Hands all that was written to the system.
  void flush();
  /// Flushes and brings the file to the disk.
  void sync();
  /// Flushes and closes; nothing happens when it is closed already.
  void close();

  /// Bytes in the file, with those that still wait in the buffer.
  [[nodiscard]] long position();
  /// Cuts the file to `bytes`, for a restart that goes on from there; throws FileFault when the file is shorter.
  void cutTo(long bytes);

  [[nodiscard]] const std::string& path() const { return path_; }
  /// Bytes that the file had before anything was written here.
  [[nodiscard]] long lengthWhenOpened() const { return lengthWhenOpened_; }

 private:
  Channel(std::string path, int descriptor, long length);

  void endLine();

  std::string path_;
  std::string buffer_;
  int descriptor_ = -1;  // -1: closed
  long lengthWhenOpened_ = 0;
};

/// The output files of a run by number. A number that was never assigned is the file `<stem>.mec.<number>`, appended
/// to.
class Channels {
 public:
  /// The stem of default names: the job name without extensions.
  void setStem(std::string stem) { stem_ = std::move(stem); }

  /// Says which file a number stands for; it is opened at its first use. A file open under that number is closed.
  void assign(int number, std::string path, OpenMode mode);
  /// Opens the file of a number now; nothing happens when it is open.
  void open(int number);
  /// The open file of a number; opens it at first use.
  [[nodiscard]] Channel& operator[](int number);
  [[nodiscard]] bool isOpen(int number) const { return open_.contains(number); }
  /// The file that a number stands for.
  [[nodiscard]] std::string pathOf(int number) const;
  /// The channel that is open on a file; null when there is none.
  [[nodiscard]] Channel* find(const std::string& path);
  [[nodiscard]] const Channel* find(const std::string& path) const;

  /// Closes a file; the number keeps its name and would be appended to when used again. A number not open is left
  /// alone.
  void close(int number);
  void flushAll();
  void closeAll();

 private:
  struct Assignment {
    std::string path;
    OpenMode mode = OpenMode::append;
  };

  std::string stem_;
  std::map<int, Assignment> assigned_;
  std::map<int, Channel> open_;
};

}  // namespace zema
