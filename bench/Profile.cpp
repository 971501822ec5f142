#include "bench/Profile.h"

#include <QProcess>
#include <QRegularExpression>
#include <algorithm>
#include <stdexcept>

namespace seedmote::bench {

namespace {

constexpr const char* kTotal = "PROGRAM TOTALS";
constexpr int kPatienceMs = 60'000;

QString annotated(const QString& file) {
  QProcess annotate;
  annotate.start(QStringLiteral("callgrind_annotate"),
                 {QStringLiteral("--inclusive=yes"), QStringLiteral("--threshold=100"), file});
  if (!annotate.waitForFinished(kPatienceMs) || annotate.exitCode() != 0) {
    throw std::runtime_error("callgrind_annotate cannot read " + file.toStdString());
  }
  return QString::fromUtf8(annotate.readAllStandardOutput());
}

}  // namespace

// A line: "62,184,523 (12.23%)  file:function(arguments) [library]". What calls itself has lines for its
// deeper calls, with ' and a number at the end: they are within the first.
Profile::Profile(const QString& file) {
  static const QRegularExpression line(
      QStringLiteral(
          R"(^ *([\d,]+) \([ \d.]+%\)  (?:[^\n]*?[^:]:)?((?:\w|::|~|\(below main\)| TOTALS)+)(?:[^\n']*)$)"),
      QRegularExpression::MultilineOption);
  QRegularExpressionMatchIterator lines = line.globalMatch(annotated(file));
  while (lines.hasNext()) {
    const QRegularExpressionMatch found = lines.next();
    const double millions = found.captured(1).remove(QLatin1Char(',')).toDouble() * 1e-6;
    double& known = functions_[found.captured(2).toStdString()];
    known = std::max(known, millions);
  }
  if (total() == 0) throw std::runtime_error("callgrind_annotate tells no total");
}

double Profile::total() const {
  return of(kTotal);
}

double Profile::of(const std::string& function) const {
  const auto place = functions_.find(function);
  return place != functions_.end() ? place->second : 0;
}

}  // namespace seedmote::bench
