#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <optional>
#include <string>
#include <vector>

#include "client/RVSessionStatus.h"
#include "platform/ui/GroupedTable.h"
#include "platform/ui/ViewGeometry.h"

namespace seedmote {

// The daemon's session in three sections of labels and values; before the first update one empty row. Main
// thread.
class RVSessionStatListController : public QObject, public platform::GroupedTableDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The list of statistics is made by its panel.")
  Q_PROPERTY(seedmote::platform::ViewGeometry* view READ view CONSTANT)
  Q_PROPERTY(seedmote::platform::TableView* table READ table CONSTANT)

 public:
  void viewDidLoad();
  void updateSessionStauts(const RVSessionStatus& status);

  platform::ViewGeometry* view() { return &view_; }
  platform::TableView* table() { return &table_.table(); }

  int numberOfSectionsInTableView() override;
  int numberOfRowsInSection(int section) override;
  std::optional<std::string> titleForHeaderInSection(int section) override;
  double heightForRowAtIndexPath(platform::IndexPath /*path*/) override { return 22.0; }
  platform::TableViewCell* cellForRowAtIndexPath(platform::IndexPath path) override;

 private:
  // A title, and then the value and the label of each row.
  using Section = std::vector<std::string>;

  platform::ViewGeometry view_;
  std::vector<Section> sessionStatusList_;
  platform::GroupedTable table_{*this};
};

}  // namespace seedmote
