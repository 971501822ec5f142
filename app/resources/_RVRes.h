#pragma once

#include <string>

#include "app/resources/Image.h"
#include "app/resources/Paint.h"

namespace seedmote {

// The resources behind RVRes.
class _RVRes {
 public:
  void initResource() {}

  Image getImage(int id) const;
  Paint getColor(int id) const;
  std::string getWording(int id) const;
};

}  // namespace seedmote
