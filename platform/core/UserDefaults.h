#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/core/PropertyList.h"

namespace seedmote::platform {

// The stored settings: values under keys. Reads see writes at once; synchronize() makes them last.
// Thread-safe.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  // Absent when nothing is stored under `key`.
  PropertyList object(std::string_view key) const;
  // The text under `key`; absent when there is none or it is no text.
  std::optional<std::string> string(std::string_view key) const;
  void setObject(std::string_view key, PropertyList value);
  void removeObject(std::string_view key);

  // Stores everything; false when that failed, and problem() says why.
  virtual bool synchronize() = 0;

  // What went wrong with the stored file, in a sentence for people; empty when all is well.
  std::string problem() const;

 protected:
  PropertyList::Dictionary snapshot() const;
  void replaceAll(PropertyList::Dictionary values);
  void setProblem(std::string sentence);

 private:
  mutable std::mutex mutex_;
  PropertyList::Dictionary values_;
  std::string problem_;
};

// The in-memory twin: counts synchronize() calls.
class MemoryUserDefaults final : public UserDefaults {
 public:
  bool synchronize() override;
  int synchronized() const;

 private:
  mutable std::mutex countMutex_;
  int synchronized_ = 0;
};

}  // namespace seedmote::platform
