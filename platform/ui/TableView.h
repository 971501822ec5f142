#pragma once

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QtQmlIntegration>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/ui/TableCells.h"
#include "platform/ui/TableLayout.h"
#include "platform/ui/TableViewCell.h"

namespace seedmote::platform {

class TableViewDataSource;

// A layout pass under way.
struct TablePass {
  static constexpr int kAllRows = std::numeric_limits<int>::max();
  int count = 0;
  int next = 0;    // the row that is measured next
  int raised = 0;  // rows whose height could not be had
  TableLayout layout;
};

// A table as the screens know it: rows of any height, 0 included, cells only for what is visible, one
// selection. It needs no screen: TableRows shows it, tests drive it alone. Main thread.
//
// A reload is a request for a layout pass. The pass asks for the row count and every row's height in
// slices between frames; the rows of before stay until it is complete, and a newer reload replaces it.
class TableView : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Tables belong to their controllers.")
  Q_PROPERTY(double contentHeight READ contentHeight NOTIFY laidOut)
  Q_PROPERTY(bool empty READ isEmpty NOTIFY laidOut)
  Q_PROPERTY(double insetTop READ insetTop NOTIFY contentInsetChanged)
  Q_PROPERTY(double insetBottom READ insetBottom NOTIFY contentInsetChanged)
  Q_PROPERTY(bool scrollEnabled READ isScrollEnabled NOTIFY scrollEnabledChanged)
  Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY backgroundColorChanged)
  Q_PROPERTY(bool markShown READ isMarkShown NOTIFY markShownChanged)

 public:
  enum class ScrollPosition { none = 0, top = 1, middle = 2, bottom = 3 };

  // A slice of a pass ends after this much time or this many rows, whichever comes first.
  struct Slice {
    double milliseconds = 3;
    int rows = TablePass::kAllRows;
  };

  // A row that has a cell now: it is visible, or close to what is visible.
  struct LiveRow {
    int row = 0;
    double top = 0;  // points from the top of the content
    double height = 0;
    TableViewCell* cell = nullptr;  // null when the data source gave none
    std::int64_t token = 0;
  };

  explicit TableView(QObject* parent = nullptr);
  ~TableView() override;

  // Not owned; outlives the table or is taken away with null.
  void setDataSource(TableViewDataSource* source);

  // For data sources. `identifier` as the cell was made with; null when there is nothing to reuse: make
  // one then, and add it.
  TableViewCell* dequeueReusableCell(std::string_view identifier);
  TableViewCell* addCell(std::unique_ptr<TableViewCell> cell);

  // Clears the table's own selection without a notice and asks for a pass.
  void reload();
  bool isReloading() const { return passWanted_ || pass_ != nullptr; }
  // Brings a pass that is asked for or running to its end now.
  void layoutIfNeeded();
  void setSlice(Slice slice) { slice_ = slice; }

  // As of the last complete pass.
  int rowCount() const { return layout_.rowCount(); }
  double contentHeight() const { return layout_.contentHeight(); }
  bool isEmpty() const { return layout_.shownCount() == 0; }

  const std::vector<LiveRow>& liveRows() const { return live_; }
  std::size_t cellCount() const { return cells_.count(); }
  // The cell that shows the row now; null when the row has none.
  TableViewCell* visibleCell(int row) const;
  // Whether a live row stands in the part of the viewport that the insets leave free.
  bool isInView(const LiveRow& live) const;
  // The row at a height of the content; -1 when there is none.
  int rowAt(double y) const;

  // The table's own selection; -1 for none. selectRow reports nothing; a row that does not exist (in the
  // pass that is under way) is not selected. The scroll of an unfinished pass happens at its end.
  int selectedRow() const { return selectedRow_; }
  void selectRow(int row, bool animated, ScrollPosition position);
  void scrollToRow(int row, bool animated, ScrollPosition position);

  double contentOffset() const { return offset_; }
  void setContentOffset(double offset, bool animated);
  double insetTop() const { return insetTop_; }
  double insetBottom() const { return insetBottom_; }
  void setContentInset(double top, double bottom);
  bool isDragging() const { return dragging_; }
  bool isScrollEnabled() const { return scrollEnabled_; }
  void setScrollEnabled(bool enabled);
  QColor backgroundColor() const { return backgroundColor_; }
  void setBackgroundColor(const QColor& color);

  // From the layout. What they report to the data source goes through the main thread's gate.
  void setViewport(double offset, double height);
  void touchCell(TableViewCell* cell, void (TableViewCell::*touch)());
  Q_INVOKABLE void tapRow(int row);
  // What the row stands for now, as its data source said when it was built; absent when it is not live.
  std::optional<std::int64_t> tokenOf(int row) const;
  Q_INVOKABLE void beginDragging();
  // `willDecelerate`: the content goes on moving. A flick that starts with the end of the drag says so after
  // it, by beginDecelerating().
  Q_INVOKABLE void endDragging(bool willDecelerate);
  Q_INVOKABLE void beginDecelerating();
  // The nearest place for the content at which nothing beyond its ends is seen.
  Q_INVOKABLE double clampedOffset(double offset) const;
  // By a wheel, a touchpad or keys: not beyond the ends, and not at all where scrolling is disabled.
  void scrollBy(double points, bool animated = false);
  void scrollByRows(int rows);
  void scrollByPages(int pages);
  void scrollToEnd(bool bottom);

  // Keys scroll the content. Where rows can be chosen they move a mark from row to row instead, past those of
  // no height, and Return and Space tap the row that has it. A tap takes the mark along; after a reload it
  // stands at its row or at the next that is shown.
  void setMarksRows(bool marksRows) { marksRows_ = marksRows; }
  // -1 for none.
  int markedRow() const { return markedRow_; }
  // Whether a row shows the mark, as one does while the table has the keys.
  bool isMarkShown() const { return hasKeys_ && markedRow_ >= 0; }
  // From the layout. `held`: the key repeats itself. False: it is none of the table's keys.
  Q_INVOKABLE bool pressKey(int key, bool held);
  Q_INVOKABLE void setHasKeys(bool hasKeys);
  // Asks the layout to take the keys.
  void wantKeys() { Q_EMIT keysWanted(); }

 Q_SIGNALS:
  // A pass is complete: heights and rows have changed.
  void laidOut();
  // liveRows() has changed, or stands elsewhere.
  void liveRowsChanged();
  void contentInsetChanged();
  void scrollEnabledChanged();
  void backgroundColorChanged();
  // The layout is to bring the content offset to `offset`.
  void scrollRequested(double offset, bool animated);
  void markShownChanged();
  void keysWanted();

 private:
  struct PendingScroll {
    int row;
    bool animated;
    ScrollPosition position;
  };
  struct ScrollNotice {
    enum class Kind { begin, scroll, end } kind;
    double offset;
    bool willDecelerate;
  };

  void enterLater(std::string_view where, void (TableView::*step)());
  void postSlice();
  void runSlice();
  void continuePass(const Slice& slice);
  std::unique_ptr<TablePass> beginPass();
  bool measureRows(TablePass& pass, const std::function<bool(int)>& isOver);
  void finishPass(TablePass pass);

  TableLayout::Range wantedRange() const;
  void wantLiveRows();
  bool canBuildRowsNow() const;
  void updateLiveRows();
  void rebuildLiveRows();
  void fillRange(TableLayout::Range range);
  LiveRow buildRow(std::size_t shown);
  const LiveRow* findLive(int row) const;

  void carryOutTap(int row, std::int64_t token);
  void addNotice(ScrollNotice notice);
  void deliverNotices();
  void scrollToShown(int row, bool animated, ScrollPosition position);

  bool scrollByKey(int key);
  bool moveMark(int key, bool held);
  std::size_t shownAt(double y) const;
  void markShown(std::size_t shown);
  void keepMark();
  void showMark();
  void freeCell(TableViewCell* cell);

  TableViewDataSource* source_ = nullptr;
  TableCells cells_;
  TableLayout layout_;
  std::vector<LiveRow> live_;
  std::vector<LiveRow> nextLive_;
  TableLayout::Range liveRange_;

  Slice slice_;
  std::unique_ptr<TablePass> pass_;
  bool passWanted_ = false;
  bool slicePosted_ = false;
  bool livePosted_ = false;
  bool noticesPosted_ = false;
  bool inCallback_ = false;
  int rowBeingBuilt_ = -1;

  int selectedRow_ = -1;
  std::optional<PendingScroll> pendingScroll_;
  bool marksRows_ = false;
  bool hasKeys_ = false;
  int markedRow_ = -1;

  double offset_ = 0;
  double viewportHeight_ = 0;
  double insetTop_ = 0;
  double insetBottom_ = 0;
  bool dragging_ = false;
  bool scrollEnabled_ = true;
  QColor backgroundColor_;
  std::vector<ScrollNotice> notices_;
};

}  // namespace seedmote::platform
