#include "platform/core/PrivateFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

namespace seedmote::platform {

namespace {

namespace fs = std::filesystem;

constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kLook = std::chrono::milliseconds(1);
constexpr int kMostLinks = 40;  // as the kernel has it
constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;

std::string wordsFor(int error) {
  return std::generic_category().message(error);
}

class Descriptor final {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return number_; }

 private:
  const int number_;
};

// Where links lead to, also when nothing is there yet.
fs::path behindLinks(fs::path path) {
  std::error_code error;
  for (int links = 0; links < kMostLinks && fs::is_symlink(path, error); ++links) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

fs::path folderOf(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

std::string makeFolders(const fs::path& folder) {
  std::error_code ignored;
  if (folder.empty() || fs::exists(folder, ignored)) return {};
  if (std::string trouble = makeFolders(folder.parent_path()); !trouble.empty()) return trouble;
  if (mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST) return {};
  return wordsFor(errno);
}

bool writeAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) return false;
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
  }
  return true;
}

// Best effort: where a folder cannot be brought to the disk, the old or the new file stands in it all the
// same.
void flushFolder(const fs::path& folder) {
  const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened.get() >= 0) fsync(opened.get());
}

bool saysNothingOfTheFile(int error) {
  return error == EMFILE || error == ENFILE || error == ENOMEM || error == EINTR;
}

PrivateFile::Reading notRead(int error) {
  return {std::nullopt, wordsFor(error), saysNothingOfTheFile(error)};
}

}  // namespace

std::optional<PrivateFile::Identity> PrivateFile::identity() const {
  struct stat status {};
  if (stat(path_.c_str(), &status) != 0) return std::nullopt;
  const std::int64_t changed = status.st_ctim.tv_sec * std::int64_t{1'000'000'000} + status.st_ctim.tv_nsec;
  return Identity{status.st_dev, status.st_ino, status.st_size, changed};
}

PrivateFile::Reading PrivateFile::read() const {
  // A pipe would hold the program for ever, were it waited for.
  const Descriptor file(open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  struct stat status {};
  if (file.get() < 0 || fstat(file.get(), &status) != 0) return notRead(errno);
  if (!S_ISREG(status.st_mode)) return {std::nullopt, "it is not a file"};
  std::string bytes;
  std::array<char, 16384> piece;
  while (bytes.size() <= kLargest) {
    const ssize_t got = ::read(file.get(), piece.data(), piece.size());
    if (got < 0 && errno != EINTR) return notRead(errno);
    if (got == 0) return {std::move(bytes), {}};
    bytes.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  }
  return {std::nullopt, "it is too large"};
}

void PrivateFile::closeToOthers() const {
  struct stat status {};
  if (stat(path_.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    (void)chmod(path_.c_str(), status.st_mode & S_IRWXU);  // not ours to close when that fails
  }
}

PrivateFile::Turn::Turn(const PrivateFile& file)
    : folder_(open(folderOf(file.path()).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (folder_ >= 0 && !isOurs_) {
    isOurs_ = flock(folder_, LOCK_EX | LOCK_NB) == 0;
    if (!isOurs_ && (errno != EWOULDBLOCK || std::chrono::steady_clock::now() > end)) return;
    if (!isOurs_) std::this_thread::sleep_for(kLook);
  }
}

PrivateFile::Turn::~Turn() {
  if (folder_ >= 0) close(folder_);
}

std::string PrivateFile::makeFolder() const {
  return makeFolders(folderOf(path_));
}

std::string PrivateFile::replace(std::string_view bytes, const Turn& turn) const {
  const fs::path target = behindLinks(path_);
  // That one name is used again and again leaves no more than one behind, whatever ends the program.
  const std::string draft = (folderOf(target) / ("." + target.filename().string() + ".new")).string() +
                            (turn.isOurs() ? "" : "-" + std::to_string(getpid()));
  if (access(target.c_str(), W_OK) != 0 && errno != ENOENT) return wordsFor(errno);
  unlink(draft.c_str());
  const Descriptor file(open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
  if (file.get() < 0) return wordsFor(errno);
  if (!writeAll(file.get(), bytes) || fsync(file.get()) != 0 || rename(draft.c_str(), target.c_str()) != 0) {
    const int error = errno;
    unlink(draft.c_str());
    return wordsFor(error);
  }
  flushFolder(folderOf(target));
  return {};
}

}  // namespace seedmote::platform
