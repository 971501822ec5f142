#include "client/UnconnectedNotice.h"

#include "client/RVTrans.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

UnconnectedNotice::UnconnectedNotice() : connected_(RVTrans::isConnected()) {}

UnconnectedNotice::~UnconnectedNotice() {
  if (!connected_) {
    OvProgressHUD::dismissWithError("Not connected!\nNothing was sent to the daemon.");
  }
}

}  // namespace seedmote
