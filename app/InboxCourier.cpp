#include "app/InboxCourier.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "app/InboxNotice.h"
#include "app/RVAppDelegate.h"
#include "client/RVTrans.h"
#include "platform/core/Format.h"
#include "platform/core/Log.h"
#include "platform/core/MainThread.h"
#include "platform/core/Services.h"
#include "platform/ui/Alerts.h"
#include "platform/ui/UiServices.h"
#include "screens/EmptyState.h"
#include "widgets/OvProgressHUD.h"

namespace seedmote {

using platform::format;
using platform::Inbox;
using platform::log;
using platform::services;

namespace {

constexpr double kLongestPause = 60;
constexpr int kMostTries = 3;
constexpr std::size_t kNamesShown = 8;
constexpr qsizetype kLettersShown = 70;

void say(const char* title, const std::string& message) {
  platform::uiServices().alerts.show(
      {.title = title, .message = message, .buttons = {"OK"}, .dismissed = nullptr});
}

// Links may be endless.
std::string shortened(const std::string& name) {
  const QString text = QString::fromStdString(name);
  return text.size() <= kLettersShown ? name : (text.left(kLettersShown) + QChar(0x2026)).toStdString();
}

std::string sentenceOf(const DaemonOutcome& outcome) {
  EmptyState state;
  state.outcome = outcome;
  return state.sentence();
}

bool isFile(const Inbox::Item& item) {
  return item.kind == Inbox::Item::Kind::file;
}

}  // namespace

InboxCourier::InboxCourier(Inbox& inbox, RVAppDelegate& delegate)
    : inbox_(inbox),
      delegate_(delegate),
      sending_(std::make_shared<platform::Shared<Items>>()),
      poll_(services().main, services().threads, "inbox question",
            [this]() -> platform::BackgroundPoll::Apply {
              const bool reachable = RVTrans::isReachable();
              return [this, reachable] { hearDaemon(reachable); };
            }),
      batch_(services().main, services().threads, "inbox",
             [this, &inbox, sending = sending_]() -> platform::BackgroundPoll::Apply {
               const InboxDelivery delivery = InboxDelivery::of(inbox, sending->get());
               return [this, delivery] { settleTogether(delivery); };
             }) {
  inbox_.mayDeliver();  // makes the folder
  watcher_.addPath(QString::fromStdString(inbox_.folder()));
  QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &watcher_,
                   [this] { services().main.enter("inbox", [this] { lookSoon(); }); });
  delegate_.mainViewController().inboxNotice()->setChoices([this] { tryAgain(); }, [this] { offerToDrop(); });
  look();
}

InboxCourier::~InboxCourier() {
  delegate_.mainViewController().inboxNotice()->setChoices(nullptr, nullptr);
}

void InboxCourier::look() {
  stale_ = true;
  goOn();
}

// Whoever puts something in may not have ended yet.
void InboxCourier::lookSoon() {
  stale_ = true;
  lookOften();
}

void InboxCourier::lookOften() {
  if (!timer_.isActive()) {
    timer_ = services().timers.repeat("inbox", kLookSeconds, [this] {
      looked_ = true;
      goOn();
    });
  }
}

// What delivers, and what puts something in, comes back here when it has ended.
void InboxCourier::goOn() {
  if (delivering_ || inbox_.isTaking()) {
    return;
  }
  readInbox();
  const Items next = pending();
  if (!next.empty() && !hold_ && RVTrans::isConnected() && !RVTrans::isConnecting()) {
    return deliver(next);
  }
  showNotice();
  if (!next.empty()) {
    askDaemon();
  }
}

// What may be sent, and is not to be left alone until the user says otherwise.
InboxCourier::Items InboxCourier::pending() {
  Items items;
  if (!waiting_.empty() && inbox_.mayDeliver()) {
    std::copy_if(waiting_.begin(), waiting_.end(), std::back_inserter(items),
                 [this](const Inbox::Item& item) { return stuck_.count(item.number) == 0; });
  }
  return items;
}

void InboxCourier::readInbox() {
  if (std::exchange(stale_, false)) {
    waiting_ = inbox_.waiting();
  }
  if (waiting_.empty()) {
    timer_.stop();
    hold_ = false;
    trouble_.reset();
    tries_ = 0;  // the next item may have the same number
    stuck_.clear();
    looked_ = false;
  } else {
    lookOften();
  }
}

// What waits.

void InboxCourier::showNotice() {
  InboxNotice& notice = *delegate_.mainViewController().inboxNotice();
  if (delivering_ && sending_->get().size() > 1) {
    notice.show(QString::fromStdString(format("Adding %lu torrents...", sending_->get().size())), false);
  } else if (delivering_ || waiting_.empty() || !looked_ || !inbox_.mayDeliver()) {
    notice.show({}, false);
  } else {
    notice.show(QString::fromStdString(waitingLine() + "\n" + whyNot()), true);
  }
}

std::string InboxCourier::waitingLine() const {
  return waiting_.size() == 1 ? shortened(waiting_.front().name) + " waits to be added."
                              : format("%lu torrents wait to be added.", waiting_.size());
}

std::string InboxCourier::whyNot() const {
  if (RVTrans::isConnecting()) {
    return "Seedmote is connecting.";
  }
  const bool tried = RVTrans::isConnected() && trouble_;
  return sentenceOf(tried ? trouble_->outcome : RVTrans::listOutcome());
}

void InboxCourier::tryAgain() {
  hold_ = false;
  stuck_.clear();
  tries_ = 0;
  connectPause_ = kAskSeconds;
  if (!RVTrans::isConnected()) {
    RVTrans::init();
  }
  look();
}

