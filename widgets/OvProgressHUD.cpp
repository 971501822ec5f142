#include "widgets/OvProgressHUD.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <memory>

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/ShownText.h"
#include "widgets/PanelLayout.h"
#include "widgets/PanelPosition.h"

namespace seedmote {

using platform::log;
using platform::shownText;
using Lane = platform::MainThread::Lane;

namespace {

constexpr double kEntryScale = 1.3;
constexpr double kExitScale = 0.8;
constexpr double kShortestDelay = 0.0001;
const QString kCountdownOff = QStringLiteral(" ");

std::unique_ptr<OvProgressHUD>& slot() {
  static std::unique_ptr<OvProgressHUD> view;
  return view;
}

OvProgressHUD::MeasuredText measureRoughly(const QString& text, QSizeF within) {
  constexpr double kCharacter = 9;
  constexpr double kLine = 19;
  return {QSizeF(std::min(within.width(), text.size() * kCharacter), kLine)};
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
  fullyShown_ = false;
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
  onMain("showWithStatus", [text = shownText(status)](OvProgressHUD& hud) {
    hud.okTitle_.reset();
    hud.showWithStatus(text, OvProgressHUDMaskTypeGradient, false);
  });
}

void OvProgressHUD::showWithStatus(const std::string& status, OvProgressHUDMaskType maskType) {
  onMain("showWithStatus", [text = shownText(status), maskType](OvProgressHUD& hud) {
    hud.showWithStatus(text, maskType, false);
  });
}

void OvProgressHUD::showWithStatusAndButton(const std::string& status) {
  onMain("showWithStatusAndButton", [text = shownText(status)](OvProgressHUD& hud) {
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
  onMain("setStatus",
         [text = shownText(status)](OvProgressHUD& hud) { hud.animate(0, [&] { hud.layOut(text); }); });
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
      [text = shownText(status), error, delay](OvProgressHUD& hud) { hud.showResult(text, error, delay); });
}

void OvProgressHUD::setTimeout(const std::string& value) {
  log("Ov timeout value = %@\n", value);
  postToMain([text = shownText(value)](OvProgressHUD& hud) { hud.count(text); });
}

void OvProgressHUD::animate(double seconds, const std::function<void()>& changes) {
  animationDuration_ = seconds;
  Q_EMIT animationChanged();
  changes();
  Q_EMIT changed();
}

void OvProgressHUD::showWithStatus(const Status& status, OvProgressHUDMaskType maskType,
                                   [[maybe_unused]] bool networkIndicator) {
  log("Going to dispatch showWithStatus\n");
  log("Start to show message\n");
  fadeOutTimer_.stop();
  ++shows_;  // a dismissal that the timer has posted already is not meant for this message
  const bool takesTouches = maskType != OvProgressHUDMaskTypeNone;
  if (!takesTouches) {
    swallowHeldTouches();
  }
  positionHUD();
  animate(0, [&] {
    hudView_.scale = hudView_.exists ? hudView_.scale : kEntryScale;
    hudView_.exists = true;
    stringTimeout_.text.clear();
    imageView_ = OverlayImage();
    maskType_ = maskType;
    overlayWindow_.takesTouches = takesTouches;
    layOut(status);
    spinnerView_.spinning = true;
  });
  if (alpha_ != 1) {
    enter();
  }
  log("Finished to dispatch showWithStatus\n");
}

// A panel that still fades out comes back from where it is.
void OvProgressHUD::enter() {
  receiveNotices();
  animate(kFade, [this] {
    hudView_.scale = 1;
    setAlpha(1);
  });
}

// The text and the buttons decide how large the panel is, and where everything in it stands.
void OvProgressHUD::layOut(const Status& status) {
  const QString text = status.value_or(QString());
  MeasuredText measured;
  std::optional<QSizeF> textSize;
  if (!text.isEmpty()) {
    measured = measure_ ? measure_(text, kPanelTextLimit) : measureRoughly(text, kPanelTextLimit);
    textSize = measured.size;
  }
  const PanelLayout layout = layOutPanel(textSize, okTitle_ || cancelTitle_);
  hudView_.size = layout.size;
  stringLabel_ = {text, layout.label, measured.fontSize};
  stringTimeout_ = {stringTimeout_.text, layout.countdown};
  imageView_.frame = layout.image;
  spinnerView_.frame = layout.spinner;
  okButton_ = {okTitle_.has_value(), okTitle_.value_or(QString()), layout.okButton, layout.buttonFace};
  cancelButton_ = {cancelTitle_.has_value(), cancelTitle_.value_or(QString()), layout.cancelButton,
                   layout.buttonFace};
}

void OvProgressHUD::showResult(const QString& status, bool error, double delay) {
  animate(0, [&] {
    stringTimeout_.text = kCountdownOff;
    if (alpha_ == 1) {
      imageView_.shown = true;
      imageView_.name = error ? QStringLiteral("OvProgressHUD.bundle/error.png")
                              : QStringLiteral("OvProgressHUD.bundle/success.png");
      layOut(status);
      spinnerView_.spinning = false;
      fadeOutTimer_ = platform::services().timers.once(
          "fadeOutTimer", std::max(delay, kShortestDelay),
          [shows = shows_] {
            postToMain([shows](OvProgressHUD& hud) {
              if (hud.shows_ == shows) hud.fadeOut();
            });
          },
          Lane::overlay);
    }
  });
}

void OvProgressHUD::fadeOut() {
  if (!hudView_.exists) {
    return;
  }
  animate(kFade, [this] {
    hudView_.scale *= kExitScale;
    setAlpha(0);
  });
  fadedTimer_ = platform::services().timers.once(
      "faded", kFade, [this] { faded(); }, Lane::overlay);
}

void OvProgressHUD::faded() {
  swallowHeldTouches();
  if (alpha_ != 0) {
    return;  // shown again meanwhile
  }
  notices_.clear();
  animate(0, [this] {
    hudView_ = OverlayPanel();
    stringLabel_ = OverlayLabel();
    stringTimeout_ = OverlayLabel();
    imageView_ = OverlayImage();
    spinnerView_ = OverlaySpinner();
    okButton_ = OverlayButton();
    cancelButton_ = OverlayButton();
    overlayWindow_ = OverlayWindow();
  });
}

void OvProgressHUD::count(const QString& value) {
  if (!hudView_.exists) {
    return;  // the label went with the panel
  }
  animate(0, [this] { stringTimeout_.alpha = 1; });
  if (stringTimeout_.text != kCountdownOff) {
    animate(kCountdownFade, [&] {
      stringTimeout_.text = value;
      stringTimeout_.alpha = 0;
    });
  }
}

void OvProgressHUD::setAlpha(double alpha) {
  alpha_ = alpha;
  fullyShown_ = alpha == 1;
}

// Runs what waits for the main thread, other operations of the overlay included.
void OvProgressHUD::swallowHeldTouches() {
  if (overlayWindow_.takesTouches && beforeTouchesPass_) {
    beforeTouchesPass_();
  }
}

void OvProgressHUD::receiveNotices() {
  platform::Screen& screen = platform::services().screen;
  notices_.clear();
  notices_.push_back(screen.onOrientationChange([this] { positionAbove(0, 0); }));
  notices_.push_back(screen.onResize([this] { positionHUD(); }));
  notices_.push_back(screen.keyboard().onNotice([this](const auto& notice) { positionHUD(notice); }));
}

void OvProgressHUD::positionHUD() {
  positionAbove(visibleKeyboardHeight(), 0);
}

void OvProgressHUD::positionHUD(const platform::KeyboardNotice& notice) {
  using Kind = platform::KeyboardNotice::Kind;
  const bool shows = notice.kind == Kind::willShow || notice.kind == Kind::didShow;
  const bool landscape = platform::isLandscape(platform::services().screen.interfaceOrientation());
  const double height = landscape ? notice.beginFrame.width : notice.beginFrame.height;
  positionAbove(shows ? height : 0, notice.animationDuration);
}

void OvProgressHUD::positionAbove(double keyboardHeight, double duration) {
  const platform::Screen& screen = platform::services().screen;
  const platform::Rect bounds = screen.bounds();
  const PanelPosition place =
      placePanel(bounds, screen.statusBarFrame(), screen.interfaceOrientation(), keyboardHeight);
  animate(duration, [&] {
    overlayWindow_.size = QSizeF(bounds.width, bounds.height);
    overlayWindow_.rotation = -panelRotation(screen.interfaceOrientation());
    moveToPoint(place.center, place.rotation);
  });
}

void OvProgressHUD::moveToPoint(QPointF center, double rotation) {
  hudView_.center = center;
  hudView_.rotation = rotation;
}

double OvProgressHUD::visibleKeyboardHeight() {
  const std::optional<platform::Size> keyboard = platform::services().screen.keyboard().size();
  return keyboard ? keyboard->height : 0;
}

int OvProgressHUD::animationMilliseconds() const {
  return static_cast<int>(std::lround(animationDuration_ * 1000));
}

QString OvProgressHUD::image() const {
  return QFileInfo(imageView_.name).baseName();
}

void OvProgressHUD::onBtnOk() {
  log("onBtnOK\n");
}

void OvProgressHUD::onBtnCancel() {
  log("onBtnOK\n");
}

}  // namespace seedmote
