#pragma once

#include <QObject>
#include <QtQmlIntegration>
#include <functional>
#include <map>

namespace seedmote::platform {

enum class SwipeDirection { right = 1, left = 2 };

// The gestures that a view knows: what is called when one was made. GestureArea recognises them. Handlers
// come through the main thread's gate. Main thread.
class GestureRecognizers : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Gestures belong to controllers.")

 public:
  using SwipeHandler = std::function<void(SwipeDirection)>;

  void addSwipe(SwipeDirection direction, SwipeHandler handler);
  bool hasSwipes() const { return !swipes_.empty(); }

  // While there is one, a tap anywhere on the view is this gesture's alone.
  void addTap(std::function<void()> handler) { tap_ = std::move(handler); }
  void removeTap() { tap_ = nullptr; }
  bool hasTap() const { return tap_ != nullptr; }

  // From the layout.
  void swiped(SwipeDirection direction);
  void tapped();

 private:
  std::map<SwipeDirection, SwipeHandler> swipes_;
  std::function<void()> tap_;
};

}  // namespace seedmote::platform
