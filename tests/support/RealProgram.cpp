#include "tests/support/RealProgram.h"

namespace seedmote {

namespace {

constexpr int kPatience = 30'000;  // milliseconds

}  // namespace

RealProgram::RealProgram() {
  const QString home = folder_.path();
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : {std::pair{"SEEDMOTE_ALONE", QStringLiteral("1")},
                                    {"XDG_CONFIG_HOME", home + QStringLiteral("/config")},
                                    {"XDG_STATE_HOME", home + QStringLiteral("/state")},
                                    {"XDG_CACHE_HOME", home + QStringLiteral("/cache")},
                                    {"HOME", home},
                                    {"QT_QPA_PLATFORM", QStringLiteral("offscreen")},
                                    {"QT_QUICK_BACKEND", QStringLiteral("software")}}) {
    environment.insert(QString::fromLatin1(name), value);
  }
  process.setProcessEnvironment(environment);
  process.setProgram(QStringLiteral(SEEDMOTE_PROGRAM));
  process.setWorkingDirectory(home);
}

RealProgram::~RealProgram() {
  process.kill();
  process.waitForFinished();
}

void RealProgram::setEnvironment(const char* name, const std::string& value) {
  QProcessEnvironment environment = process.processEnvironment();
  environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
  process.setProcessEnvironment(environment);
}

void RealProgram::start(const std::vector<std::string>& arguments, const std::function<void()>& inChild) {
  QStringList list;
  for (const std::string& argument : arguments) list << QString::fromStdString(argument);
  process.setArguments(list);
  process.setChildProcessModifier(inChild);
  output.clear();
  errors.clear();
  process.start();
}

int RealProgram::run(const std::vector<std::string>& arguments, const std::string& input,
                     const std::function<void()>& inChild) {
  start(arguments, inChild);
  process.write(input.data(), static_cast<qint64>(input.size()));
  process.closeWriteChannel();
  return finish();
}

int RealProgram::end() {
  process.terminate();
  return finish();
}

int RealProgram::finish() {
  const bool ended = process.waitForFinished(kPatience);
  output += process.readAllStandardOutput().toStdString();
  errors += process.readAllStandardError().toStdString();
  return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

bool RealProgram::hasSaid(const std::string& text) {
  process.setReadChannel(QProcess::StandardError);
  while (errors.find(text) == std::string::npos && process.waitForReadyRead(kPatience)) {
    errors += process.readAllStandardError().toStdString();
  }
  return errors.find(text) != std::string::npos;
}

}  // namespace seedmote
