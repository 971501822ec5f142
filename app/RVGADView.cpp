#include "app/RVGADView.h"

#include "app/ScreenPlan.h"

namespace seedmote {

RVGADView::RVGADView(platform::Idiom idiom) {
  const auto place = static_cast<int>(idiom);
  size_ = {ScreenPlan::kAdWidth[place], ScreenPlan::kAdHeight[place]};
}

}  // namespace seedmote
