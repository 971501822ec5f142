#pragma once

#include <QImage>
#include <QString>
#include <vector>

namespace seedmote {

enum class Kind { kIcon, kElegant, kResult, kSwitch, kPattern };

struct Picture {
  const char* name;
  Kind kind;
  int width;  // in points
  int height;
};

// All pictures of the program.
inline const std::vector<Picture>& pictures() {
  static const std::vector<Picture> kAll = [] {
    std::vector<Picture> all;
    for (const char* icon : {"ios7_star.png",
                             "ios7_star_selected.png",
                             "ios7_pause.png",
                             "ios7_pause_selected.png",
                             "ios7_download.png",
                             "ios7_download_selected.png",
                             "ios7_finished.png",
                             "ios7_finished_selected.png",
                             "ios7_upload.png",
                             "ios7_upload_selected.png",
                             "ios7_verifying.png",
                             "ios7_verifying_selected.png",
                             "ios7_waiting.png",
                             "ios7_waiting_selected.png",
                             "ios7_setting.png",
                             "ios7_refresh.png",
                             "ios7_start.png",
                             "startall.png",
                             "stopall.png",
                             "ios7_delete.png",
                             "ios7_confirmdelete.png",
                             "ios7_add.png",
                             "ios7_down.png"})
      all.push_back({icon, Kind::kIcon, 32, 32});
    for (const char* icon :
         {"Ellegant_Star_44_44.png", "Ellegant_Pause_44_44.png", "Ellegant_Download_44_44.png",
          "Ellegant_Finish_Stopped_44_44.png", "Ellegant_Seeding_44_44.png", "Ellegant_Checking_44_44.png",
          "Ellegant_Waiting_44_44.png"})
      all.push_back({icon, Kind::kElegant, 44, 44});
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
inline QImage load(const QString& name, int scale) {
  QString path = QStringLiteral(":/seedmote/images/") + name;
  if (scale > 1) path.insert(path.lastIndexOf(QLatin1Char('.')), QStringLiteral("@%1x").arg(scale));
  QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32);
  image.setDevicePixelRatio(1);  // the name would make it a larger picture's half or third
  return image;
}

}  // namespace seedmote
