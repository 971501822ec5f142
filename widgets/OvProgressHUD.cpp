#include "widgets/OvProgressHUD.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"

namespace seedmote {

using platform::log;
using Lane = platform::MainThread::Lane;

namespace {

constexpr QSizeF kTextLimit(200, 300);
constexpr double kPlainSide = 100;
constexpr double kMargin = 24;
constexpr double kButtonRow = 40;
const QString kCountdownOff = QStringLiteral(" ");

std::unique_ptr<OvProgressHUD>& slot() {
  static std::unique_ptr<OvProgressHUD> view;
  return view;
}

QSizeF measureRoughly(const QString& text, QSizeF within) {
  constexpr double kCharacter = 9;
  constexpr double kLine = 19;
  return {std::min(within.width(), text.size() * kCharacter), text.isEmpty() ? 0 : kLine};
}

QString fromUtf8(const std::string& text) {
  return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

}  // namespace

OvProgressHUD* OvProgressHUD::sharedView() {
  if (!slot()) {
    slot().reset(new OvProgressHUD);
  }
  return slot().get();
}

void OvProgressHUD::dropSharedView() {
  slot().reset();
}

void OvProgressHUD::onMain(const char* where, std::function<void(OvProgressHUD&)> work) {
  platform::MainThread& main = platform::services().main;
  if (main.isMainThread()) {
    main.guard(where, [&] { work(*sharedView()); });
  } else {
    postToMain(std::move(work));
  }
}

void OvProgressHUD::postToMain(std::function<void(OvProgressHUD&)> work) {
  platform::services().main.post([work = std::move(work)] { work(*sharedView()); }, Lane::overlay,
                                 "the overlay");
}

void OvProgressHUD::show() {
  onMain("show", [](OvProgressHUD& hud) {
    hud.okTitle_.reset();
    hud.showWithStatus(std::nullopt, OvProgressHUDMaskTypeNone, false);
  });
}

void OvProgressHUD::showWithStatus(const std::string& status) {
  onMain("showWithStatus", [text = fromUtf8(status)](OvProgressHUD& hud) {
    hud.okTitle_.reset();
    hud.showWithStatus(text, OvProgressHUDMaskTypeGradient, false);
  });
}

void OvProgressHUD::showWithStatus(const std::string& status, OvProgressHUDMaskType maskType) {
  onMain("showWithStatus", [text = fromUtf8(status), maskType](OvProgressHUD& hud) {
    hud.showWithStatus(text, maskType, false);
  });
}

void OvProgressHUD::showWithStatusAndButton(const std::string& status) {
  onMain("showWithStatusAndButton", [text = fromUtf8(status)](OvProgressHUD& hud) {
    hud.okTitle_ = QStringLiteral("Yes");
    hud.cancelTitle_ = QStringLiteral("No");
    hud.showWithStatus(text, OvProgressHUDMaskTypeNone, false);
  });
}

void OvProgressHUD::showWithMaskType(OvProgressHUDMaskType maskType) {
  onMain("showWithMaskType",
         [maskType](OvProgressHUD& hud) { hud.showWithStatus(std::nullopt, maskType, false); });
}

void OvProgressHUD::showSuccessWithStatus(const std::string& status, double duration) {
  show();
  dismissWithSuccess(status, duration);
}

void OvProgressHUD::showErrorWithStatus(const std::string& status, double duration) {
  show();
  dismissWithError(status, duration);
}

void OvProgressHUD::setStatus(const std::string& status) {
  onMain("setStatus", [text = fromUtf8(status)](OvProgressHUD& hud) {
    hud.apply(text);
    Q_EMIT hud.changed();
  });
}

void OvProgressHUD::dismiss() {
  postToMain([](OvProgressHUD& hud) { hud.fadeOut(); });
}

void OvProgressHUD::dismissWithSuccess(const std::string& status, double delay) {
  dismissWithStatus(status, false, delay);
}

void OvProgressHUD::dismissWithError(const std::string& status, double delay) {
  dismissWithStatus(status, true, delay);
}

void OvProgressHUD::dismissWithStatus(const std::string& status, bool error, double delay) {
  postToMain(
      [text = fromUtf8(status), error, delay](OvProgressHUD& hud) { hud.showResult(text, error, delay); });
}

void OvProgressHUD::setTimeout(const std::string& value) {
  log("Ov timeout value = %@\n", value);
  postToMain([text = fromUtf8(value)](OvProgressHUD& hud) {
    if (hud.panelShown_ && hud.countdown_ != kCountdownOff) {
      hud.countdown_ = text;
      Q_EMIT hud.counted();
    }
  });
}

bool OvProgressHUD::isVisible() {
  return sharedView()->alpha_ == 1;
}

void OvProgressHUD::showWithStatus(const Status& status, OvProgressHUDMaskType maskType,
                                   [[maybe_unused]] bool networkIndicator) {
  log("Going to dispatch showWithStatus\n");
  log("Start to show message\n");
  countdown_ = QString();
  panelShown_ = true;
  fadeOutTimer_.stop();
  image_.clear();
  maskType_ = maskType;
  apply(status);
  spinning_ = true;
  setTakesTouches(maskType != OvProgressHUDMaskTypeNone);
  panelScale_ = 1;
  const bool enters = alpha_ != 1;
  alpha_ = 1;
  Q_EMIT counted();
  Q_EMIT changed();
  if (enters) {
    Q_EMIT entering();
  }
  log("Finished to dispatch showWithStatus\n");
}

// The text decides how large the panel is, and where everything in it stands.
void OvProgressHUD::apply(const Status& status) {
  status_ = status;
  const bool hasText = status && !status->isEmpty();
  double width = kPlainSide;
  double height = kPlainSide;
  labelFrame_ = QRectF();
  if (hasText) {
    const QSizeF measured = measure_ ? measure_(*status, kTextLimit) : measureRoughly(*status, kTextLimit);
    height = 80 + measured.height();
    if (measured.width() > kPlainSide) {
      width = std::ceil(measured.width() / 2) * 2;
    }
    labelFrame_ = height > kPlainSide ? QRectF(12, 66, width, measured.height())
                                      : QRectF(0, 66, width + kMargin, measured.height());
    width += kMargin;
  }
  if (okTitle_ || cancelTitle_) {
    height += kButtonRow;
  }
  panelSize_ = QSizeF(width, height);
  placeContents(hasText);
  placeButtons();
}

void OvProgressHUD::placeContents(bool hasText) {
  const double halfWidth = panelSize_.width() / 2;
  const double halfHeight = panelSize_.height() / 2;
  imageCenter_ = hasText ? QPointF(halfWidth, 36) : QPointF(halfWidth, halfHeight);
  spinnerCenter_ = QPointF(std::ceil(halfWidth) + 0.5, hasText ? 40.5 : std::ceil(halfHeight) + 0.5);
}

void OvProgressHUD::placeButtons() {
  const double line = panelSize_.height() - 30;
  okCenter_ = QPointF(std::ceil(panelSize_.width() / 4), line);
  cancelCenter_ = QPointF(std::ceil(panelSize_.width() * 3 / 4), line);
}

void OvProgressHUD::showResult(const QString& status, bool error, double delay) {
  countdown_ = kCountdownOff;
  Q_EMIT counted();
  if (alpha_ != 1) {
    return;
  }
  image_ = error ? QStringLiteral("error") : QStringLiteral("success");
  apply(status);
  spinning_ = false;
  fadeOutTimer_ = platform::services().timers.once(
      "fadeOutTimer", delay, [] { dismiss(); }, Lane::overlay);
  Q_EMIT changed();
}

void OvProgressHUD::fadeOut() {
  panelScale_ = 0.8;
  alpha_ = 0;
  fadedTimer_ = platform::services().timers.once(
      "faded", kFade, [this] { faded(); }, Lane::overlay);
  Q_EMIT changed();
}

void OvProgressHUD::faded() {
  if (alpha_ != 0) {
    return;  // shown again meanwhile
  }
  panelShown_ = false;
  spinning_ = false;
  image_.clear();
  countdown_.clear();
  setTakesTouches(false);
  Q_EMIT changed();
}

void OvProgressHUD::setTakesTouches(bool takes) {
  if (takesTouches_ && !takes && beforeTouchesPass_) {
    beforeTouchesPass_();
  }
  takesTouches_ = takes;
}

void OvProgressHUD::onBtnOk() {
  log("onBtnOK\n");
}

void OvProgressHUD::onBtnCancel() {
  log("onBtnOK\n");
}

}  // namespace seedmote
