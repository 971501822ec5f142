#include "client/RVUtility.h"

#include <QByteArray>
#include <algorithm>
#include <utility>

#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/Services.h"
#include "platform/core/Shared.h"
#include "platform/core/Threads.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {
namespace {

using platform::PropertyList;

constexpr int kLastVersionWithBits = 13;

constexpr std::string_view kWhitespaceAndNewlines[] = {
    " ",      "\t",     "\n",     "\v",     "\f",     "\r",     "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

// The length of the first blank that `test` accepts; 0 when there is none.
template <class Test>
std::size_t blankWhere(Test test) {
  const auto found = std::find_if(std::begin(kWhitespaceAndNewlines), std::end(kWhitespaceAndNewlines), test);
  return found == std::end(kWhitespaceAndNewlines) ? 0 : found->size();
}

// The one pending message: a second one takes the place of a first that is not yet shown.
platform::Shared<std::string>& pendingMessage() {
  static platform::Shared<std::string> message;
  return message;
}

}  // namespace

int RVUtility::changeTransStatus(int status, int rpcVersion) {
  if (rpcVersion > kLastVersionWithBits) return status;
  switch (status) {
    case 1:
    case 2:
    case 4:
      return status;
    case 8:
      return 6;
    case 16:
      return 0;
    default:
      platform::logRow("Error: unknown status\n");
      return 0;
  }
}

std::string RVUtility::changeSizeFormat(std::int64_t bytes) {
  using platform::format;
  constexpr double kStep = 1024;
  constexpr double kStep2 = kStep * kStep;
  const auto value = static_cast<double>(bytes);
  if (bytes <= std::int64_t{1} << 10) return format("%lldB", bytes);
  if (bytes <= std::int64_t{1} << 20) return format("%.1fKB", value / kStep);
  if (bytes <= std::int64_t{1} << 30) return format("%.1fMB", value / kStep2);
  if (bytes <= std::int64_t{1} << 40) return format("%.1fGB", value / (kStep2 * kStep));
  if (bytes <= std::int64_t{1} << 50) return format("%.1fTB", static_cast<double>(bytes >> 20) / kStep2);
  return format("%.1fPB", static_cast<double>(bytes >> 30) / kStep2);
}

std::string RVUtility::changeETAFormat(std::int64_t seconds) {
  using platform::format;
  const auto value = static_cast<double>(seconds);
  std::string text;
  if (seconds <= 60) {
    text = format("%1.lds", seconds);
  } else if (seconds <= 3600) {
    text = format("%1.fm", value / 60.0);
  } else if (seconds <= 86400) {
    text = format("%1.fh", value / 3600.0);
  } else {
    text = format("%1.fd", value / 86400.0);
  }
  platform::logRow("strSize = %@\n", text);
  return text;
}

std::string RVUtility::changeCumTimeFormat(std::int64_t seconds) {
  return platform::format("%lldday %ldhour %ldmin %ldsec", seconds / 86400, seconds / 3600 % 24,
                          seconds / 60 % 60, seconds % 60);
}

std::string RVUtility::Data2Base64(std::string_view bytes) {
  return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

std::string RVUtility::trimString(std::string_view text) {
  while (const std::size_t length = blankWhere([text](auto blank) { return text.starts_with(blank); })) {
    text.remove_prefix(length);
  }
  while (const std::size_t length = blankWhere([text](auto blank) { return text.ends_with(blank); })) {
    text.remove_suffix(length);
  }
  return std::string(text);
}

Color RVUtility::colorWithRed(int red, int green, int blue) {
  const auto component = [](int value) { return static_cast<float>(value / 255.0); };
  return {component(red), component(green), component(blue), 1};
}

Color RVUtility::colorWithGray(int gray) {
  return colorWithRed(gray, gray, gray);
}

void RVUtility::showMessage(std::string text) {
  platform::log("start showMessage");
  pendingMessage().set(std::move(text));
  platform::services().threads.start("message",
                                     [] { OvProgressHUD::showWithStatusAndButton(pendingMessage().get()); });
}

void RVUtility::dismissMessage() {}

void RVUtility::dumpDictionary(const PropertyList::Dictionary& dictionary) {
  platform::log("========== Dump Dict ===========");
  for (const auto& [key, value] : dictionary) {
    if (PropertyList::holdsSecret(dictionary, key)) {
      platform::log("%@ : %@", key, platform::Secret{});
    } else {
      platform::log("%@ : %@", key, value.text() == nullptr ? value.description() : *value.text());
    }
  }
  platform::log("================================");
}

void RVUtility::dumpFrame(const platform::Rect& frame) {
  platform::log("frame.org.x = %2.f", frame.x);
  platform::log("frame.org.y = %2.f", frame.y);
  platform::log("frame.size.width  = %2.f", frame.width);
  platform::log("frame.size.height = %2.f", frame.height);
}

}  // namespace seedmote
