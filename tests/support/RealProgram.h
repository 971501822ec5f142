#pragma once

#include <QProcess>
#include <QTemporaryDir>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace seedmote {

// The real program, without a screen and with folders of its own for all that it keeps.
class RealProgram {
 public:
  RealProgram();
  ~RealProgram();
  RealProgram(const RealProgram&) = delete;
  RealProgram& operator=(const RealProgram&) = delete;

  // `inChild` runs in the new process before the program does.
  void start(const std::vector<std::string>& arguments, const std::function<void()>& inChild = {});
  // Until it ends by itself: the exit code, -1 when it crashed or went on for ever.
  int run(const std::vector<std::string>& arguments, const std::string& input = {},
          const std::function<void()>& inChild = {});
  // Asks it to end: the exit code, as above.
  int end();
  // Waits until standard error has held `text`; false when it never did.
  bool hasSaid(const std::string& text);
  void setEnvironment(const char* name, const std::string& value);

  std::filesystem::path home() const { return folder_.path().toStdString(); }
  std::filesystem::path settings() const { return home() / "config/seedmote/defaults.plist"; }

  QProcess process;
  std::string output;
  std::string errors;

 private:
  int finish();

  QTemporaryDir folder_;
};

}  // namespace seedmote
