#pragma once

#include <string>

#include "app/resources/Image.h"
#include "app/resources/Paint.h"

namespace seedmote {

// Images, colours and words by their ids. Any thread; each operation makes the shared resources first.
class RVRes {
 public:
  RVRes() = delete;

  static void init();

  // 1 to 7: a state's icon, 11 to 17: the same when selected, 21 to 31: buttons. Any other id: plain grey.
  static Image getImage(int id);

  // 32: bars and tables, 33 and 34: patterns, 51 to 53: texts. Any other id: black.
  static Paint getColor(int id);

  // 1 to 7: a state's name, 101 to 111: labels of the statistics. Any other id: empty.
  static std::string getWording(int id);
};

}  // namespace seedmote
