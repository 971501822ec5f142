#pragma once

namespace seedmote {

// Says in the window what is wrong with the stored settings, once for each thing that is. Made and gone on
// the main thread, while there are services.
class StorageNotice final {
 public:
  StorageNotice();
  ~StorageNotice();
  StorageNotice(const StorageNotice&) = delete;
  StorageNotice& operator=(const StorageNotice&) = delete;
};

}  // namespace seedmote
