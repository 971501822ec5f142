#include <gtest/gtest.h>

#include <QCoreApplication>

#include "platform/core/MainThread.h"

int main(int argc, char** argv) {
  seedmote::platform::MainThread::prepareProcess();
  QCoreApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
