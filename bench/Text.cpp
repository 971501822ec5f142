// A yardstick: a window with a few texts. Prints "shown" when its first frame is on the screen.
#include <QGuiApplication>
#include <QQuickView>
#include <iostream>

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  QQuickView view(QUrl(QStringLiteral("qrc:/qt-project.org/imports/SeedmoteBench/TextWindow/Text.qml")));
  view.setResizeMode(QQuickView::SizeRootObjectToView);
  view.resize(1024, 768);
  QObject::connect(
      &view, &QQuickWindow::frameSwapped, &view, [] { std::cout << "shown" << std::endl; },
      Qt::SingleShotConnection);
  view.show();
  return QGuiApplication::exec();
}
