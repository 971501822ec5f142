#include "platform/ui/InputMethodKeyboard.h"

#include <gtest/gtest.h>
#include <private/qinputmethod_p.h>
#include <qpa/qplatforminputcontext.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>
#include <optional>

namespace seedmote::platform {
namespace {

// The system's keyboard, as the test has it. Qt asks for it by way of its own tests.
class FakeInputContext final : public QPlatformInputContext {
 public:
  FakeInputContext() { inputMethod()->testContext = this; }
  ~FakeInputContext() override { inputMethod()->testContext = nullptr; }
  bool isValid() const override { return true; }
  bool isInputPanelVisible() const override { return visible_; }
  QRectF keyboardRect() const override { return rect_; }

  void show(const QRectF& rect) {
    rect_ = rect;
    emitKeyboardRectChanged();
    visible_ = true;
    emitInputPanelVisibleChanged();
  }
  void hide() {
    visible_ = false;
    emitInputPanelVisibleChanged();
  }

 private:
  static QInputMethodPrivate* inputMethod() {
    return QInputMethodPrivate::get(QGuiApplication::inputMethod());
  }

  QRectF rect_;
  bool visible_ = false;
};

TEST(InputMethodKeyboard, TellsThePointsOfTheWindowThatTheKeyboardCovers) {
  QWindow window;
  window.resize(2048, 1536);
  window.show();
  window.requestActivate();
  while (!window.isActive()) {
    QCoreApplication::processEvents();
  }
  FakeInputContext context;
  Screen screen({768, 1024});
  Keyboard& keyboard = screen.keyboard();
  int notices = 0;
  const Subscription listening = keyboard.onNotice([&](const KeyboardNotice&) { ++notices; });
  const InputMethodKeyboard followed(screen);
  EXPECT_EQ(notices, 0);

  context.show({0, 1136, 2048, 400});
  EXPECT_EQ(keyboard.size(), (Size{1024, 200}));
  context.show({0, 1136, 2048, 400});
  EXPECT_EQ(notices, 2) << "will and did";
  context.show({0, 1036, 2048, 800});
  EXPECT_EQ(keyboard.size(), (Size{1024, 250})) << "what lies below the window covers nothing";
  context.show({0, 1600, 2048, 400});
  EXPECT_EQ(keyboard.size(), std::nullopt);
  context.show({0, 1136, 2048, 400});
  context.hide();
  EXPECT_EQ(keyboard.size(), std::nullopt);
  EXPECT_EQ(notices, 10);
}

}  // namespace
}  // namespace seedmote::platform
