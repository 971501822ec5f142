#pragma once

#include <QKeyEvent>
#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QVariant>
#include <QtQmlIntegration>
#include <cstdint>
#include <functional>
#include <optional>

namespace seedmote {

class RVFilterBarController;
class RVRightBarController;
class RVTorrentDetailController;
class RVTorrentListController;

// The keys that do in the whole window what a tap does somewhere, and the list of them. One that the field in
// which is written can use is the field's; none repeats itself while it is held. While the settings lie over
// the torrents only those work that have to do with no torrent. Main thread.
class Shortcuts : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("There is one for the window.")
  Q_PROPERTY(QVariantList entries READ entries CONSTANT)
  Q_PROPERTY(bool shown READ isShown NOTIFY shownChanged)

 public:
  // They outlive the shortcuts, which end the program by `quit`.
  struct Screens {
    RVRightBarController& bar;
    RVFilterBarController& filters;
    RVTorrentListController& list;
    RVTorrentDetailController* details;  // null on a phone
    std::function<void()> quit;
  };

  explicit Shortcuts(Screens screens) : screens_(std::move(screens)) {}

  // From now on; `window` outlives the shortcuts.
  void listenTo(QQuickWindow& window);

  // Of the list: maps of what is written on the "keys", and of what they do, the "title".
  static QVariantList entries();
  // Whether the list of the shortcuts is shown. It takes all keys; all of its own hide it.
  bool isShown() const { return shown_; }

  // From the layout.
  Q_INVOKABLE void hide() { show(false); }

 Q_SIGNALS:
  void shownChanged();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  using Operation = void (Shortcuts::*)(int place);
  enum class Where { anywhere, torrents };
  struct Shortcut {
    QList<QKeySequence> keys;
    const char* title;
    Operation operation;  // null for keys that whatever has the focus understands by itself
    Where where = Where::torrents;
  };
  static const QList<Shortcut>& table();
  static QString keysOf(const Shortcut& shortcut);

  bool take(const QKeyEvent& key);
  bool takeWhileShown(const QKeyEvent& key);
  void carryOut(const Shortcut& shortcut, int place);
  bool isFieldsOwn(const QKeyEvent& key) const;
  bool goToList(int key);
  void show(bool shown);

  void refresh(int place);
  void start(int place);
  void stop(int place);
  void remove(int place);
  void addCopied(int place);
  void filter(int place);
  void openSettings(int place);
  void close(int place);
  void toggle(int place);
  void quit(int place);

  Screens screens_;
  QPointer<QQuickWindow> window_;
  bool shown_ = false;
  std::optional<std::uint64_t> toBeRemoved_;  // the number of the selection that the bin asked about
};

}  // namespace seedmote
