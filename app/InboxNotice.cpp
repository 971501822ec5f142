#include "app/InboxNotice.h"

#include "platform/ui/LayoutEntry.h"

namespace seedmote {

void InboxNotice::show(const QString& text, bool canChoose) {
  if (text_ != text || canChoose_ != canChoose) {
    text_ = text;
    canChoose_ = canChoose;
    Q_EMIT changed();
  }
}

void InboxNotice::setChoices(std::function<void()> tryAgain, std::function<void()> drop) {
  tryAgain_ = std::move(tryAgain);
  drop_ = std::move(drop);
}

void InboxNotice::tryAgain() {
  platform::pressFromLayout(this, "try what waits again", [](const InboxNotice& notice) {
    if (notice.tryAgain_ && notice.canChoose_) {
      notice.tryAgain_();
    }
  });
}

void InboxNotice::drop() {
  platform::pressFromLayout(this, "drop what waits", [](const InboxNotice& notice) {
    if (notice.drop_ && notice.canChoose_) {
      notice.drop_();
    }
  });
}

}  // namespace seedmote
