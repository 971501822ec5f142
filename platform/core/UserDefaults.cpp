#include "platform/core/UserDefaults.h"

namespace seedmote::platform {

PropertyList UserDefaults::object(std::string_view key) const {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  return found == values_.end() ? PropertyList() : found->second;
}

std::optional<std::string> UserDefaults::string(std::string_view key) const {
  const PropertyList value = object(key);
  return value.text() == nullptr ? std::nullopt : std::optional(*value.text());
}

void UserDefaults::setObject(std::string_view key, PropertyList value) {
  if (value.isAbsent()) return removeObject(key);
  const std::lock_guard lock(mutex_);
  values_.insert_or_assign(std::string(key), std::move(value));
}

void UserDefaults::removeObject(std::string_view key) {
  const std::lock_guard lock(mutex_);
  const auto found = values_.find(key);
  if (found != values_.end()) values_.erase(found);
}

bool UserDefaults::synchronize() {
  return together_ > 0 || store();
}

std::string UserDefaults::problem() const {
  const std::lock_guard lock(mutex_);
  return problem_;
}

PropertyList::Dictionary UserDefaults::snapshot() const {
  const std::lock_guard lock(mutex_);
  return values_;
}

void UserDefaults::takeOver(const PropertyList::Dictionary& before, const PropertyList::Dictionary& now) {
  const auto in = [](const PropertyList::Dictionary& values, const std::string& key) {
    const auto found = values.find(key);
    return found == values.end() ? PropertyList() : found->second;
  };
  PropertyList::Dictionary keys = before;
  keys.insert(now.begin(), now.end());
  const std::lock_guard lock(mutex_);
  for (const auto& [key, ignored] : keys) {
    const PropertyList old = in(before, key);
    const PropertyList theirs = in(now, key);
    if (theirs == old || in(values_, key) != old) continue;
    theirs.isAbsent() ? void(values_.erase(key)) : void(values_.insert_or_assign(key, theirs));
  }
}

void UserDefaults::setProblem(std::string sentence) {
  std::function<void(const std::string&)> listener;
  {
    const std::lock_guard lock(mutex_);
    if (problem_ != sentence) listener = problemListener_;
    problem_ = sentence;
  }
  if (listener && !sentence.empty()) listener(sentence);
}

void UserDefaults::onProblem(std::function<void(const std::string&)> listener) {
  std::string present;
  {
    const std::lock_guard lock(mutex_);
    problemListener_ = listener;
    present = problem_;
  }
  if (listener && !present.empty()) listener(present);
}

bool MemoryUserDefaults::store() {
  const std::lock_guard lock(countMutex_);
  ++synchronized_;
  return problem().empty();
}

int MemoryUserDefaults::synchronized() const {
  const std::lock_guard lock(countMutex_);
  return synchronized_;
}

}  // namespace seedmote::platform
