#include "settings/AuthorMail.h"

#include "client/PercentEscapes.h"
#include "client/RVTrans.h"
#include "platform/core/Device.h"
#include "platform/core/Format.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"

namespace seedmote {

std::string authorMailLink(const std::string& address) {
  const platform::Device& device = platform::services().device;
  const std::string nobody;  // gets a copy
  std::string link = platform::format("mailto:%@", address);
  link += platform::format("?cc=%@", nobody);
  link += platform::format("&subject=Mail for Seedmote Ver.%@",
                           platform::services().defaults.object("Version")["Value"].asText());
  link += platform::format(
      "&body=<br><br><br><br><br>dmn version: %@<br>rpc version: %ld<br>ios version: %@ (%@)",
      RVTrans::getDaemonVersion(), RVTrans::getRPCVersion(), device.systemVersion(), device.name());
  return addingPercentEscapes(link);
}

}  // namespace seedmote
