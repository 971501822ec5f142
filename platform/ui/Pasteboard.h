#pragma once

#include <optional>
#include <string>

namespace seedmote::platform {

// The system's clipboard. Main thread.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  // The copied text; absent when nothing, or nothing but other things, was copied.
  virtual std::optional<std::string> string() = 0;
};

// The real one; wants a QGuiApplication.
class SystemPasteboard final : public Pasteboard {
 public:
  std::optional<std::string> string() override;
};

// The in-memory twin.
class MemoryPasteboard final : public Pasteboard {
 public:
  std::optional<std::string> string() override { return text; }

  std::optional<std::string> text;
};

}  // namespace seedmote::platform
