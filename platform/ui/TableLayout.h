#pragma once

#include <cstddef>
#include <vector>

namespace seedmote::platform {

// Where the rows of a table stand: the running sum of their heights, in points from the top of the
// content. Rows of height 0 take no room here, however many there are. A plain value.
class TableLayout {
 public:
  // Higher rows are cut to this, so that no answer of a data source makes the sum meaningless.
  static constexpr double kHighestRow = 100000;

  // A part of the shown rows, by their place among the shown ones; `end` is one past the last.
  struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool operator==(const Range&) const = default;
  };

  void clear(int rowCount);

  // Rows come in rising order; a row that is left out has height 0. A height that is negative or no
  // number counts as 0.
  void append(int row, double height);

  // All rows, those of height 0 included.
  int rowCount() const { return rowCount_; }
  std::size_t shownCount() const { return rows_.size(); }
  double contentHeight() const { return height_; }

  int row(std::size_t shown) const { return rows_[shown]; }
  double top(std::size_t shown) const { return tops_[shown]; }
  double height(std::size_t shown) const;

  // The shown rows that touch the strip from `top` to `bottom`.
  Range shownBetween(double top, double bottom) const;

  // The place of `row` among the shown rows; shownCount() when it has no height or does not exist.
  std::size_t find(int row) const;

  // The place of `row`, or of the next that is shown; shownCount() after the last.
  std::size_t atOrAfter(int row) const;

  // Where `row` begins, or would begin if it had a height.
  double topOf(int row) const;

 private:
  int rowCount_ = 0;
  double height_ = 0;
  std::vector<int> rows_;
  std::vector<double> tops_;
};

}  // namespace seedmote::platform
