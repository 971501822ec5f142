#include "client/DaemonOutcome.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace seedmote {

using platform::HttpAnswer;
using platform::HttpError;

namespace {

DaemonCondition ofError(HttpError error) {
  switch (error) {
    case HttpError::refused:
      return DaemonCondition::nobodyListens;
    case HttpError::badUrl:
      return DaemonCondition::badAddress;
    case HttpError::unknownHost:
      return DaemonCondition::unknownHost;
    case HttpError::unreachable:
      return DaemonCondition::unreachable;
    case HttpError::timedOut:
      return DaemonCondition::noAnswer;
    case HttpError::noTls:
      return DaemonCondition::noTls;
    case HttpError::needsTls:
      return DaemonCondition::needsTls;
    case HttpError::tls:
      return DaemonCondition::tlsTrouble;
    case HttpError::notHttp:
    case HttpError::tooManyRedirects:
      return DaemonCondition::notTransmission;
    case HttpError::tooLarge:
      return DaemonCondition::unreadable;
    case HttpError::cancelled:
      return DaemonCondition::cancelled;
    case HttpError::silent:
      return DaemonCondition::closedUnanswered;
    case HttpError::closed:
      return DaemonCondition::brokenOff;
    default:
      return DaemonCondition::failed;
  }
}

// Web servers that speak TLS answer plain HTTP with a page of theirs: nginx, Apache, and those written in Go.
bool asksForTls(std::string_view body) {
  constexpr std::string_view kSentences[] = {"plain HTTP request was sent to HTTPS port",
                                             "speaking plain HTTP to an SSL-enabled server port",
                                             "sent an HTTP request to an HTTPS server"};
  return std::any_of(std::begin(kSentences), std::end(kSentences), [body](std::string_view sentence) {
    return body.find(sentence) != std::string_view::npos;
  });
}

DaemonCondition ofStatus(int status, std::string_view body) {
  switch (status) {
    case 200:
      return body.starts_with('{') ? DaemonCondition::answered : DaemonCondition::notTransmission;
    case 400:
      return asksForTls(body) ? DaemonCondition::needsTls : DaemonCondition::notTransmission;
    case 401:
      return DaemonCondition::loginRefused;
    case 403:
      return body.find("unsuccessful login attempts") != std::string_view::npos
                 ? DaemonCondition::lockedOut
                 : DaemonCondition::addressNotAllowed;
    case 409:
      return DaemonCondition::newSession;
    case 421:
      return DaemonCondition::hostNotAllowed;
    default:
      return DaemonCondition::notTransmission;
  }
}

}  // namespace

DaemonOutcome judgeAnswer(const HttpAnswer& answer) {
  const bool redirected = answer.status >= 300 && answer.status < 400;
  if (answer.error != HttpError::none && redirected) {
    return {DaemonCondition::notTransmission, answer.message};
  }
  if (answer.error != HttpError::none) {
    return {ofError(answer.error), answer.message};
  }
  return {ofStatus(answer.status, answer.body), answer.message};
}

}  // namespace seedmote
