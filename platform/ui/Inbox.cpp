#include "platform/ui/Inbox.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <optional>
#include <set>
#include <string_view>
#include <system_error>

#include "platform/core/FileContents.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"

namespace seedmote::platform {

namespace {

namespace fs = std::filesystem;

constexpr const char* kLinkEnding = ".link";
constexpr const char* kFileEnding = ".file";
constexpr const char* kUnfinished = ".new-";
constexpr const char* kFinished = ".gone-";
constexpr std::size_t kFew = 8;

[[noreturn]] void raiseErrno() {
  throw std::system_error(errno, std::generic_category());
}

// A file descriptor, closed at the end.
class Opened final {
 public:
  Opened(const fs::path& path, int flags)
      : descriptor_(open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR)) {
    if (descriptor_ < 0) {
      raiseErrno();
    }
  }
  ~Opened() { close(descriptor_); }
  Opened(const Opened&) = delete;
  Opened& operator=(const Opened&) = delete;

  int get() const { return descriptor_; }
  void flushToDisk() const {
    if (fsync(descriptor_) != 0) {
      raiseErrno();
    }
  }

 private:
  const int descriptor_;
};

void writeFile(const fs::path& path, std::string_view bytes) {
  const Opened file(path, O_WRONLY | O_CREAT | O_EXCL);
  while (!bytes.empty()) {
    const ssize_t written = write(file.get(), bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      raiseErrno();
    }
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
  }
}

// Whether the program that made an unfinished folder may still be at it.
bool isAtWork(const std::string& unfinished) {
  pid_t program = 0;
  const char* const begin = unfinished.data() + std::strlen(kUnfinished);
  std::from_chars(begin, unfinished.data() + unfinished.size(), program);
  return program == getpid() || kill(program, 0) == 0 || errno == EPERM;
}

// Somebody who was given no answer in time keeps what was handed over in our stead, and we get it as well.
bool isSame(const Inbox::Item& item, const HandedOver& given) {
  if (const auto* link = std::get_if<HandedLink>(&given)) {
    return item.kind == Inbox::Item::Kind::link && item.name == link->link;
  }
  const auto* file = std::get_if<HandedFile>(&given);
  return file != nullptr && item.kind == Inbox::Item::Kind::file && item.name == file->name &&
         contentsOfFile(item.path) == file->contents;
}

// Absent for what is no item of the inbox.
std::optional<Inbox::Item> itemIn(const fs::path& folder) {
  const std::string name = folder.filename();
  const std::string ending = folder.extension();
  Inbox::Item item;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), item.number);
  if (error != std::errc() || end != name.data() + name.size() - ending.size() ||
      (ending != kLinkEnding && ending != kFileEnding)) {
    return std::nullopt;
  }
  item.kind = ending == kLinkEnding ? Inbox::Item::Kind::link : Inbox::Item::Kind::file;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    item.path = entry.path();
    item.name = item.kind == Inbox::Item::Kind::file ? entry.path().filename().string()
                                                     : contentsOfFile(item.path).value_or("");
  }
  return item.path.empty() ? std::nullopt : std::optional(std::move(item));
}

}  // namespace

