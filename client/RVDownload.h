#pragma once

#include <memory>
#include <optional>
#include <string>

namespace seedmote {

// Fetches what stands under a URL, for one who wants the bytes of a linked torrent file. What an HTTP error
// page holds counts as fetched. Operations may run on any thread, and this may go while a download runs.
class RVDownload final {
 public:
  RVDownload();
  RVDownload(const RVDownload&) = delete;
  RVDownload& operator=(const RVDownload&) = delete;

  // Starts the download on a thread of its own, with the platform's default time-out, and returns.
  void downloadFile(const std::string& url);

  // Blocks until blocking() is false, looking once a second, and returns resData(). A download that fails or
  // brings nothing never gets there: only the program's end does, and cuts the wait short.
  std::optional<std::string> getDownloadFile();

  // True from the construction and from the start of each download until one succeeds.
  bool blocking() const;
  // What the latest download that succeeded brought; absent before.
  std::optional<std::string> resData() const;

 private:
  struct State;
  std::shared_ptr<State> state_;  // shared with the downloads that run
};

}  // namespace seedmote
