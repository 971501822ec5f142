#pragma once

#include <mutex>
#include <optional>
#include <string>

#include "platform/core/PrivateFile.h"
#include "platform/core/UserDefaults.h"

namespace seedmote::platform {

// The stored settings in one XML property list, which its owner alone can read (mode 0600). Written whole
// and atomically: a power cut leaves the old or the new settings.
//
// Two programs with one file: whoever stores takes over what the other has stored since, key by key; where
// both changed the same key the last one wins.
class PlistUserDefaults final : public UserDefaults {
 public:
  // Reads `path`. A file that cannot be read, or is no property list, is set aside under the name with
  // ".broken" (".broken.2", ...) at its end, and problem() says so. No file: nothing is stored yet.
  explicit PlistUserDefaults(std::string path);

  const std::string& path() const { return file_.path(); }

 protected:
  // Reads when somebody else has written since, writes when something has changed here. Missing folders are
  // made for the owner alone.
  bool store() override;

 private:
  bool isUpToDate() const;
  void read();
  void setAside(const std::string& reason);
  bool write(const PrivateFile::Turn& turn);
  bool fail(const std::string& trouble);

  const PrivateFile file_;
  std::string loadProblem_;
  bool mayOverwrite_ = true;  // false when the file holds what could neither be read nor set aside
  std::mutex writing_;        // a newer state is never overwritten by an older one
  PropertyList::Dictionary stored_;
  std::optional<PrivateFile::Identity> seen_;  // of the file that holds stored_; absent when none does
};

// $XDG_CONFIG_HOME/seedmote/defaults.plist, by default in ~/.config.
std::string standardDefaultsPath();

}  // namespace seedmote::platform
