#pragma once

#include <QMetaType>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

namespace seedmote {

// The parts of the overlay as values that its view draws. Lengths are points, angles degrees clockwise,
// scales and alphas 1 for what is as it should be. Frames are within the panel.

// The overlay's own window: the whole screen held upright, and how far to turn that so that it reads upright.
struct OverlayWindow {
  Q_GADGET
  Q_PROPERTY(QSizeF size MEMBER size)
  Q_PROPERTY(double rotation MEMBER rotation)
  Q_PROPERTY(bool takesTouches MEMBER takesTouches)

 public:
  QSizeF size{0, 0};
  double rotation = 0;
  bool takesTouches = false;
  bool operator==(const OverlayWindow&) const = default;
};

// The panel. It exists from a show until it has faded out.
struct OverlayPanel {
  Q_GADGET
  Q_PROPERTY(bool exists MEMBER exists)
  Q_PROPERTY(QPointF center MEMBER center)
  Q_PROPERTY(QPointF drawnCenter READ drawnCenter)
  Q_PROPERTY(QSizeF size MEMBER size)
  Q_PROPERTY(double rotation MEMBER rotation)
  Q_PROPERTY(double scale MEMBER scale)

 public:
  bool exists = false;
  QPointF center;  // on the screen held upright
  QSizeF size{0, 0};
  double rotation = 0;
  double scale = 1;
  bool operator==(const OverlayPanel&) const = default;

  // Less than a point beside the centre, so that edges and texts stand on whole points and are sharp.
  QPointF drawnCenter() const;
};

struct OverlayLabel {
  Q_GADGET
  Q_PROPERTY(QString text MEMBER text)
  Q_PROPERTY(QRectF frame MEMBER frame)
  Q_PROPERTY(int fontSize MEMBER fontSize)
  Q_PROPERTY(double alpha MEMBER alpha)

 public:
  static constexpr int kFontSize = 16;

  QString text;
  QRectF frame;
  int fontSize = kFontSize;  // less where the text would not fit
  double alpha = 1;
  bool operator==(const OverlayLabel&) const = default;
};

struct OverlayImage {
  Q_GADGET
  Q_PROPERTY(bool shown MEMBER shown)
  Q_PROPERTY(QString name MEMBER name)
  Q_PROPERTY(QRectF frame MEMBER frame)

 public:
  bool shown = false;
  QString name;  // among the program's images
  QRectF frame;
  bool operator==(const OverlayImage&) const = default;
};

// Hidden when it does not spin.
struct OverlaySpinner {
  Q_GADGET
  Q_PROPERTY(bool spinning MEMBER spinning)
  Q_PROPERTY(QRectF frame MEMBER frame)

 public:
  bool spinning = false;
  QRectF frame;
  bool operator==(const OverlaySpinner&) const = default;
};

// Exists only while it has a title.
struct OverlayButton {
  Q_GADGET
  Q_PROPERTY(bool exists MEMBER exists)
  Q_PROPERTY(QString title MEMBER title)
  Q_PROPERTY(QRectF frame MEMBER frame)
  Q_PROPERTY(double face MEMBER face)

 public:
  bool exists = false;
  QString title;
  QRectF frame;     // where it takes touches
  double face = 0;  // how wide it is drawn in the middle of that
  bool operator==(const OverlayButton&) const = default;
};

}  // namespace seedmote
