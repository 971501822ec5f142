#include "platform/core/Origin.h"

namespace seedmote::platform {

namespace {
thread_local Origin current = Origin::user;
}  // namespace

Origin currentOrigin() {
  return current;
}

OriginScope::OriginScope(Origin origin) : before_(current) {
  current = origin;
}

OriginScope::~OriginScope() {
  current = before_;
}

}  // namespace seedmote::platform
