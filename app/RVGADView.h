#pragma once

#include <QSizeF>
#include <string>
#include <vector>

#include "platform/core/Device.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

// What an advertisement is asked for with.
struct AdRequest {
  std::vector<std::string> testDevices;
  std::vector<std::string> keywords;
};

// The slot of the banner. Seedmote brings no library of advertisements: the slot has its place and knows what
// it would ask for, draws nothing, takes no touches and opens no connection. Main thread.
class RVGADView final {
 public:
  // "none": there is no such library.
  static constexpr const char* kLibraryVersion = "none";

  // In the standard size of a banner on a phone, in the full size on a tablet.
  explicit RVGADView(platform::Idiom idiom);

  QSizeF size() const { return size_; }
  const std::string& adUnitID() const { return adUnitID_; }
  void setAdUnitID(std::string identifier) { adUnitID_ = std::move(identifier); }
  // The view of the root screen, in which a library would open an advertisement; not owned.
  const platform::ViewGeometry* rootView() const { return rootView_; }
  void setRootView(const platform::ViewGeometry* view) { rootView_ = view; }
  const AdRequest& request() const { return request_; }
  // Keeps the request; nobody is asked.
  void loadRequest(AdRequest request) { request_ = std::move(request); }

 private:
  QSizeF size_;
  std::string adUnitID_;
  const platform::ViewGeometry* rootView_ = nullptr;
  AdRequest request_;
};

}  // namespace seedmote