class Inbox::Impl {
 public:
  Impl(std::string folder, std::function<void()> changed)
      : folder_(std::move(folder)), changed_(std::move(changed)) {}
  ~Impl() {
    if (lock_ >= 0) {
      close(lock_);
    }
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  // Writes all first, and makes sure of the disk once.
  std::vector<Refusal> take(const std::vector<std::string>& given) {
    const std::lock_guard guard(mutex_);
    std::vector<Refusal> refusals;
    std::vector<Draft> drafts;
    const std::vector<Item> before = waiting();
    for (const std::string& one : given) {
      const HandedOver looked = lookAtHandedOver(one);
      if (std::any_of(before.begin(), before.end(), [&](const Item& item) { return isSame(item, looked); })) {
        continue;
      }
      if (const auto* refusal = std::get_if<Refusal>(&looked)) {
        refusals.push_back(*refusal);
      } else if (const auto* link = std::get_if<HandedLink>(&looked)) {
        draft({.name = "link", .shown = link->link, .ending = kLinkEnding}, link->link, drafts, refusals);
      } else if (const auto* file = std::get_if<HandedFile>(&looked)) {
        draft({.name = file->name, .shown = file->name, .ending = kFileEnding}, file->contents, drafts,
              refusals);
      }
    }
    keep(drafts, refusals);
    return refusals;
  }

  std::vector<Item> waiting() const {
    std::vector<Item> items;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_, ignored)) {
      if (auto item = itemIn(entry.path()); item && !isFinished(*item)) {
        items.push_back(std::move(*item));
      }
    }
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.number < b.number; });
    return items;
  }

  // It is gone at once, even when its parts take a moment.
  void drop(const Item& item) {
    const fs::path from = fs::path(item.path).parent_path();
    const fs::path gone = folder_ / (kFinished + from.filename().string());
    std::error_code error;
    fs::rename(from, gone, error);
    if (error) {  // it must not be delivered again all the same
      log("%@ cannot be taken out of the inbox: %@", from.string(), error.message());
      const std::lock_guard guard(finishedMutex_);
      finished_.insert(from.filename());
    }
    fs::remove_all(gone, error);
  }

  bool mayDeliver() {
    if (lock_ >= 0) {
      return true;
    }
    std::error_code ignored;
    fs::create_directories(folder_, ignored);
    const int descriptor = open((folder_ / ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0 && flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
      lock_ = descriptor;
      removeRemains();
    } else if (descriptor >= 0) {
      close(descriptor);
    }
    return lock_ >= 0;
  }

  const std::function<void()>& changed() const { return changed_; }
  const std::string& folder() const { return folder_.native(); }

 private:
  // One thing on its way into the inbox.
  struct Draft {
    std::string name;    // of its file
    std::string shown;   // to people
    const char* ending;  // of its folder
    fs::path folder = {};
  };

  Refusal refusalOf(const Draft& draft, const std::error_code& error) const {
    std::error_code ignored;
    fs::remove_all(draft.folder, ignored);
    return {draft.shown, format("It cannot be kept in %@: %@.", folder_.string(), error.message())};
  }

  // Into a folder that nobody looks into.
  void draft(Draft draft, std::string_view contents, std::vector<Draft>& drafts,
             std::vector<Refusal>& refusals) {
    try {
      fs::create_directories(folder_);
      do {
        draft.folder = folder_ / format("%@%d-%d", kUnfinished, getpid(), ++unfinished_);
      } while (!fs::create_directory(draft.folder));
      writeFile(draft.folder / draft.name, contents);
      drafts.push_back(std::move(draft));
    } catch (const std::system_error& error) {
      refusals.push_back(refusalOf(draft, error.code()));
    }
  }

  void keep(const std::vector<Draft>& drafts, std::vector<Refusal>& refusals) {
    std::size_t kept = 0;
    try {
      flushToDisk(drafts);
      lastGiven_ = std::max(lastGiven_, drafts.empty() ? 0 : lastNumber());
      for (; kept < drafts.size(); ++kept) {
        giveNumber(drafts[kept]);
      }
      if (!drafts.empty()) {
        Opened(folder_, O_RDONLY | O_DIRECTORY).flushToDisk();
      }
    } catch (const std::system_error& error) {
      for (; kept < drafts.size(); ++kept) {
        refusals.push_back(refusalOf(drafts[kept], error.code()));
      }
    }
  }

  // Few are made sure of one by one: whatever else is on its way to the disk need not be waited for.
  void flushToDisk(const std::vector<Draft>& drafts) const {
    if (drafts.size() > kFew) {
      const Opened all(folder_, O_RDONLY | O_DIRECTORY);
      return syncfs(all.get()) == 0 ? void() : raiseErrno();
    }
    for (const Draft& draft : drafts) {
      Opened(draft.folder / draft.name, O_RDONLY).flushToDisk();
      Opened(draft.folder, O_RDONLY | O_DIRECTORY).flushToDisk();
    }
  }

  // The first that is free; none is given twice, for somebody may still speak of one that went. Another
  // program may take the same number at the same moment: one with another ending stands beside, and their
  // order is anybody's.
  void giveNumber(const Draft& draft) {
    while (true) {
      std::error_code error;
      ++lastGiven_;
      const auto number = static_cast<unsigned long long>(lastGiven_);
      fs::rename(draft.folder, folder_ / format("%012llu%@", number, draft.ending), error);
      if (!error) {
        return;
      }
      if (error != std::errc::directory_not_empty && error != std::errc::file_exists) {
        throw std::system_error(error);
      }
    }
  }

  bool isFinished(const Item& item) const {
    const std::lock_guard guard(finishedMutex_);
    return finished_.count(fs::path(item.path).parent_path().filename()) > 0;
  }

  std::uint64_t lastNumber() const {
    std::uint64_t last = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
      const std::string name = entry.path().filename();
      std::uint64_t number = 0;
      std::from_chars(name.data(), name.data() + name.size(), number);
      last = std::max(last, number);
    }
    return last;
  }

  // What a program left behind that was ended in the middle.
  void removeRemains() const {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_, ignored)) {
      const std::string name = entry.path().filename();
      if (name.starts_with(kFinished) || (name.starts_with(kUnfinished) && !isAtWork(name))) {
        fs::remove_all(entry.path(), ignored);
      }
    }
  }

  const fs::path folder_;
  const std::function<void()> changed_;
  std::mutex mutex_;
  std::atomic<int> lock_ = -1;  // the lock's file, while it is ours
  int unfinished_ = 0;
  std::uint64_t lastGiven_ = 0;
  mutable std::mutex finishedMutex_;
  std::set<std::string> finished_;  // the folders that could not be taken out
};

Inbox::Inbox(std::string folder, std::function<void()> changed)
    : impl_(std::make_unique<Impl>(std::move(folder), std::move(changed))) {}

Inbox::~Inbox() = default;

std::vector<Refusal> Inbox::take(const std::vector<std::string>& given) {
  ++taking_;
  std::vector<Refusal> refusals = impl_->take(given);
  --taking_;
  for (const Refusal& refusal : refusals) {
    log("%@ is not added: %@", refusal.name, refusal.why);
  }
  if (refusals.size() < given.size()) {
    impl_->changed()();
  }
  return refusals;
}

std::vector<Inbox::Item> Inbox::waiting() const {
  return impl_->waiting();
}

void Inbox::drop(const Item& item) {
  impl_->drop(item);
}

bool Inbox::mayDeliver() {
  return impl_->mayDeliver();
}

const std::string& Inbox::folder() const {
  return impl_->folder();
}

std::string standardInboxFolder() {
  QString folder = qEnvironmentVariable("XDG_STATE_HOME");
  if (!QDir::isAbsolutePath(folder)) {
    folder = QDir::homePath() + QStringLiteral("/.local/state");
  }
  return QFile::encodeName(folder + QStringLiteral("/seedmote/inbox")).toStdString();
}

}  // namespace seedmote::platform
