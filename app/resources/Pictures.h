#pragma once

#include <QImage>
#include <QString>
#include <string>
#include <vector>

namespace seedmote {

enum class Kind { kIcon, kElegant, kResult, kSwitch, kPattern };

struct Picture {
  std::string name;
  Kind kind;
  int width;  // in points
  int height;
};

// All pictures of the program.
inline const std::vector<Picture>& pictures() {
  static const std::vector<Picture> kAll = [] {
    std::vector<Picture> all;
    for (const char* icon : {"star", "pause", "download", "finished", "upload", "verifying", "waiting"}) {
      for (const char* end : {".png", "_selected.png"}) {
        all.push_back({std::string("ios7_") + icon + end, Kind::kIcon, 32, 32});
      }
    }
    for (const char* icon : {"ios7_setting", "ios7_refresh", "ios7_start", "startall", "stopall",
                             "ios7_delete", "ios7_confirmdelete", "ios7_add", "ios7_down"}) {
      all.push_back({std::string(icon) + ".png", Kind::kIcon, 32, 32});
    }
    for (const char* icon :
         {"Star", "Pause", "Download", "Finish_Stopped", "Seeding", "Checking", "Waiting"}) {
      all.push_back({std::string("Ellegant_") + icon + "_44_44.png", Kind::kElegant, 44, 44});
    }
    all.push_back({"Ellegant_Refresh_22_22.png", Kind::kElegant, 22, 22});
    all.push_back({"OvProgressHUD.bundle/success.png", Kind::kResult, 28, 28});
    all.push_back({"OvProgressHUD.bundle/error.png", Kind::kResult, 28, 28});
    all.push_back({"square-switch-track.png", Kind::kSwitch, 129, 27});
    all.push_back({"square-switch-overlay.png", Kind::kSwitch, 76, 27});
    all.push_back({"square-switch-mask.png", Kind::kSwitch, 76, 27});
    all.push_back({"square-switch-thumb.png", Kind::kSwitch, 33, 33});
    all.push_back({"square-switch-thumb-highlight.png", Kind::kSwitch, 33, 33});
    all.push_back({"cellbk_highlight.bmp", Kind::kPattern, 8, 8});
    all.push_back({"rightbarbk.bmp", Kind::kPattern, 8, 8});
    return all;
  }();
  return kAll;
}

// The drawing for a scale of 1, 2 or 3, in pixels; null when there is none.
inline QImage load(const std::string& name, int scale) {
  QString path = QStringLiteral(":/seedmote/images/") + QString::fromStdString(name);
  if (scale > 1) path.insert(path.lastIndexOf(QLatin1Char('.')), QStringLiteral("@%1x").arg(scale));
  QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32);
  image.setDevicePixelRatio(1);  // the name would make it a larger picture's half or third
  return image;
}

}  // namespace seedmote
