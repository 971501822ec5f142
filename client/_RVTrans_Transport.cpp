#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string_view>

#include "client/RVUtility.h"
#include "client/StoredSetting.h"
#include "client/_RVTrans.h"
#include "platform/core/Clock.h"
#include "platform/core/Http.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/Threads.h"
#include "platform/core/Utf8.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::format;
using platform::log;

namespace {

constexpr int kResendsWithoutPause = 3;
constexpr double kResendPause = 1;  // seconds
constexpr double kReachSeconds = 10;

bool isGiven(const std::optional<std::string>& text) {
  return text && !text->empty();
}

std::string soapMessageOf(const RVSOAPRequest& request) {
  std::string text = format("{\n \"method\" : \"%@\" ,\n", request.method);
  if (isGiven(request.arguments)) {
    text += format("\"arguments\" : %@ \n", *request.arguments);
  }
  if (isGiven(request.tag)) {
    text += format("\"tag\" : \"%@\" \n", *request.tag);
  }
  return text + "}";
}

platform::HttpRequest httpRequest(const RVDaemonInfo& info, const std::string& session,
                                  const std::string& body, double timeout) {
  platform::HttpRequest request;
  request.url = format("%@://%@/transmission/rpc", info.httpprotocol, info.ipAddress);
  request.method = "POST";
  request.timeoutSeconds = timeout;
  request.body = body;
  request.origin = platform::currentOrigin();
  request.headers.push_back({"X-Transmission-Session-Id", session});
  if (info.authorization != ":") {
    request.headers.push_back({"Authorization", "Basic " + RVUtility::Data2Base64(info.authorization)});
  }
  return request;
}

// The piece of `text` between the first `<code>` and the first `</code>`.
std::string_view betweenMarkers(std::string_view text) {
  constexpr std::string_view open = "<code>";
  const std::size_t start = text.find(open);
  const std::size_t end = text.find("</code>");
  if (start == std::string_view::npos || end == std::string_view::npos || end < start + open.size()) {
    throw std::out_of_range("the 409 answer has no code element");
  }
  return text.substr(start + open.size(), end - start - open.size());
}

std::string_view secondPiece(std::string_view text) {
  constexpr std::string_view separator = ": ";
  const std::size_t first = text.find(separator);
  if (first == std::string_view::npos) {
    throw std::out_of_range("the 409 answer's code element names no session id");
  }
  const std::string_view rest = text.substr(first + separator.size());
  return rest.substr(0, rest.find(separator));
}

// A daemon can name anything as its session id. What can't be a header's value is sent as none, so that the
// next conflict brings another one.
std::string sendable(const std::optional<std::string>& session) {
  constexpr std::size_t longest = 4096;
  const bool isValue =
      session && session->size() <= longest &&
      std::none_of(session->begin(), session->end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; });
  return isValue ? *session : "";
}

// One exchange in flight: the countdown runs while this lives.
class InFlight {
 public:
  explicit InFlight(std::atomic<bool>& counting) : counting_(counting) { counting_ = true; }
  ~InFlight() {
    counting_ = false;
    *over_ = true;
    platform::services().threads.wakeSleepers();
  }
  InFlight(const InFlight&) = delete;
  InFlight& operator=(const InFlight&) = delete;

  std::shared_ptr<const std::atomic<bool>> over() const { return over_; }

 private:
  std::atomic<bool>& counting_;
  std::shared_ptr<std::atomic<bool>> over_ = std::make_shared<std::atomic<bool>>(false);
};

}  // namespace

RVSOAPResult _RVTrans::sendCommand(const RVSOAPRequest& request) {
  return sendCommand(request, {});
}

RVSOAPResult _RVTrans::sendCommand(const RVSOAPRequest& request, const Sending& sending) {
  const std::string soapMessage = soapMessageOf(request);
  log("sendCommand\n");
  log("sendCommand:soapMessage = %@\n", soapMessage);
  log("finished sendCommand\n");
  return sendCommandStringRetry(soapMessage, sending);
}

RVSOAPResult _RVTrans::sendCommandStringRetry(const std::string& soapMessage) {
  return sendCommandStringRetry(soapMessage, {});
}

RVSOAPResult _RVTrans::sendCommandStringRetry(const std::string& soapMessage, const Sending& sending) {
  const std::int64_t timeout = storedTimeout();
  log("sendCommandStringRetry = %ld Sec", timeout);
  return send(soapMessage, static_cast<double>(timeout), sending);
}

RVSOAPResult _RVTrans::sendCommandString(const std::string& soapMessage, double timeoutInterval) {
  return send(soapMessage, timeoutInterval, {});
}

