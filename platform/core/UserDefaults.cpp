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

std::string UserDefaults::problem() const {
  const std::lock_guard lock(mutex_);
  return problem_;
}

PropertyList::Dictionary UserDefaults::snapshot() const {
  const std::lock_guard lock(mutex_);
  return values_;
}

void UserDefaults::replaceAll(PropertyList::Dictionary values) {
  const std::lock_guard lock(mutex_);
  values_ = std::move(values);
}

void UserDefaults::setProblem(std::string sentence) {
  const std::lock_guard lock(mutex_);
  problem_ = std::move(sentence);
}

bool MemoryUserDefaults::synchronize() {
  const std::lock_guard lock(countMutex_);
  ++synchronized_;
  return true;
}

int MemoryUserDefaults::synchronized() const {
  const std::lock_guard lock(countMutex_);
  return synchronized_;
}

}  // namespace seedmote::platform
