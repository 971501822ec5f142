#include "bench/Screen.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>

#include "tests/support/FileDescriptor.h"

namespace seedmote::bench {

namespace {

// Where the first row's texts stand in both windows: to the right of the icon, above the row's middle.
constexpr int kLeft = 120;
constexpr int kRight = 330;
constexpr int kTop = 24;
constexpr int kBottom = 70;

constexpr std::uint32_t kColor = 0xffffff;
constexpr int kClear = 40;  // of 255

// The file's header is a list of big-endian numbers.
enum HeaderField { headerSize = 0, bitsPerPixel = 11, bytesPerLine = 12, colors = 19, fields = 25 };
constexpr std::size_t kColorSize = 12;

}  // namespace

Screen::Screen(const std::string& file) {
  const support::FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (descriptor.get() < 0 || fstat(descriptor.get(), &status) != 0) {
    throw std::runtime_error("no picture of a screen: " + file);
  }
  size_ = static_cast<std::size_t>(status.st_size);
  bytes_ = mmap(nullptr, size_, PROT_READ, MAP_SHARED, descriptor.get(), 0);
  if (bytes_ == MAP_FAILED) {
    throw std::runtime_error("the screen's picture cannot be read: " + file);
  }
  const auto* const header = static_cast<const std::uint32_t*>(bytes_);
  if (size_ < fields * sizeof(std::uint32_t) || ntohl(header[bitsPerPixel]) != 32) {
    throw std::runtime_error("the screen has not 32 bits a pixel: " + file);
  }
  firstPixel_ = ntohl(header[headerSize]) + ntohl(header[colors]) * kColorSize;
  bytesPerLine_ = ntohl(header[bytesPerLine]);
}

Screen::~Screen() {
  munmap(bytes_, size_);
}

const std::uint32_t* Screen::row(int y) const {
  const std::size_t at = firstPixel_ + static_cast<std::size_t>(y) * bytesPerLine_;
  return reinterpret_cast<const std::uint32_t*>(static_cast<const char*>(bytes_) + at);
}

std::vector<std::uint32_t> Screen::strip() const {
  std::vector<std::uint32_t> pixels;
  pixels.reserve((kRight - kLeft) * (kBottom - kTop));
  for (int y = kTop; y < kBottom; ++y) {
    std::transform(row(y) + kLeft, row(y) + kRight, std::back_inserter(pixels),
                   [](std::uint32_t pixel) { return pixel & kColor; });
  }
  return pixels;
}

bool isBlack(const std::vector<std::uint32_t>& strip) {
  return std::all_of(strip.begin(), strip.end(), [](std::uint32_t pixel) { return pixel == 0; });
}

int edges(const std::vector<std::uint32_t>& strip) {
  const auto green = [&](std::size_t at) { return static_cast<int>(strip[at] >> 8 & 0xff); };
  int count = 0;
  for (std::size_t at = 1; at < strip.size(); ++at) {
    count += std::abs(green(at) - green(at - 1)) > kClear ? 1 : 0;
  }
  return count;
}

}  // namespace seedmote::bench
