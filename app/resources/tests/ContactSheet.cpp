// Lays out every picture at each scale on the grounds that it may meet, for the eye: contact-sheet FILE.

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstdio>

#include "app/resources/tests/Pictures.h"

namespace seedmote {
namespace {

constexpr int kGap = 6;
constexpr int kCaption = 16;
constexpr int kSheetWidth = 2000;
const std::array<QColor, 3> kGrounds{QColor(255, 255, 255), QColor(240, 250, 254), QColor(38, 44, 50)};

// Places blocks in rows from left to right and says where the next one goes.
class Flow {
 public:
  QPoint place(QSize size) {
    if (x_ > kGap && x_ + size.width() + kGap > kSheetWidth) newRow();
    const QPoint at(x_, y_);
    x_ += size.width() + 2 * kGap;
    rowHeight_ = std::max(rowHeight_, size.height());
    return at;
  }

  void newRow() {
    y_ += rowHeight_ + kGap;
    x_ = kGap;
    rowHeight_ = 0;
  }

  int bottom() const { return y_ + rowHeight_ + kGap; }

 private:
  int x_ = kGap;
  int y_ = kGap;
  int rowHeight_ = 0;
};

QSize onGround(const Picture& picture) {
  return {6 * picture.width + 4 * kGap, 3 * picture.height + 2 * kGap};
}

void drawCaption(QPainter& painter, QPoint at, const QString& text) {
  painter.setPen(QColor(40, 48, 56));
  painter.drawText(QRect(at, QSize(kSheetWidth, kCaption)), Qt::AlignLeft | Qt::AlignTop, text);
}

// The three scales side by side on one ground.
void drawScales(QPainter& painter, QPoint at, const Picture& picture, const QColor& ground) {
  painter.fillRect(QRect(at, onGround(picture)), ground);
  int x = at.x() + kGap;
  for (int scale = 1; scale <= 3; ++scale) {
    const QImage image = load(picture.name, scale);
    painter.drawImage(x, at.y() + kGap, image);
    x += image.width() + kGap;
  }
}

// Tiled, once at each scale.
void drawPattern(QPainter& painter, Flow& flow, const Picture& picture) {
  const QPoint at = flow.place({408, 120 + kCaption});
  drawCaption(painter, at, QString::fromStdString(picture.name));
  for (int scale = 1; scale <= 3; ++scale) {
    const QRect area(at.x() + 136 * (scale - 1), at.y() + kCaption, 130, 120);
    painter.setBrushOrigin(area.topLeft());
    painter.fillRect(area, QBrush(load(picture.name, scale)));
  }
}

void drawPicture(QPainter& painter, Flow& flow, const Picture& picture) {
  if (picture.kind == Kind::kPattern) return drawPattern(painter, flow, picture);
  const QSize block = onGround(picture);
  const int columns = picture.kind == Kind::kSwitch ? 1 : 3;
  const QSize whole(columns * block.width(), 3 / columns * block.height() + kCaption);
  const QPoint at = flow.place(whole);
  drawCaption(painter, at, QString::fromStdString(picture.name));
  for (int ground = 0; ground < 3; ++ground) {
    const QPoint offset(ground % columns * block.width(), kCaption + ground / columns * block.height());
    drawScales(painter, at + offset, picture, kGrounds.at(static_cast<std::size_t>(ground)));
  }
}

// The switch as it is put together, with the thumb on its way from 0 (off) to 1 (on).
void drawSwitch(QPainter& painter, QPoint at, int scale, double way, bool touched) {
  const auto part = [scale](const char* name) { return load(name, scale); };
  const QImage track = part("square-switch-track.png");
  const QImage thumb = part(touched ? "square-switch-thumb-highlight.png" : "square-switch-thumb.png");
  QImage face(76 * scale, 27 * scale, QImage::Format_ARGB32_Premultiplied);
  face.fill(Qt::transparent);
  const double left = -3 + way * (76 + 3 + 3 - 33);
  const double center = (left + 16.5) * scale;
  QPainter inside(&face);
  inside.drawImage(QPointF(center - track.width() / 2.0, 0), track);
  inside.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  inside.drawImage(0, 0, part("square-switch-mask.png"));
  inside.end();
  painter.drawImage(at, face);
  painter.drawImage(at, part("square-switch-overlay.png"));
  painter.drawImage(QPointF(at.x() + left * scale, at.y() - 3 * scale), thumb);
}

void drawSwitches(QPainter& painter, Flow& flow) {
  for (int scale = 1; scale <= 3; ++scale) {
    const QSize cell(88 * scale, 39 * scale);
    const QPoint at = flow.place({3 * cell.width(), 3 * cell.height() + kCaption});
    drawCaption(painter, at, QStringLiteral("Off, half way, on, at scale %1").arg(scale));
    for (int ground = 0; ground < 3; ++ground) {
      for (int state = 0; state < 3; ++state) {
        const QPoint corner = at + QPoint(state * cell.width(), kCaption + ground * cell.height());
        painter.fillRect(QRect(corner, cell), kGrounds.at(static_cast<std::size_t>(ground)));
        drawSwitch(painter, corner + QPoint(6, 6) * scale, scale, state / 2.0, state == 1);
      }
    }
  }
}

// What stands in a list or in the action bar: all at 26 points and scale 1, opaque and half transparent.
void drawSmall(QPainter& painter, Flow& flow) {
  for (const double opacity : {1.0, 0.5}) {
    const QPoint at = flow.place({1100, 38 + kCaption});
    drawCaption(painter, at, QStringLiteral("26 points, opacity %1").arg(opacity));
    painter.fillRect(QRect(at + QPoint(0, kCaption), QSize(1100, 38)), kGrounds[1]);
    painter.setOpacity(opacity);
    QPoint next = at + QPoint(kGap, kCaption + kGap);
    for (const Picture& picture : pictures()) {
      if (picture.kind != Kind::kIcon && picture.kind != Kind::kElegant) continue;
      painter.drawImage(next, load(picture.name, picture.width == 22 ? 2 : 1)
                                  .scaled(26, 26, Qt::KeepAspectRatio, Qt::SmoothTransformation));
      next.rx() += 35;
    }
    painter.setOpacity(1);
    flow.newRow();
  }
}

QImage contactSheet() {
  QImage sheet(kSheetWidth, 4000, QImage::Format_RGB32);
  sheet.fill(QColor(214, 221, 226));
  QPainter painter(&sheet);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(12);
  painter.setFont(font);
  Flow flow;
  drawSmall(painter, flow);
  Kind kind = Kind::kIcon;
  for (const Picture& picture : pictures()) {
    if (picture.kind != kind && picture.kind != Kind::kResult) flow.newRow();
    kind = picture.kind;
    drawPicture(painter, flow, picture);
  }
  flow.newRow();
  drawSwitches(painter, flow);
  painter.end();
  return sheet.copy(0, 0, kSheetWidth, flow.bottom());
}

}  // namespace
}  // namespace seedmote

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("contact-sheet FILE: draws all pictures of the program into a PNG file\n", stderr);
    return 2;
  }
  return seedmote::contactSheet().save(QString::fromLocal8Bit(argv[1]), "PNG", 0) ? 0 : 1;
}
