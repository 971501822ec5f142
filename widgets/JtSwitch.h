#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <functional>

#include "platform/core/Timers.h"
#include "widgets/SwitchParts.h"

namespace seedmote {

// A drag of one finger or more: how far it has gone sideways since somebody last set that to 0, in points.
struct SwitchPan {
  enum class State { possible, began, changed, ended, cancelled, failed };
  State state = State::possible;
  double translation = 0;
};

// An on/off switch made of images: a track that slides under a fixed overlay, a thumb that is dragged or
// tapped, masks that cut the track to the switch's shape. It knows no view; JtSwitchView.qml shows one.
// Positions change at once, and the view takes as long as animationMilliseconds says to follow.
//
// Points, within the switch's bounds. Main thread. A switch costs little to make, so it may be made and
// dropped.
class JtSwitch : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("A switch is made by whoever wants to hear of its changes.")
  Q_PROPERTY(QRectF frame READ frame CONSTANT)
  Q_PROPERTY(bool on READ isOn NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart maskedTrackView READ maskedTrackView NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart trackImageView READ trackImageView NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart trackMaskLayer READ trackMaskLayer NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart overlayImageView READ overlayImageView NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart maskedThumbView READ maskedThumbView NOTIFY changed)
  Q_PROPERTY(seedmote::SwitchPart thumbImageView READ thumbImageView NOTIFY changed)
  Q_PROPERTY(int animationMilliseconds READ animationMilliseconds NOTIFY animationChanged)

 public:
  using ChangeHandler = std::function<void(bool on)>;

  // Seconds that the thumb takes from one stop to the other.
  static constexpr double kWholeWay = 0.25;

  // Where the switch stands in its surroundings, and its size.
  explicit JtSwitch(const QRectF& frame, QObject* parent = nullptr);

  QRectF frame() const { return frame_; }
  QRectF bounds() const { return {{0, 0}, frame_.size()}; }

  const SwitchImage& trackImage() const { return trackImageView_.image; }
  void setTrackImage(const SwitchImage& image);
  const SwitchImage& overlayImage() const { return overlayImageView_.image; }
  void setOverlayImage(const SwitchImage& image);
  const SwitchImage& thumbImage() const { return thumbImage_; }
  void setThumbImage(const SwitchImage& image);
  // Without one, a highlighted thumb looks as it always does.
  const SwitchImage& thumbHighlightImage() const { return thumbHighlightImage_; }
  void setThumbHighlightImage(const SwitchImage& image);
  // Without one, the track is cut at the bounds.
  const SwitchImage& trackMaskImage() const { return trackMaskImage_; }
  void setTrackMaskImage(const SwitchImage& image);
  // Without one, the thumb is whole and may stand beyond the bounds.
  const SwitchImage& thumbMaskImage() const { return maskedThumbView_.image; }
  void setThumbMaskImage(const SwitchImage& image);

  // How far the thumb stays away from the left and right edges; below 0 it goes beyond them. Floored.
  float thumbInsetX() const { return thumbInsetX_; }
  void setThumbInsetX(float inset);
  // How far the thumb's upper edge stands below the switch's.
  float thumbOffsetY() const { return thumbOffsetY_; }
  void setThumbOffsetY(float offset);

  bool isOn() const { return on_; }
  // Places the thumb whether or not the value changes; a change with actions calls the change handler, then
  // sends valueChanged. Neither animates nor sends actions unless told so. The handler may destroy the
  // switch.
  void setOn(bool on);
  void setOn(bool on, bool animated);
  void setOn(bool on, bool animated, bool sendActions);
  const ChangeHandler& changeHandler() const { return changeHandler_; }
  void setChangeHandler(ChangeHandler handler) { changeHandler_ = std::move(handler); }

  // Where the thumb stands: 0 at the left stop, 1 at the right one. 0 and a line in the log when the two are
  // the same.
  double valueAtThumbPosition() const;
  void thumbImageHighlighted(bool highlighted);
  void updateThumbPositionAnimated(bool animated);

  // Touches. A drag's translation is taken and set to 0.
  void handleThumbPanGesture(SwitchPan& pan);
  void handleTapGesture();
  void touchesBegan();
  // The touch ended as neither a drag nor a tap: the thumb goes back to its stop.
  void touchesCancelled();

  // The masks at rest, cut from the track's mask.
  void createMasks();
  const SwitchImage& onTrackMaskImage() const { return onTrackMaskImage_; }
  const SwitchImage& offTrackMaskImage() const { return offTrackMaskImage_; }
  // `rect` in points within the image; what of it lies outside is left out.
  static SwitchImage cropImage(const SwitchImage& image, const QRectF& rect);
  // The track's mask while the thumb moves, and when a move has finished.
  void standardMask();
  void mask();

  // What is to be drawn, from the back to the front: the track in its container and under its mask, the
  // overlay, the thumb in its container, whose image is the thumb's mask.
  const SwitchPart& maskedTrackView() const { return maskedTrackView_; }
  const SwitchPart& trackImageView() const { return trackImageView_; }
  const SwitchPart& trackMaskLayer() const { return trackMaskLayer_; }
  const SwitchPart& overlayImageView() const { return overlayImageView_; }
  const SwitchPart& maskedThumbView() const { return maskedThumbView_; }
  const SwitchPart& thumbImageView() const { return thumbImageView_; }
  int animationMilliseconds() const;

 Q_SIGNALS:
  // The value has changed and actions are sent; after the change handler.
  void valueChanged();
  // Something looks otherwise.
  void changed();
  // Told before `changed`, so that the view knows how long to take.
  void animationChanged();

 private:
  void commonInit();
  void imagesChanged();
  double travel() const;
  double stop(bool on) const;
  double reach() const;
  void placeThumb(double centerX, double seconds);

  QRectF frame_;
  SwitchImage thumbImage_;
  SwitchImage thumbHighlightImage_;
  SwitchImage trackMaskImage_;
  SwitchImage onTrackMaskImage_;
  SwitchImage offTrackMaskImage_;
  float thumbInsetX_ = 0;
  float thumbOffsetY_ = 0;
  bool on_ = false;
  ChangeHandler changeHandler_;

  SwitchPart maskedTrackView_;
  SwitchPart trackImageView_;
  SwitchPart trackMaskLayer_;
  SwitchPart overlayImageView_;
  SwitchPart maskedThumbView_;
  SwitchPart thumbImageView_;
  double animationDuration_ = 0;
  platform::Timers::Handle moveTimer_;
};

}  // namespace seedmote
