#pragma once

#include <string>
#include <vector>

namespace seedmote::platform {

// Opens links in whatever program the system has for them. Main thread.
class UrlOpener {
 public:
  virtual ~UrlOpener() = default;

  // `url` is percent-escaped. False when the system has nothing for it.
  virtual bool open(const std::string& url) = 0;
};

// The real one; wants a QGuiApplication.
class SystemUrlOpener final : public UrlOpener {
 public:
  bool open(const std::string& url) override;
};

// The in-memory twin records what it was given.
class MemoryUrlOpener final : public UrlOpener {
 public:
  bool open(const std::string& url) override {
    opened.push_back(url);
    return opens;
  }

  std::vector<std::string> opened;
  bool opens = true;
};

}  // namespace seedmote::platform
