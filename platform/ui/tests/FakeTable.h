#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <functional>
#include <string>
#include <vector>

#include "platform/ui/TableView.h"
#include "platform/ui/TableViewDataSource.h"

namespace seedmote::platform {

class FakeCell final : public TableViewCell {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("")
  Q_PROPERTY(QString title READ accessibleName NOTIFY filled)

 public:
  using TableViewCell::TableViewCell;
  QString accessibleName() const override { return title; }
  void touchesBegan() override { touches.push_back("began"); }
  void touchesEnded() override { touches.push_back("ended"); }
  void touchesCancelled() override { touches.push_back("cancelled"); }

  QString title;
  std::vector<std::string> touches;
};

// A list of rows that the test changes as it likes; writes down what the table reports.
class FakeController : public QObject, public TableViewDataSource {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("")
  Q_PROPERTY(seedmote::platform::TableView* table READ tablePointer CONSTANT)

 public:
  FakeController() { table.setDataSource(this); }
  ~FakeController() override { table.setDataSource(nullptr); }
  TableView* tablePointer() { return &table; }

  int numberOfRowsInSection(int section) override;
  double heightForRowAtIndexPath(int row) override;
  TableViewCell* cellForRowAtIndexPath(int row) override;
  std::int64_t rowToken(int row) override { return tokenOf(row); }
  bool canBuildRowsWhileWaiting() const override { return true; }
  void didSelectRowAtIndexPath(int row) override { note("select", row); }
  void didDeselectRowAtIndexPath(int row) override { note("deselect", row); }
  void scrollViewWillBeginDragging(double offset) override { note("begin", offset); }
  void scrollViewDidScroll(double offset) override { offsets.push_back(offset); }
  void scrollViewDidEndDragging(double offset, bool willDecelerate) override {
    note("end", offset);
    decelerates.push_back(willDecelerate);
  }

  void note(const char* what, double value) {
    notes.push_back(std::string(what) + " " + std::to_string(int(value)));
  }

  int rows = 0;
  std::function<double(int)> heightOf = [](int) { return 50.0; };
  std::function<std::int64_t(int)> tokenOf = [](int row) { return 1000 + row; };
  int counted = 0;
  int measured = 0;
  std::vector<std::string> notes;
  std::vector<double> offsets;
  std::vector<bool> decelerates;  // for each end of a drag
  TableView table;
};

}  // namespace seedmote::platform
