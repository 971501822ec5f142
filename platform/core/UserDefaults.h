#pragma once

#include <atomic>
#include <functional>
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

  // Stores everything, and takes over what others have stored since; false when that failed, and problem()
  // says why.
  bool synchronize();

  // While one of these lives synchronize() does nothing and succeeds: what is changed meanwhile is stored by
  // the next one, all of it or nothing.
  class Together final {
   public:
    explicit Together(UserDefaults& defaults) : defaults_(defaults) { ++defaults_.together_; }
    ~Together() { --defaults_.together_; }
    Together(const Together&) = delete;
    Together& operator=(const Together&) = delete;

   private:
    UserDefaults& defaults_;
  };

  // What went wrong with the stored file, in a sentence for people; empty when all is well.
  std::string problem() const;
  // `listener` gets problem() whenever it has become another one, on the thread that stored, and at once when
  // there is one already. An empty listener ends that.
  void onProblem(std::function<void(const std::string&)> listener);

 protected:
  // synchronize() without the exception.
  virtual bool store() = 0;
  PropertyList::Dictionary snapshot() const;
  // Takes over what others changed between `before` and `now`, but for what has changed here as well.
  void takeOver(const PropertyList::Dictionary& before, const PropertyList::Dictionary& now);
  void setProblem(std::string sentence);

 private:
  mutable std::mutex mutex_;
  PropertyList::Dictionary values_;
  std::string problem_;
  std::function<void(const std::string&)> problemListener_;
  std::atomic<int> together_ = 0;
};

// The in-memory twin: counts synchronize() calls, which fail while there is a problem.
class MemoryUserDefaults final : public UserDefaults {
 public:
  using UserDefaults::setProblem;
  int synchronized() const;

 protected:
  bool store() override;

 private:
  mutable std::mutex countMutex_;
  int synchronized_ = 0;
};

}  // namespace seedmote::platform
