#pragma once

#include <QRectF>
#include <QSizeF>
#include <optional>

namespace seedmote {

// How large a text may be before it is shrunk to fit, in points.
constexpr QSizeF kPanelTextLimit(200, 300);

// How large the panel is, and where in it everything stands. Points.
struct PanelLayout {
  QSizeF size{0, 0};
  QRectF label;
  QRectF countdown;  // as large as the label, around the spinner's centre
  QRectF image;
  QRectF spinner;
  QRectF okButton;  // the two may reach over each other and the panel's edges around a short text
  QRectF cancelButton;
  double buttonFace = 0;  // how wide a button may be drawn so that it does neither
  bool operator==(const PanelLayout&) const = default;
};

// For a text of this size, absent when there is none. `buttonRow`: at least one button exists.
PanelLayout layOutPanel(const std::optional<QSizeF>& text, bool buttonRow);

}  // namespace seedmote
