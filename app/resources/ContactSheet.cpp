// Lays out every picture at each scale on the grounds that it may meet, for the eye: contact-sheet FILE.

#include <QGuiApplication>
#include <QPainter>
#include <algorithm>
#include <cstdio>

#include "app/resources/Pictures.h"

namespace seedmote {
namespace {

constexpr int kGap = 6;
constexpr int kCaption = 16;
constexpr int kSheetWidth = 2000;
const QColor kGrounds[] = {QColor(255, 255, 255), QColor(240, 250, 254), QColor(38, 44, 50)};

class Sheet {
 public:
  Sheet() {
    image_.fill(QColor(214, 221, 226));
    painter.begin(&image_);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    painter.setFont(font);
  }

  // Where the next block of this size goes, from left to right in rows; its caption stands above it.
  QPoint block(const QString& caption, QSize size) {
    if (x_ > kGap && x_ + size.width() + kGap > kSheetWidth) newRow();
    const QPoint at(x_, y_);
    x_ += size.width() + 2 * kGap;
    rowHeight_ = std::max(rowHeight_, size.height() + kCaption);
    painter.setPen(QColor(40, 48, 56));
    painter.drawText(QRect(at, QSize(kSheetWidth, kCaption)), Qt::AlignLeft | Qt::AlignTop, caption);
    return at + QPoint(0, kCaption);
  }
  void newRow() {
    y_ += rowHeight_ + kGap;
    x_ = kGap;
    rowHeight_ = 0;
  }
  QImage finished() {
    painter.end();
    return image_.copy(0, 0, kSheetWidth, y_ + rowHeight_ + kGap);
  }

  QPainter painter;

 private:
  QImage image_{kSheetWidth, 4000, QImage::Format_RGB32};
  int x_ = kGap;
  int y_ = kGap;
  int rowHeight_ = 0;
};

// What stands in a list or in the action bar: all at 26 points and scale 1, opaque and half transparent.
void drawSmall(Sheet& sheet) {
  for (const double opacity : {1.0, 0.5}) {
    const QSize size(1100, 38);
    const QPoint at = sheet.block(QStringLiteral("26 points, opacity %1").arg(opacity), size);
    sheet.painter.fillRect(QRect(at, size), kGrounds[1]);
    sheet.painter.setOpacity(opacity);
    QPoint next = at + QPoint(kGap, kGap);
    for (const Picture& picture : pictures()) {
      if (picture.kind != Kind::kIcon && picture.kind != Kind::kElegant) continue;
      sheet.painter.drawImage(next, load(picture.name, picture.width == 22 ? 2 : 1)
                                        .scaled(26, 26, Qt::KeepAspectRatio, Qt::SmoothTransformation));
      next.rx() += 35;
    }
    sheet.painter.setOpacity(1);
    sheet.newRow();
  }
}

// Tiled, once at each scale.
void drawPattern(Sheet& sheet, const Picture& picture) {
  const QPoint at = sheet.block(QString::fromStdString(picture.name), {408, 120});
  for (int scale = 1; scale <= 3; ++scale) {
    const QRect area(at + QPoint(136 * (scale - 1), 0), QSize(130, 120));
    sheet.painter.setBrushOrigin(area.topLeft());
    sheet.painter.fillRect(area, QBrush(load(picture.name, scale)));
  }
}

// The three scales side by side, on each ground.
void drawPicture(Sheet& sheet, const Picture& picture) {
  const QSize size(6 * picture.width + 4 * kGap, 3 * picture.height + 2 * kGap);
  const int columns = picture.kind == Kind::kSwitch ? 1 : 3;
  const QPoint at = sheet.block(QString::fromStdString(picture.name),
                                {columns * size.width(), 3 / columns * size.height()});
  for (int ground = 0; ground < 3; ++ground) {
    QPoint next = at + QPoint(ground % columns * size.width(), ground / columns * size.height());
    sheet.painter.fillRect(QRect(next, size), kGrounds[ground]);
    next += QPoint(kGap, kGap);
    for (int scale = 1; scale <= 3; ++scale) {
      sheet.painter.drawImage(next, load(picture.name, scale));
      next.rx() += picture.width * scale + kGap;
    }
  }
}

// The switch as it is put together, with the thumb on its way from 0 (off) to 1 (on).
void drawSwitch(QPainter& painter, QPoint at, int scale, double way, bool touched) {
  const QImage track = load("square-switch-track.png", scale);
  QImage face(76 * scale, 27 * scale, QImage::Format_ARGB32_Premultiplied);
  face.fill(Qt::transparent);
  const double left = -3 + way * (76 + 3 + 3 - 33);
  const double center = (left + 16.5) * scale;
  QPainter inside(&face);
  inside.drawImage(QPointF(center - track.width() / 2.0, 0), track);
  inside.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  inside.drawImage(0, 0, load("square-switch-mask.png", scale));
  inside.end();
  painter.drawImage(at, face);
  painter.drawImage(at, load("square-switch-overlay.png", scale));
  painter.drawImage(QPointF(at.x() + left * scale, at.y() - 3 * scale),
                    load(touched ? "square-switch-thumb-highlight.png" : "square-switch-thumb.png", scale));
}

void drawSwitches(Sheet& sheet) {
  for (int scale = 1; scale <= 3; ++scale) {
    const QSize cell(88 * scale, 39 * scale);
    const QPoint at = sheet.block(QStringLiteral("Off, half way, on, at scale %1").arg(scale), 3 * cell);
    for (int place = 0; place < 9; ++place) {
      const int state = place % 3;
      const QPoint corner = at + QPoint(state * cell.width(), place / 3 * cell.height());
      sheet.painter.fillRect(QRect(corner, cell), kGrounds[place / 3]);
      drawSwitch(sheet.painter, corner + QPoint(6, 6) * scale, scale, state / 2.0, state == 1);
    }
  }
}

}  // namespace
}  // namespace seedmote

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("contact-sheet FILE: draws all pictures of the program into a PNG file\n", stderr);
    return 2;
  }
  using namespace seedmote;
  Sheet sheet;
  drawSmall(sheet);
  Kind kind = Kind::kIcon;
  for (const Picture& picture : pictures()) {
    if (picture.kind != kind && picture.kind != Kind::kResult) sheet.newRow();
    kind = picture.kind;
    kind == Kind::kPattern ? drawPattern(sheet, picture) : drawPicture(sheet, picture);
  }
  sheet.newRow();
  drawSwitches(sheet);
  return sheet.finished().save(QString::fromLocal8Bit(argv[1]), "PNG", 0) ? 0 : 1;
}
