#include "widgets/JtSwitch.h"

#include <QPointer>
#include <QScopeGuard>
#include <algorithm>
#include <cmath>

#include "platform/core/Log.h"
#include "platform/core/Services.h"

namespace seedmote {

JtSwitch::JtSwitch(const QRectF& frame, QObject* parent) : QObject(parent), frame_(frame) {
  commonInit();
}

void JtSwitch::commonInit() {
  for (SwitchPart* part : {&maskedTrackView_, &trackImageView_, &trackMaskLayer_, &overlayImageView_,
                           &maskedThumbView_, &thumbImageView_}) {
    part->frame = bounds();
  }
}

// The images.

void JtSwitch::setTrackImage(const SwitchImage& image) {
  trackImageView_.image = image;
  trackImageView_.frame.setSize(image.exists() ? image.size() : bounds().size());
  imagesChanged();
}

void JtSwitch::setOverlayImage(const SwitchImage& image) {
  overlayImageView_.image = image;
  imagesChanged();
}

void JtSwitch::setThumbImage(const SwitchImage& image) {
  thumbImage_ = image;
  thumbImageView_.frame.setSize(image.exists() ? image.size() : bounds().size());
  imagesChanged();
}

void JtSwitch::setThumbHighlightImage(const SwitchImage& image) {
  thumbHighlightImage_ = image;
  imagesChanged();
}

void JtSwitch::setTrackMaskImage(const SwitchImage& image) {
  trackMaskImage_ = image;
  imagesChanged();
}

void JtSwitch::setThumbMaskImage(const SwitchImage& image) {
  maskedThumbView_.image = image;
  imagesChanged();
}

void JtSwitch::setThumbInsetX(float inset) {
  thumbInsetX_ = std::floor(inset);
  imagesChanged();
}

void JtSwitch::setThumbOffsetY(float offset) {
  thumbOffsetY_ = offset;
  imagesChanged();
}

void JtSwitch::imagesChanged() {
  createMasks();
  updateThumbPositionAnimated(false);
}

// The value.

void JtSwitch::setOn(bool on) {
  setOn(on, false);
}

void JtSwitch::setOn(bool on, bool animated) {
  setOn(on, animated, false);
}

void JtSwitch::setOn(bool on, bool animated, bool sendActions) {
  standardMask();
  const QPointer<JtSwitch> self(this);
  // Also when the handler raises: a thumb must not stay where a finger left it.
  const auto place = qScopeGuard([self, animated] {
    if (self) {
      self->updateThumbPositionAnimated(animated);
    }
  });
  if (on == on_) {
    return;
  }
  on_ = on;
  if (sendActions) {
    if (const ChangeHandler handler = changeHandler_) {
      handler(on);
    }
    if (self) {
      Q_EMIT valueChanged();
    }
  }
}

// The thumb.

double JtSwitch::travel() const {
  return bounds().width() - 2 * thumbInsetX_ - thumbImageView_.frame.width();
}

// The thumb's left edge there.
double JtSwitch::stop(bool on) const {
  return thumbInsetX_ + (on ? travel() : 0);
}

// From the thumb's centre at a stop to the switch's end on that side.
double JtSwitch::reach() const {
  return thumbInsetX_ + thumbImageView_.frame.width() / 2;
}

double JtSwitch::valueAtThumbPosition() const {
  if (travel() == 0) {
    platform::log(
        "JtSwitch can't get value at thumb position because you are going to have a bad time dividing by "
        "zero.");
    return 0;
  }
  return (thumbImageView_.frame.left() - thumbInsetX_) / travel();
}

void JtSwitch::thumbImageHighlighted(bool highlighted) {
  const bool other = highlighted && thumbHighlightImage_.exists();
  thumbImageView_.image = other ? thumbHighlightImage_ : thumbImage_;
  Q_EMIT changed();
}

void JtSwitch::updateThumbPositionAnimated(bool animated) {
  thumbImageHighlighted(false);
  const double toGo = animated ? std::abs(valueAtThumbPosition() - (on_ ? 1 : 0)) : 0;
  const double seconds = toGo * kWholeWay;
  placeThumb(stop(on_) + thumbImageView_.frame.width() / 2, seconds);
  if (seconds > 0) {
    moveTimer_ = platform::services().timers.once("switch at rest", seconds, [this] { mask(); });
  } else {
    mask();
  }
}

// The track's middle stays under the thumb's.
void JtSwitch::placeThumb(double centerX, double seconds) {
  animationDuration_ = seconds;
  Q_EMIT animationChanged();
  QRectF& thumb = thumbImageView_.frame;
  thumb.moveTo(centerX - thumb.width() / 2, thumbOffsetY_);
  trackImageView_.frame.moveCenter({centerX, bounds().center().y()});
  Q_EMIT changed();
}

int JtSwitch::animationMilliseconds() const {
  return int(std::lround(animationDuration_ * 1000));
}

// Touches.

void JtSwitch::handleThumbPanGesture(SwitchPan& pan) {
  switch (pan.state) {
    case SwitchPan::State::began:
      standardMask();
      thumbImageHighlighted(true);
      [[fallthrough]];
    case SwitchPan::State::changed: {
      const double half = thumbImageView_.frame.width() / 2;
      const double wanted = std::floor(thumbImageView_.frame.center().x() + pan.translation);
      // Not std::clamp: a thumb wider than its way has its stops in the other order.
      placeThumb(std::max(stop(false) + half, std::min(stop(true) + half, wanted)), 0);
      pan.translation = 0;
      break;
    }
    case SwitchPan::State::ended:
      setOn(valueAtThumbPosition() > 0.5, true, true);
      break;
    default:
      break;
  }
}

void JtSwitch::handleTapGesture() {
  setOn(!on_, true, true);
}

void JtSwitch::touchesBegan() {
  thumbImageHighlighted(true);
}

void JtSwitch::touchesCancelled() {
  updateThumbPositionAnimated(true);
}

// The masks.

// Each reaches from the end that the thumb stands at to the switch's other end.
void JtSwitch::createMasks() {
  const QSizeF whole = trackMaskImage_.size();
  const QSizeF extent(2 * reach() + travel(), whole.height());
  offTrackMaskImage_ = cropImage(trackMaskImage_, {{0, 0}, extent});
  onTrackMaskImage_ = cropImage(trackMaskImage_, {{whole.width() - extent.width(), 0}, extent});
}

SwitchImage JtSwitch::cropImage(const SwitchImage& image, const QRectF& rect) {
  const QRectF scaled(rect.topLeft() * image.scale, rect.size() * image.scale);
  SwitchImage part = image;
  part.pixels &= scaled.toAlignedRect().translated(image.pixels.topLeft());
  return part;
}

void JtSwitch::standardMask() {
  moveTimer_.stop();
  trackMaskLayer_ = {.frame = bounds(), .image = trackMaskImage_};
  Q_EMIT changed();
}

void JtSwitch::mask() {
  moveTimer_.stop();
  const SwitchImage& part = on_ ? onTrackMaskImage_ : offTrackMaskImage_;
  const double center = thumbImageView_.frame.center().x();
  const double width = part.size().width();
  const double left = on_ ? center + reach() - width : center - reach();
  trackMaskLayer_ = {.frame = {left, 0, width, bounds().height()}, .image = part};
  Q_EMIT changed();
}

}  // namespace seedmote
