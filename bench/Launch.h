#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <string>

#include "bench/Figures.h"
#include "bench/Screen.h"

namespace seedmote::bench {

// What one start of a program cost, seen from outside.
struct StartFigures {
  double firstFrame = 0;  // processor seconds until something of its window was on the screen
  double shown = 0;       // and until the first row's texts were
  double quiet = 0;       // and until nothing had moved there for a second and a half
  double wall = 0;        // seconds until shown
  Memory memory;          // when it had become quiet
};

// Where programs are started: a home of its own, no session bus, the X server that the environment names.
class Stage final {
 public:
  // Raises std::runtime_error when the environment has no screen.
  Stage();

  // Settings of the program, by its own command line. Raises std::runtime_error when it refuses.
  void storeSettings(const QString& seedmote, int port) const;

  const Screen& screen() const { return screen_; }
  const QProcessEnvironment& environment() const { return environment_; }
  QString logFile() const { return home_.filePath(QStringLiteral("log")); }

 private:
  QTemporaryDir home_;
  Screen screen_;
  QProcessEnvironment environment_;
};

// One run of a program, which ends with this object.
class Launch final {
 public:
  Launch(const Stage& stage, const QString& program, const QStringList& arguments = {});
  ~Launch();
  Launch(const Launch&) = delete;
  Launch& operator=(const Launch&) = delete;

  // Watches until the window stands still. Raises std::runtime_error when nothing is shown.
  StartFigures watch();
  pid_t process() const { return static_cast<pid_t>(process_.processId()); }

 private:
  const Stage& stage_;
  QProcess process_;
};

}  // namespace seedmote::bench
