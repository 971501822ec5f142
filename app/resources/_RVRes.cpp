#include "app/resources/_RVRes.h"

#include <algorithm>
#include <iterator>

namespace seedmote {
namespace {

struct Entry {
  int id;
  const char* text;
};

constexpr Entry kImages[] = {
    {1, "ios7_star.png"},
    {2, "ios7_pause.png"},
    {3, "ios7_download.png"},
    {4, "ios7_finished.png"},
    {5, "ios7_upload.png"},
    {6, "ios7_verifying.png"},
    {7, "ios7_waiting.png"},
    {11, "ios7_star_selected.png"},
    {12, "ios7_pause_selected.png"},
    {13, "ios7_download_selected.png"},
    {14, "ios7_finished_selected.png"},
    {15, "ios7_upload_selected.png"},
    {16, "ios7_verifying_selected.png"},
    {17, "ios7_waiting_selected.png"},
    {21, "ios7_setting.png"},
    {22, "ios7_refresh.png"},
    {23, "ios7_start.png"},
    {24, "ios7_pause.png"},  // stop
    {25, "startall.png"},
    {26, "stopall.png"},
    {27, "ios7_delete.png"},
    {28, "ios7_confirmdelete.png"},
    {30, "ios7_add.png"},
    {31, "ios7_down.png"},
};

constexpr Entry kWords[] = {
    {1, "All"},
    {2, "Paused"},
    {3, "Downloading"},
    {4, "Finished"},
    {5, "Seeding"},
    {6, "Verifying"},
    {7, "Waiting"},
    {101, "IP address/port"},
    {102, "Torrent count"},
    {103, "Active torrent count"},
    {104, "Paused torrent count"},
    {105, "Daemon verion"},  // spelled so on purpose
    {106, "RPC version"},
    {107, "Uploaded bytes"},
    {108, "Downloaded bytes"},
    {109, "Added files"},
    {110, "Session count"},
    {111, "Active time"},
};

template <std::size_t size>
const char* textOf(const Entry (&entries)[size], int id) {
  const auto found = std::find_if(std::begin(entries), std::end(entries),
                                  [id](const Entry& entry) { return entry.id == id; });
  return found == std::end(entries) ? nullptr : found->text;
}

constexpr int kBlankGray = 250;

}  // namespace

Image _RVRes::getImage(int id) const {
  if (const char* name = textOf(kImages, id)) return {.name = name, .fill = std::nullopt};
  return imageWithColor(RVUtility::colorWithGray(kBlankGray));
}

Paint _RVRes::getColor(int id) const {
  switch (id) {
    case 32:
      return {RVUtility::colorWithRed(240, 250, 254), {}};
    case 33:
      return {RVUtility::colorWithRed(214, 232, 246), "cellbk_highlight.bmp"};
    case 34:
      return {RVUtility::colorWithRed(226, 237, 243), "rightbarbk.bmp"};
    case 51:
      return {RVUtility::colorWithGray(88), {}};
    case 52:
      return {RVUtility::colorWithRed(0, 0, 255), {}};
    case 53:
      return {RVUtility::colorWithGray(255), {}};
    default:
      return {RVUtility::colorWithGray(0), {}};
  }
}

std::string _RVRes::getWording(int id) const {
  const char* word = textOf(kWords, id);
  return word == nullptr ? "" : word;
}

}  // namespace seedmote
