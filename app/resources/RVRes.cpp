#include "app/resources/RVRes.h"

#include "app/resources/_RVRes.h"

namespace seedmote {
namespace {

const _RVRes& shared() {
  static const _RVRes resources = [] {
    _RVRes made;
    made.initResource();
    return made;
  }();
  return resources;
}

}  // namespace

void RVRes::init() {
  shared();
}

Image RVRes::getImage(int id) {
  return shared().getImage(id);
}

Paint RVRes::getColor(int id) {
  return shared().getColor(id);
}

std::string RVRes::getWording(int id) {
  return shared().getWording(id);
}

}  // namespace seedmote
