#include "platform/ui/TableLayout.h"

#include <algorithm>

namespace seedmote::platform {

void TableLayout::clear(int rowCount) {
  rowCount_ = std::max(rowCount, 0);
  height_ = 0;
  rows_.clear();
  tops_.clear();
}

void TableLayout::append(int row, double height) {
  if (!(height > 0)) {
    return;
  }
  rows_.push_back(row);
  tops_.push_back(height_);
  height_ += std::min(height, kHighestRow);
}

double TableLayout::height(std::size_t shown) const {
  return (shown + 1 < tops_.size() ? tops_[shown + 1] : height_) - tops_[shown];
}

TableLayout::Range TableLayout::shownBetween(double top, double bottom) const {
  if (!(top < bottom) || top >= height_) {
    return {};
  }
  const auto firstBelow = std::upper_bound(tops_.begin(), tops_.end(), top);
  const auto end = std::lower_bound(tops_.begin(), tops_.end(), bottom);
  const auto above = static_cast<std::size_t>(firstBelow - tops_.begin());
  const Range range{above > 0 ? above - 1 : 0, static_cast<std::size_t>(end - tops_.begin())};
  return range.begin < range.end ? range : Range{};
}

std::size_t TableLayout::atOrAfter(int row) const {
  return static_cast<std::size_t>(std::lower_bound(rows_.begin(), rows_.end(), row) - rows_.begin());
}

std::size_t TableLayout::find(int row) const {
  const std::size_t place = atOrAfter(row);
  return place < rows_.size() && rows_[place] == row ? place : rows_.size();
}

double TableLayout::topOf(int row) const {
  const std::size_t place = atOrAfter(row);
  return place < rows_.size() ? tops_[place] : height_;
}

}  // namespace seedmote::platform
