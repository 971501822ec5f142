#pragma once

#include <string>

namespace seedmote::platform {

enum class Idiom { phone = 0, tablet = 1 };

// What the program runs on. Plain values, fixed once main has made it.
class Device {
 public:
  Device(Idiom idiom, std::string systemVersion, std::string name)
      : idiom_(idiom), systemVersion_(std::move(systemVersion)), name_(std::move(name)) {}

  Idiom userInterfaceIdiom() const { return idiom_; }
  const std::string& systemVersion() const { return systemVersion_; }
  // The version as a single-precision number, as far as its text is one: "7.0.2" is 7.
  float systemVersionNumber() const;
  const std::string& name() const { return name_; }

  // Shorter side in points; under 600 is a phone.
  static Idiom idiomForScreen(double shorterSide) { return shorterSide < 600 ? Idiom::phone : Idiom::tablet; }

 private:
  Idiom idiom_;
  std::string systemVersion_;
  std::string name_;
};

}  // namespace seedmote::platform
