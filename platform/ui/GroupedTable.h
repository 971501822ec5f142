#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"

namespace seedmote::platform {

struct IndexPath {
  int section = 0;
  int row = 0;
  bool operator==(const IndexPath&) const = default;
};

// What a screen tells a table of several sections; see TableViewDataSource.
class GroupedTableDataSource {
 public:
  virtual ~GroupedTableDataSource() = default;

  virtual int numberOfSectionsInTableView() = 0;
  virtual int numberOfRowsInSection(int section) = 0;
  // Absent: the section has no header.
  virtual std::optional<std::string> titleForHeaderInSection(int /*section*/) { return std::nullopt; }
  virtual double heightForHeaderInSection(int /*section*/) { return 30; }
  virtual double heightForRowAtIndexPath(IndexPath path) = 0;
  virtual TableViewCell* cellForRowAtIndexPath(IndexPath path) = 0;
  virtual void didSelectRowAtIndexPath(IndexPath /*path*/) {}
};

// The header of a section. A layout of rows shows it by its `headerDelegate`.
class TableHeaderCell : public TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Headers are made by their table.")
  Q_PROPERTY(QString title READ title NOTIFY filled)

 public:
  static constexpr const char* kIdentifier = "Header";

  TableHeaderCell() : TableViewCell(kIdentifier) {}

  QString title() const { return title_; }
  void setTitle(const std::string& title);
  QString accessibleName() const override { return title_; }

 private:
  QString title_;
};

// A table of sections: shows them as the rows of one TableView, each header a row before its section's.
// Main thread.
class GroupedTable final : private TableViewDataSource {
 public:
  // `source` outlives the table.
  explicit GroupedTable(GroupedTableDataSource& source);
  ~GroupedTable() override;
  GroupedTable(const GroupedTable&) = delete;
  GroupedTable& operator=(const GroupedTable&) = delete;

  TableView& table() { return table_; }
  void reload() { table_.reload(); }

  // As of the last reload. The table's row for a row of a section, or -1.
  int rowOf(IndexPath path) const;
  // Null when the row is not on the screen.
  TableViewCell* visibleCell(IndexPath path) const;

 private:
  static constexpr int kHeader = -1;

  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int row) override;
  TableViewCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override { return row; }
  // Its sources hold what they show.
  bool canBuildRowsWhileWaiting() const override { return true; }
  void didSelectRowAtIndexPath(int row) override;
  TableViewCell* headerCell(int section);

  GroupedTableDataSource& source_;
  std::vector<IndexPath> paths_;  // of each row; row kHeader for a header
  TableView table_;
};

}  // namespace seedmote::platform
