#pragma once

#include <QString>
#include <map>
#include <string>

namespace seedmote::bench {

// What a run executed, by callgrind's file on it: instructions of a function and of all that it called.
class Profile final {
 public:
  // Raises std::runtime_error when callgrind_annotate cannot tell.
  explicit Profile(const QString& file);

  // In millions; 0 for a function that did not run.
  double total() const;
  double of(const std::string& function) const;

 private:
  std::map<std::string, double> functions_;
};

}  // namespace seedmote::bench