void InboxCourier::offerToDrop() {
  std::string names;
  for (std::size_t item = 0; item < std::min(waiting_.size(), kNamesShown); ++item) {
    names += (item > 0 ? "\n" : "") + shortened(waiting_[item].name);
  }
  if (waiting_.size() > kNamesShown) {
    names += format("\nand %lu more", waiting_.size() - kNamesShown);
  }
  platform::uiServices().alerts.show({.title = "Drop what waits to be added?",
                                      .message = names,
                                      .buttons = {"Keep", "Drop"},
                                      .dismissed = [this, shown = waiting_](int button) {
                                        if (button == 1 && delivering_) {
                                          say("Not dropped", "They are being added just now.");
                                        } else if (button == 1) {
                                          for (const Inbox::Item& item : shown) {
                                            inbox_.drop(item);
                                          }
                                          look();
                                        }
                                      }});
}

void InboxCourier::tell(const std::vector<platform::Refusal>& refusals) {
  std::string lines;
  for (std::size_t refusal = 0; refusal < std::min(refusals.size(), kNamesShown); ++refusal) {
    lines += (refusal > 0 ? "\n" : "") + shortened(refusals[refusal].name) + ": " + refusals[refusal].why;
  }
  if (refusals.size() > kNamesShown) {
    lines += format("\nand %lu more", refusals.size() - kNamesShown);
  }
  if (!refusals.empty()) {
    say("Not added", lines);
  }
}

// Delivery.

void InboxCourier::deliver(const Items& next) {
  const Items files(next.begin(), std::find_if_not(next.begin(), next.end(), isFile));
  delivering_ = true;
  sending_->set(files);
  showNotice();
  if (files.size() > 1) {
    log("Adding %lu torrent files\n", files.size());
    batch_.tick();
  } else {
    services().main.enter("inbox", [this, first = next.front()] { deliverFirst(first); });
  }
}

void InboxCourier::deliverFirst(const Inbox::Item& item) {
  RVTrans::takeLatestAdd();
  std::exception_ptr raised;
  AddOutcome outcome;
  try {
    isFile(item) ? delegate_.openURL(item.path, std::nullopt, std::nullopt)
                 : delegate_.handleOpenURL(item.name);
    outcome = RVTrans::takeLatestAdd().value_or(outcome);
  } catch (...) {  // an answer that makes no sense
    raised = std::current_exception();
    outcome.outcome.condition = DaemonCondition::notTransmission;
    outcome = RVTrans::takeLatestAdd().value_or(outcome);
  }
  delivering_ = false;
  stale_ = true;  // whoever comes next must not find it again
  if (outcome.isOver()) {
    inbox_.drop(item);
  }
  if (!services().main.isQuitting()) {
    settleFirst(item, outcome);
  }
  if (raised) {
    std::rethrow_exception(raised);
  }
}

// The screen has its own words, and goes by the first answer alone: where that was wrong, this tells better.
void InboxCourier::settleFirst(const Inbox::Item& item, const AddOutcome& outcome) {
  if (!outcome.isOver()) {
    hold(item, outcome);
    if (isFile(item) && tries_ == 1) {
      say("Not added yet", item.name + " is kept and tried again. " + sentenceOf(outcome.outcome));
    }
    return;
  }
  const bool screenKnows = !isFile(item) && !outcome.wasSentAgain;
  if (!outcome.isAdded() && !screenKnows) {
    say("Not added", refusalLine(shortened(item.name), outcome));
  } else if (!isFile(item) && outcome.wasSentAgain) {
    say("Added after all", shortened(item.name));
  }
  services().main.post([this] { look(); }, platform::MainThread::Lane::ordinary, "inbox");
}

void InboxCourier::settleTogether(const InboxDelivery& delivery) {
  delivering_ = false;
  const Items files = sending_->get();
  std::string summary = delivery.summary();
  if (delivery.trouble) {
    hold(files.at(delivery.settled), *delivery.trouble);
    summary += format("\n%lu still wait.", files.size() - delivery.settled);
  }
  if (delivery.settled > 0 && (!delivery.refused.empty() || delivery.trouble)) {
    say(delivery.added + delivery.duplicates > 0 ? "Torrents added" : "Not added", summary);
  } else if (delivery.settled > 0) {
    OvProgressHUD::showWithStatus("Adding torrents...");
    OvProgressHUD::dismissWithSuccess(summary);
  }
  look();
}

// Until the daemon answers again.

// What fails again and again though the daemon answers is left alone, so that the others get through.
void InboxCourier::hold(const Inbox::Item& item, const AddOutcome& outcome) {
  tries_ = item.number == heldNumber_ ? tries_ + 1 : 1;
  heldNumber_ = item.number;
  trouble_ = outcome;
  hold_ = true;
  nextAsk_ = services().clock.now() + platform::seconds(kAskSeconds * (1 << (tries_ - 1)));
  if (tries_ == kMostTries) {
    stuck_.insert(item.number);
    hold_ = false;
    tries_ = 0;
  }
}

// The client makes its first attempt to connect by itself, a few seconds after the start.
void InboxCourier::askDaemon() {
  const bool started = RVTrans::listOutcome().condition != DaemonCondition::notAsked;
  if (started && services().clock.now() >= nextAsk_) {
    nextAsk_ = services().clock.now() + platform::seconds(kAskSeconds);
    poll_.tick();
  }
}

void InboxCourier::hearDaemon(bool reachable) {
  if (!reachable) {
    return;
  }
  hold_ = false;
  if (RVTrans::isConnected()) {
    connectPause_ = kAskSeconds;
    look();
  } else {  // it answers: one attempt is due, and the next not soon if that comes to nothing
    RVTrans::init();
    nextAsk_ = services().clock.now() + platform::seconds(connectPause_);
    connectPause_ = std::min(2 * connectPause_, kLongestPause);
  }
}

}  // namespace seedmote
