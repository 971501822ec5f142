#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace seedmote::platform {

// A text that must never be shown: every format prints a fixed number of bullets for it.
struct Secret {
  std::string_view text;
};

// One argument of a format; borrows texts, so it lives no longer than the call.
class FormatArg {
 public:
  enum class Kind { signedInteger, unsignedInteger, real, text, absent, secret };

  template <std::signed_integral T>
  FormatArg(T value) : kind_(Kind::signedInteger), signed_(value) {}  // NOLINT: implicit on purpose
  template <std::unsigned_integral T>
  FormatArg(T value) : kind_(Kind::unsignedInteger), unsigned_(value) {}
  FormatArg(float value) : FormatArg(static_cast<double>(value)) {}
  FormatArg(double value) : kind_(Kind::real), real_(value) {}
  FormatArg(std::string_view value) : kind_(Kind::text), text_(value) {}
  FormatArg(const std::string& value) : FormatArg(std::string_view(value)) {}
  FormatArg(const char* value) : FormatArg(std::string_view(value)) {}
  FormatArg(std::nullopt_t) : kind_(Kind::absent), signed_(0) {}
  FormatArg(const std::optional<std::string>& value)
      : kind_(value ? Kind::text : Kind::absent),
        text_(value ? std::string_view(*value) : std::string_view()) {}
  FormatArg(std::optional<std::string_view> value)
      : kind_(value ? Kind::text : Kind::absent), text_(value.value_or(std::string_view())) {}
  FormatArg(Secret) : kind_(Kind::secret), signed_(0) {}

  Kind kind() const { return kind_; }
  std::int64_t signedValue() const { return signed_; }
  std::uint64_t unsignedValue() const { return unsigned_; }
  double real() const { return real_; }
  std::string_view text() const { return text_; }

 private:
  Kind kind_;
  union {
    std::int64_t signed_;
    std::uint64_t unsigned_;
    double real_;
    std::string_view text_;
  };
};

// C formats, literally, whatever the locale; also %@ for a text, a number or nothing ("(null)"), padded
// where the format has a width. Flags, width and precision as in C; length modifiers only say how an
// integer is to be read (none and h: 32 and 16 bits; l, ll, z: 64 bits). "nan" is never signed. An
// argument that does not fit its conversion is shown in its own way; a missing one as "(missing)".
std::string formatText(std::string_view format, const FormatArg* args, std::size_t count);

// The same into `out`, of which no more than `limit` bytes are written; returns how many there would be.
std::size_t appendFormat(std::string& out, std::size_t limit, std::string_view format, const FormatArg* args,
                         std::size_t count);

template <class... Args>
std::string format(std::string_view text, const Args&... args) {
  if constexpr (sizeof...(Args) == 0) {
    return formatText(text, nullptr, 0);
  } else {
    const FormatArg list[]{FormatArg(args)...};
    return formatText(text, list, sizeof...(Args));
  }
}

}  // namespace seedmote::platform
