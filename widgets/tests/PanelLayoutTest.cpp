#include "widgets/PanelLayout.h"

#include <gtest/gtest.h>

#include <QPointF>

namespace seedmote {
namespace {

constexpr auto kNoText = std::nullopt;

TEST(PanelLayout, TheTextDecidesHowLargeThePanelIs) {
  const struct {
    const char* what;
    std::optional<QSizeF> text;
    bool buttons;
    QSizeF panel;
    QRectF label;
    QPointF image, spinner;
  } cases[] = {
      {"no text", kNoText, false, {100, 100}, {}, {50, 50}, {50.5, 50.5}},
      {"no text, buttons", kNoText, true, {100, 140}, {}, {50, 70}, {50.5, 70.5}},
      {"narrow", QSizeF(60, 20), false, {124, 100}, {0, 66, 124, 20}, {62, 36}, {62.5, 40.5}},
      {"narrow, buttons", QSizeF(60, 20), true, {124, 140}, {0, 66, 124, 20}, {62, 36}, {62.5, 40.5}},
      {"just narrow", QSizeF(100, 21), false, {124, 101}, {12, 66, 100, 21}, {62, 36}, {62.5, 40.5}},
      {"odd width", QSizeF(150.2, 20), false, {176, 100}, {0, 66, 176, 20}, {88, 36}, {88.5, 40.5}},
      {"half is odd", QSizeF(102, 20), false, {126, 100}, {0, 66, 126, 20}, {63, 36}, {63.5, 40.5}},
      {"two lines", QSizeF(120, 40), false, {144, 120}, {12, 66, 120, 40}, {72, 36}, {72.5, 40.5}},
      {"largest", QSizeF(200, 300), true, {224, 420}, {12, 66, 200, 300}, {112, 36}, {112.5, 40.5}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const PanelLayout layout = layOutPanel(c.text, c.buttons);
    EXPECT_EQ(layout.size, c.panel);
    EXPECT_EQ(layout.label, c.label);
    EXPECT_EQ(layout.countdown.size(), c.label.size());
    EXPECT_EQ(layout.countdown.center(), c.spinner);
    EXPECT_EQ(layout.image, QRectF(c.image - QPointF(14, 14), QSizeF(28, 28)));
    EXPECT_EQ(layout.spinner, QRectF(c.spinner - QPointF(18.5, 18.5), QSizeF(37, 37)));
  }
}

TEST(PanelLayout, ButtonsShareALineAndAreDrawnApart) {
  const struct {
    QSizeF text;
    QPointF ok, cancel;
    double face;
  } cases[] = {
      {{200, 20}, {56, 110}, {168, 110}, 80},
      {{150, 60}, {44, 150}, {131, 150}, 79},
      {{140, 20}, {41, 110}, {123, 110}, 74},
      {{60, 20}, {31, 110}, {93, 110}, 54},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.width());
    const PanelLayout layout = layOutPanel(c.text, true);
    EXPECT_EQ(layout.okButton.size(), QSizeF(80, 30));
    EXPECT_EQ(layout.cancelButton.size(), QSizeF(80, 30));
    EXPECT_EQ(layout.buttonFace, c.face);
    EXPECT_EQ(layout.okButton.center(), c.ok);
    EXPECT_EQ(layout.cancelButton.center(), c.cancel);
  }
}

}  // namespace
}  // namespace seedmote
