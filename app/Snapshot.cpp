#include "app/Snapshot.h"

#include <QImage>
#include <QQuickWindow>
#include <iostream>

#include "client/RVTrans.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/core/UserDefaults.h"
#include "screens/RVTorrentListCell.h"
#include "screens/RVTorrentListController.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

namespace {
constexpr double kLookEvery = 0.25;  // seconds
constexpr double kLimit = 60;

// Names come from strangers: what would command the terminal, or turn the order of a line, is shown by its
// number.
bool isCommand(QChar character) {
  switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
      return true;
    default:
      break;
  }
  const ushort code = character.unicode();
  return (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);  // text direction
}

std::string printable(const QString& text) {
  QString shown;
  for (const QChar character : text) {
    if (isCommand(character)) {
      shown += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    } else {
      shown += character;
    }
  }
  return shown.toStdString();
}

// A sentence keeps its lines.
std::string printableLines(const QString& text) {
  std::string shown;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    shown += (shown.empty() ? "" : "\n") + printable(line);
  }
  return shown;
}
}  // namespace

Snapshot::Snapshot(std::string file, QQuickWindow& window, RVTorrentListController& list)
    : file_(std::move(file)), window_(window), list_(list) {
  platform::Timers& timers = platform::services().timers;
  looking_ = timers.repeat("snapshot", kLookEvery, [this] { look(); });
  limit_ = timers.once("snapshot", kLimit, [this] { end(kTooLate, "No list came within a minute."); });
}

void Snapshot::look() {
  const bool messageShown = OvProgressHUD::sharedView()->panelShown();
  if (messageShown || RVTrans::listOutcome().condition == DaemonCondition::notAsked) {
    return;
  }
  if (platform::services().defaults.string("FirstRun") != "3") {
    end(kNotSetUp,
        "The settings were not seen yet. Start Seedmote once and close them, or store FirstRun=3 and "
        "SavedVersion=" SEEDMOTE_VERSION " by --set.");
  } else if (!RVTrans::isConnected()) {
    end(kNoDaemon, printableLines(list_.emptyState()));
  } else if (standsStill()) {
    finish();
  }
}

void Snapshot::finish() {
  if (!window_.grabWindow().save(QString::fromStdString(file_), "PNG")) {
    end(kNotSaved, "The picture could not be saved as " + file_ + ".");
    return;
  }
  printRows();
  end(kShown, "");
}

bool Snapshot::standsStill() const {
  const platform::TableView& table = *list_.table();
  const auto torrents = static_cast<int>(RVTrans::getTorrentList()->count());
  return !table.isReloading() && table.rowCount() == torrents;
}

void Snapshot::printRows() const {
  for (const auto& row : list_.table()->liveRows()) {
    const auto* cell = qobject_cast<RVTorrentListCell*>(row.cell);
    if (cell != nullptr && list_.table()->isInView(row)) {
      std::cout << printable(cell->labelTorrnetName()) << "\n    " << printable(cell->labelBytesInformation())
                << "\n    " << printable(cell->labelSpeedInformation()) << '\n';
    }
  }
  if (list_.table()->isEmpty()) {
    std::cout << printableLines(list_.emptyState()) << '\n';
  }
}

void Snapshot::end(Exit code, const std::string& message) {
  looking_.stop();
  limit_.stop();
  std::cout.flush();
  if (!message.empty()) {
    std::cerr << "seedmote: " << message << '\n';
  }
  platform::services().main.quit(code);
}

}  // namespace seedmote
