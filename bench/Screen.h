#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace seedmote::bench {

// The picture of an X server that keeps it in a file (Xvfb -fbdir). Looking costs nobody anything: no request
// is sent to anyone.
class Screen final {
 public:
  // Raises std::runtime_error when the file cannot be used.
  explicit Screen(const std::string& file);
  ~Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;

  // The pixels of a strip where the first row of a list stands; no edge of a window or message reaches it.
  std::vector<std::uint32_t> strip() const;

 private:
  const std::uint32_t* row(int y) const;

  void* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::size_t firstPixel_ = 0;
  std::size_t bytesPerLine_ = 0;
};

// What a strip shows.
bool isBlack(const std::vector<std::uint32_t>& strip);  // nothing has been painted there yet
// How many pixels differ clearly from their neighbours: letters do, a shade that a message casts does not.
int edges(const std::vector<std::uint32_t>& strip);

}  // namespace seedmote::bench
