#include <gtest/gtest.h>

#include <QGuiApplication>

#include "platform/core/MainThread.h"

int main(int argc, char** argv) {
  seedmote::platform::MainThread::prepareProcess();
  QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
