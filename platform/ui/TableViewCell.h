#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>
#include <string>
#include <string_view>

namespace seedmote::platform {

// What one visible row of a table shows. The data source makes cells and fills them; the table owns and
// reuses them, and each cell that was on screen keeps its delegate. Main thread.
class TableViewCell : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Cells are made by the data source of a table.")
  Q_PROPERTY(QString accessibleName READ accessibleName NOTIFY filled)
  Q_PROPERTY(QString accessibleDescription READ accessibleDescription NOTIFY filled)
  Q_PROPERTY(bool selected READ isSelected NOTIFY selectedChanged)
  Q_PROPERTY(bool marked READ isMarked NOTIFY markedChanged)

 public:
  explicit TableViewCell(std::string_view reuseIdentifier) : reuseIdentifier_(reuseIdentifier) {}

  const std::string& reuseIdentifier() const { return reuseIdentifier_; }

  // The row that the cell was last built for; -1 before the first.
  int row() const { return row_; }

  // A row of room that shows nothing and gets no delegate. Asked for when the cell has been built.
  virtual bool isBlank() const { return false; }

  // What an assistive technology says about the row.
  virtual QString accessibleName() const { return {}; }
  virtual QString accessibleDescription() const { return {}; }
  virtual bool isSelected() const { return false; }

  // The keys are at this row; see TableView::setMarksRows().
  bool isMarked() const { return marked_; }

  // A touch on the row; the table calls them through the main thread's gate.
  virtual void touchesBegan() {}
  virtual void touchesEnded() {}
  virtual void touchesCancelled() {}

  // The press action of an assistive technology: the same as a tap on the row.
  Q_INVOKABLE void press() { Q_EMIT pressed(); }

 Q_SIGNALS:
  // The cell was filled anew: everything it shows may have changed.
  void filled();
  void selectedChanged();
  void markedChanged();
  void pressed();

 private:
  friend class TableCells;
  friend class TableView;
  void setMarked(bool marked) {
    if (marked_ != marked) {
      marked_ = marked;
      Q_EMIT markedChanged();
    }
  }

  std::string reuseIdentifier_;
  int row_ = -1;
  bool marked_ = false;
};

}  // namespace seedmote::platform
