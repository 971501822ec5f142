#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace seedmote::platform {

// A small file of which only its owner knows the contents (mode 0600), read and replaced whole. Several
// programs may use it at once. Where it is a link, the file that it leads to is meant. What goes wrong is
// told as the system says it, in words for people. One thread at a time.
class PrivateFile final {
 public:
  static constexpr std::size_t kLargest = std::size_t{16} << 20;  // bytes

  explicit PrivateFile(std::string path) : path_(std::move(path)) {}

  // Tells whether the file was replaced or changed since.
  struct Identity {
    dev_t device = 0;
    ino_t number = 0;
    off_t size = 0;
    std::int64_t changed = 0;  // nanoseconds since the epoch
    bool operator==(const Identity&) const = default;
  };
  // Absent when there is no file.
  std::optional<Identity> identity() const;

  struct Reading {
    std::optional<std::string> bytes;  // absent when it could not be read
    std::string trouble;
    bool isPassing = false;  // the trouble says nothing of the file: the machine lacks something
  };
  // Never waits for anybody. What is no file, or larger than kLargest, cannot be read.
  Reading read() const;

  // Nobody but the owner may read it from now on.
  void closeToOthers() const;

  // The turn of one program among those that read the file and replace it: others wait for theirs. Who gets
  // none in time (a program that stands still has it, or the file system knows no locks) goes on without.
  class Turn final {
   public:
    explicit Turn(const PrivateFile& file);
    ~Turn();
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

    bool isOurs() const { return isOurs_; }

   private:
    int folder_;
    bool isOurs_ = false;
  };

  // Makes the missing folders, for the owner alone. Empty, or what went wrong.
  std::string makeFolder() const;

  // The file has its old contents until it has the new ones, whatever ends the program or the machine. Empty,
  // or what went wrong.
  std::string replace(std::string_view bytes, const Turn& turn) const;

  const std::string& path() const { return path_; }

 private:
  const std::string path_;
};

}  // namespace seedmote::platform
