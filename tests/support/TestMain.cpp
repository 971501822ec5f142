#include <gtest/gtest.h>

#ifdef SEEDMOTE_WINDOWS
#include <QGuiApplication>
using Application = QGuiApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include "platform/core/Log.h"
#include "platform/core/MainThread.h"

int main(int argc, char** argv) {
  // Begins the log: begun by a thread of Qt's, its own is one that the thread sanitizer loses sight of.
  seedmote::platform::flushLog();
  seedmote::platform::MainThread::prepareProcess();
  Application application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