RVSOAPResult _RVTrans::send(const std::string& soapMessage, double timeoutInterval, const Sending& sending) {
  // A request goes out under the very id for which it was allowed; another thread may replace the client's.
  const SessionID session = sessionInfo_->sessionID.get();
  if (sending.may && !sending.may(session)) {
    return {};
  }
  RVSOAPResult first = exchangeOnce(soapMessage, timeoutInterval, session, sending.counts);
  if (first.statuscode != "409" && sending.settled) {
    sending.settled(first, false);
  }
  const int resent = first.statuscode == "409" ? resend(soapMessage, first.response, sending) : 0;
  // One line for each time that the text was sent.
  for (int sent = 0; sent <= resent; ++sent) {
    log("finished sendCommandString\n");
  }
  return first;
}

bool _RVTrans::isReachable() {
  if (connecting_ > 0) {
    return false;
  }
  const bool connected = isConnected();
  const platform::HttpRequest question = httpRequest(connected ? daemonInfo_.get() : storedDaemonInfo(),
                                                     connected ? sendable(sessionInfo_->sessionID.get()) : "",
                                                     "{\"method\":\"session-get\"}", kReachSeconds);
  const DaemonCondition condition = judgeAnswer(platform::services().http.exchange(question)).condition;
  log("asked whether %@ answers", question.url);
  return condition == DaemonCondition::answered || condition == DaemonCondition::newSession;
}

int _RVTrans::resend(const std::string& soapMessage, std::optional<std::string> body,
                     const Sending& sending) {
  platform::Threads& threads = platform::services().threads;
  for (int resent = 0; !threads.isStopping(); ++resent) {
    const SessionID session = getSessionID(body);
    sessionInfo_->sessionID.set(session);
    log("updated new session id = %@\n", session);
    if (resent >= kResendsWithoutPause) {
      platform::services().main.wait([&] { threads.sleep(kResendPause); });
    }
    if (sending.may && !sending.may(session)) {
      return resent;
    }
    const std::int64_t timeout = storedTimeout();
    log("sendCommandStringRetry = %ld Sec", timeout);
    RVSOAPResult again = exchangeOnce(soapMessage, static_cast<double>(timeout), session, sending.counts);
    if (again.statuscode != "409") {
      if (sending.settled) {
        sending.settled(again, true);
      }
      return resent + 1;
    }
    body = std::move(again.response);
  }
  return 0;  // the program ends; nobody counts the lines
}

RVSOAPResult _RVTrans::exchangeOnce(const std::string& soapMessage, double timeoutInterval,
                                    const SessionID& session, bool counts) {
  log("sendCommandString\n");
  log("soapMessage = %@\n", soapMessage);
  const platform::HttpRequest request =
      httpRequest(daemonInfo_.get(), sendable(session), soapMessage, timeoutInterval);
  log("url = %@\n", request.url);
  log("real timeout = %f\n", platform::Http::realTimeout(timeoutInterval));
  RVSOAPResult result = exchange(request, counts);
  result.session = session;
  log("resString = \n%@\n", result.response);
  log("satuscode = %@\n", result.statuscode);
  return result;
}

RVSOAPResult _RVTrans::exchange(const platform::HttpRequest& request, bool counts) {
  const platform::Services& services = platform::services();
  std::optional<InFlight> inFlight;
  if (counts) {
    inFlight.emplace(bCountingTimeout_);
    const auto seconds = static_cast<float>(platform::Http::realTimeout(request.timeoutSeconds));
    services.threads.start("countdown",
                           [this, seconds, over = inFlight->over()] { countdownTimeout(seconds, *over); });
  }
  log("sending... data by sendSynchronousRequest\n");
  RVSOAPResult result;
  services.main.wait([&] {
    platform::HttpAnswer answer = services.http.exchange(request);
    result.outcome = judgeAnswer(answer);
    // What broke off has failed, whatever its head said.
    const bool whole = answer.error == platform::HttpError::none;
    result.statuscode = format("%ld", whole ? answer.status : 0);
    if (whole && answer.hasBody && platform::isValidUtf8(answer.body)) {
      result.response = std::move(answer.body);
    }
  });
  log("sent data by sendSynchronousRequest\n");
  return result;
}

void _RVTrans::countdownTimeout(float seconds, const std::atomic<bool>& over) const {
  const platform::Services& services = platform::services();
  const platform::Clock::Duration deadline = services.clock.now() + platform::seconds(seconds);
  while (bCountingTimeout_ && !over) {
    const std::chrono::duration<double> left = deadline - services.clock.now();
    OvProgressHUD::setTimeout(format("%.0f", left.count()));
    if (!services.threads.sleepUnless(1, [&over] { return over.load(); })) {
      return;
    }
  }
}

_RVTrans::SessionID _RVTrans::getSessionID(const std::optional<std::string>& body) const {
  log("getSessionID\n");
  SessionID session;
  if (body) {
    session = std::string(secondPiece(betweenMarkers(*body)));
  }
  log("New session-id: \"%@\"\n", session);
  return session;
}

}  // namespace seedmote
