#include <gtest/gtest.h>

#ifdef SEEDMOTE_WINDOWS
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include "platform/core/MainThread.h"

int main(int argc, char** argv) {
  seedmote::platform::MainThread::prepareProcess();
  Application application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
