#pragma once

#include <mutex>
#include <string>

#include "platform/core/UserDefaults.h"

namespace seedmote::platform {

// The stored settings in one XML property list, which its owner alone can read (mode 0600). Written whole
// and atomically: a power cut leaves the old or the new settings.
//
// Two programs with one file: each writes all that it knows, nothing is merged, the last writer wins.
class PlistUserDefaults final : public UserDefaults {
 public:
  // Reads `path`. A file that cannot be read, or is no property list, is set aside under the name with
  // ".broken" (".broken.2", ...) at its end, and problem() says so. No file: nothing is stored yet.
  explicit PlistUserDefaults(std::string path);

  // Writes when something has changed since the last time. Missing folders are made for the owner alone.
  bool synchronize() override;

  const std::string& path() const { return path_; }

 private:
  void load();
  void setAside(const std::string& reason);
  std::string write(const PropertyList::Dictionary& values) const;

  const std::string path_;
  std::string loadProblem_;
  bool mayOverwrite_ = true;  // false when the file holds what could neither be read nor set aside
  std::mutex writing_;        // a newer state is never overwritten by an older one
  PropertyList::Dictionary stored_;
};

// $XDG_CONFIG_HOME/seedmote/defaults.plist, by default in ~/.config.
std::string standardDefaultsPath();

}  // namespace seedmote::platform
