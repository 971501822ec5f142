#pragma once

#include <QObject>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/core/Screen.h"
#include "platform/core/Timers.h"
#include "widgets/OverlayParts.h"

namespace seedmote {

enum OvProgressHUDMaskType {
  OvProgressHUDMaskTypeNone = 1,      // nothing drawn; touches pass through to the screen below
  OvProgressHUDMaskTypeClear = 2,     // nothing drawn; the overlay takes all touches
  OvProgressHUDMaskTypeBlack = 3,     // black at alpha 0.5
  OvProgressHUDMaskTypeGradient = 4,  // radial, from transparent to black at alpha 0.75
};

// The one modal message of the program: its state. Values here change at once; the view binds to them, and
// animates towards them for as long as animationMilliseconds says at that moment.
//
// The class-level operations may be called from any thread. Those that dismiss or count are always posted
// to the main thread; those that show run at once there, and are posted when called from elsewhere. All
// of them run while the main thread waits. Everything else is the main thread's. Lengths are points, delays
// and durations seconds.
class OvProgressHUD final : public QObject {
  Q_OBJECT
  Q_PROPERTY(seedmote::OverlayWindow overlayWindow READ overlayWindow NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayPanel hudView READ hudView NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayLabel stringLabel READ stringLabel NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayLabel stringTimeout READ stringTimeout NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayImage imageView READ imageView NOTIFY changed)
  Q_PROPERTY(seedmote::OverlaySpinner spinnerView READ spinnerView NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayButton okButton READ okButton NOTIFY changed)
  Q_PROPERTY(seedmote::OverlayButton cancelButton READ cancelButton NOTIFY changed)
  Q_PROPERTY(int maskType READ maskType NOTIFY changed)
  Q_PROPERTY(double alpha READ alpha NOTIFY changed)
  Q_PROPERTY(int animationMilliseconds READ animationMilliseconds NOTIFY animationChanged)

 public:
  // How large a text is in the label's font, at most `within`, and the size of font in which it fits there.
  struct MeasuredText {
    QSizeF size{0, 0};
    int fontSize = OverlayLabel::kFontSize;
  };
  using TextMeasure = std::function<MeasuredText(const QString& text, QSizeF within)>;

  static constexpr double kFade = 0.15;
  static constexpr double kCountdownFade = 1.3;
  static constexpr double kResultDelay = 2;

  static OvProgressHUD* sharedView();
  // Forgets the shared view, so that a test starts afresh.
  static void dropSharedView();

  static void show();
  static void showWithStatus(const std::string& status);
  static void showWithStatus(const std::string& status, OvProgressHUDMaskType maskType);
  static void showWithStatusAndButton(const std::string& status);
  static void showWithMaskType(OvProgressHUDMaskType maskType);
  static void showSuccessWithStatus(const std::string& status, double duration = 1);
  static void showErrorWithStatus(const std::string& status, double duration = 1);
  static void setStatus(const std::string& status);
  static void dismiss();
  static void dismissWithSuccess(const std::string& status, double delay = kResultDelay);
  static void dismissWithError(const std::string& status, double delay = kResultDelay);
  static void dismissWithStatus(const std::string& status, bool error, double delay = kResultDelay);
  static void setTimeout(const std::string& value);
  // True from a show on, until a dismissal begins to fade the overlay out.
  static bool isVisible() { return fullyShown_; }

  // Given by the view's side before the first message; without it a text counts as one line of its length.
  void setTextMeasure(TextMeasure measure) { measure_ = std::move(measure); }

  // Called just before touches pass through again.
  void setBeforeTouchesPass(std::function<void()> before) { beforeTouchesPass_ = std::move(before); }

  // Both only log: who shows buttons dismisses the message itself.
  Q_INVOKABLE void onBtnOk();
  Q_INVOKABLE void onBtnCancel();

  OverlayWindow overlayWindow() const { return overlayWindow_; }
  OverlayPanel hudView() const { return hudView_; }
  OverlayLabel stringLabel() const { return stringLabel_; }
  OverlayLabel stringTimeout() const { return stringTimeout_; }
  OverlayImage imageView() const { return imageView_; }
  OverlaySpinner spinnerView() const { return spinnerView_; }
  OverlayButton okButton() const { return okButton_; }
  OverlayButton cancelButton() const { return cancelButton_; }
  int maskType() const { return maskType_; }
  double alpha() const { return alpha_; }
  int animationMilliseconds() const;

  // In short, for those who only want to know what is said.
  bool panelShown() const { return hudView_.exists; }
  bool takesTouches() const { return overlayWindow_.takesTouches; }
  QString text() const { return stringLabel_.text; }
  QString image() const;  // "success", "error", or empty

 Q_SIGNALS:
  void changed();
  // Told before `changed`, so that the view knows how long to take.
  void animationChanged();

 private:
  using Title = std::optional<QString>;
  using Status = std::optional<QString>;

  OvProgressHUD() = default;
  static void onMain(const char* where, std::function<void(OvProgressHUD&)> work);
  static void postToMain(std::function<void(OvProgressHUD&)> work);

  // Runs `changes`, which the view then shows as an animation from what is to be seen now; 0: at once.
  void animate(double seconds, const std::function<void()>& changes);
  void showWithStatus(const Status& status, OvProgressHUDMaskType maskType, bool networkIndicator);
  void enter();
  void layOut(const Status& status);
  void showResult(const QString& status, bool error, double delay);
  void fadeOut();
  void faded();
  void count(const QString& value);
  void setAlpha(double alpha);
  void swallowHeldTouches();

  void receiveNotices();
  void positionHUD();
  void positionHUD(const platform::KeyboardNotice& notice);
  void positionAbove(double keyboardHeight, double duration);
  void moveToPoint(QPointF center, double rotation);
  static double visibleKeyboardHeight();

  static inline std::atomic<bool> fullyShown_{false};

  TextMeasure measure_;
  std::function<void()> beforeTouchesPass_;
  platform::Timers::Handle fadeOutTimer_;
  platform::Timers::Handle fadedTimer_;
  std::vector<platform::Subscription> notices_;
  double animationDuration_ = 0;
  unsigned shows_ = 0;

  OverlayWindow overlayWindow_;
  OverlayPanel hudView_;
  OverlayLabel stringLabel_;
  OverlayLabel stringTimeout_;
  OverlayImage imageView_;
  OverlaySpinner spinnerView_;
  OverlayButton okButton_;
  OverlayButton cancelButton_;
  OvProgressHUDMaskType maskType_ = OvProgressHUDMaskTypeNone;
  double alpha_ = 0;
  Title okTitle_;
  Title cancelTitle_;
};

}  // namespace seedmote
