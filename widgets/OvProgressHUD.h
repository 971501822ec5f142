#pragma once

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "platform/core/Timers.h"

namespace seedmote {

enum OvProgressHUDMaskType {
  OvProgressHUDMaskTypeNone = 1,      // nothing drawn; touches pass through to the screen below
  OvProgressHUDMaskTypeClear = 2,     // nothing drawn; the overlay takes all touches
  OvProgressHUDMaskTypeBlack = 3,     // black at alpha 0.5
  OvProgressHUDMaskTypeGradient = 4,  // radial, from transparent to black at alpha 0.75
};

// The one modal message of the program: its state. The view binds to the properties and animates towards
// them; values here change at once.
//
// The class-level operations may be called from any thread. Those that dismiss or count are always posted
// to the main thread; those that show run at once there, and are posted when called from elsewhere. All
// of them run while the main thread waits. Lengths are points, delays seconds.
class OvProgressHUD final : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool panelShown READ panelShown NOTIFY changed)
  Q_PROPERTY(double alpha READ alpha NOTIFY changed)
  Q_PROPERTY(double panelScale READ panelScale NOTIFY changed)
  Q_PROPERTY(int maskType READ maskType NOTIFY changed)
  Q_PROPERTY(bool takesTouches READ takesTouches NOTIFY changed)
  Q_PROPERTY(bool spinning READ spinning NOTIFY changed)
  Q_PROPERTY(QString text READ text NOTIFY changed)
  Q_PROPERTY(QString image READ image NOTIFY changed)
  Q_PROPERTY(QSizeF panelSize READ panelSize NOTIFY changed)
  Q_PROPERTY(QRectF labelFrame READ labelFrame NOTIFY changed)
  Q_PROPERTY(QPointF imageCenter READ imageCenter NOTIFY changed)
  Q_PROPERTY(QPointF spinnerCenter READ spinnerCenter NOTIFY changed)
  Q_PROPERTY(QPointF okCenter READ okCenter NOTIFY changed)
  Q_PROPERTY(QPointF cancelCenter READ cancelCenter NOTIFY changed)
  Q_PROPERTY(QString okTitle READ okTitle NOTIFY changed)
  Q_PROPERTY(QString cancelTitle READ cancelTitle NOTIFY changed)
  Q_PROPERTY(QString countdown READ countdown NOTIFY counted)

 public:
  using TextMeasure = std::function<QSizeF(const QString& text, QSizeF within)>;

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
  static void setTimeout(const std::string& value);
  static bool isVisible();  // main thread only

  // How large a text is in the label's font, at most `within`. Given by the view's side before the first
  // message; without it a text counts as one line of its length.
  void setTextMeasure(TextMeasure measure) { measure_ = std::move(measure); }

  // Called just before touches pass through again.
  void setBeforeTouchesPass(std::function<void()> before) { beforeTouchesPass_ = std::move(before); }

  Q_INVOKABLE void onBtnOk();
  Q_INVOKABLE void onBtnCancel();

  bool panelShown() const { return panelShown_; }
  double alpha() const { return alpha_; }
  double panelScale() const { return panelScale_; }
  int maskType() const { return maskType_; }
  bool takesTouches() const { return takesTouches_; }
  bool spinning() const { return spinning_; }
  QString text() const { return status_.value_or(QString()); }
  QString image() const { return image_; }
  QSizeF panelSize() const { return panelSize_; }
  QRectF labelFrame() const { return labelFrame_; }
  QPointF imageCenter() const { return imageCenter_; }
  QPointF spinnerCenter() const { return spinnerCenter_; }
  QPointF okCenter() const { return okCenter_; }
  QPointF cancelCenter() const { return cancelCenter_; }
  QString okTitle() const { return okTitle_.value_or(QString()); }
  QString cancelTitle() const { return cancelTitle_.value_or(QString()); }
  QString countdown() const { return countdown_; }

 Q_SIGNALS:
  void changed();
  // The panel comes in: from 1.3 times its size and alpha 0, within kFade.
  void entering();
  // A countdown value is to be shown, and to fade within kCountdownFade.
  void counted();

 public:
  static constexpr double kFade = 0.15;
  static constexpr double kCountdownFade = 1.3;
  static constexpr double kResultDelay = 2;

 private:
  using Status = std::optional<QString>;

  OvProgressHUD() = default;
  static void onMain(const char* where, std::function<void(OvProgressHUD&)> work);
  static void postToMain(std::function<void(OvProgressHUD&)> work);
  static void dismissWithStatus(const std::string& status, bool error, double delay);

  void showWithStatus(const Status& status, OvProgressHUDMaskType maskType, bool networkIndicator);
  void apply(const Status& status);
  void placeContents(bool hasText);
  void placeButtons();
  void showResult(const QString& status, bool error, double delay);
  void fadeOut();
  void faded();
  void setTakesTouches(bool takes);

  TextMeasure measure_;
  std::function<void()> beforeTouchesPass_;
  platform::Timers::Handle fadeOutTimer_;
  platform::Timers::Handle fadedTimer_;

  bool panelShown_ = false;
  double alpha_ = 0;
  double panelScale_ = 1;
  OvProgressHUDMaskType maskType_ = OvProgressHUDMaskTypeNone;
  bool takesTouches_ = false;
  bool spinning_ = false;
  Status status_;
  QString image_;
  QString countdown_;
  Status okTitle_;
  Status cancelTitle_;
  QSizeF panelSize_{100, 100};
  QRectF labelFrame_;
  QPointF imageCenter_;
  QPointF spinnerCenter_;
  QPointF okCenter_;
  QPointF cancelCenter_;
};

}  // namespace seedmote
