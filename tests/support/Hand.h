#pragma once

#include <QAccessible>
#include <QPoint>
#include <QString>
#include <QWindow>
#include <functional>
#include <optional>
#include <random>
#include <vector>

namespace seedmote::support {

// A person's finger (or mouse) and keyboard, on a window that they look at as an assistive technology does.
// What they do goes into the window system's queue, so that it arrives whatever the program is at.
class Hand {
 public:
  using Window = std::function<QWindow&()>;

  Hand(Window window, bool touches, std::uint64_t seed = 1)
      : window_(std::move(window)), touches_(touches), random_(seed) {}
  virtual ~Hand() = default;
  Hand(const Hand&) = delete;
  Hand& operator=(const Hand&) = delete;

  void tap(QPoint place) { drag(place, place, 0); }
  // In so many steps, one a frame; what is let go after few goes on moving.
  void drag(QPoint from, QPoint to, int steps) { drag(std::vector{from, to}, steps); }
  void drag(const std::vector<QPoint>& path, int steps);  // so many for each part of it
  void wheel(QPoint place, int turns);
  void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = {});
  // Into the field that has the keys, in place of what is there.
  void type(const QString& text);
  void closeWindow();

  // What can be touched now; a password's field has no name, but a description.
  struct Target {
    QString name;
    QAccessible::Role role;
    QPoint place;
  };
  std::vector<Target> targets();
  std::vector<Target> targets(const QString& name);

  // At random.
  int any(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
  QPoint anyPlace();
  QString anyLink();
  void swipe();
  void pull();  // from the top downwards
  void pressAnyKey();
  void resize();

 protected:
  // On the main thread, which here is the person's as well.
  virtual void onMain(const std::function<void(QWindow&)>& work) { work(window_()); }
  // Between two things; here time goes by for the window system alone.
  virtual void rest(int milliseconds) { moment_ += static_cast<ulong>(milliseconds); }
  std::mt19937_64& random() { return random_; }

 private:
  void hold(QPoint place, QEvent::Type type);

  Window window_;
  bool touches_;
  std::mt19937_64 random_;
  ulong moment_ = 1;  // milliseconds, as the window system counts them
};

}  // namespace seedmote::support
