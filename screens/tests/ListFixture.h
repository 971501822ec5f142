#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "client/tests/ClientFixture.h"
#include "screens/RVTorrentListController.h"
#include "tests/support/TestUiServices.h"

namespace seedmote {

// A torrent list before a scripted daemon.
class ListFixture : public ClientFixture {
 protected:
  explicit ListFixture(platform::Idiom idiom = platform::Idiom::tablet) : ClientFixture(idiom) {
    services.defaults.setObject("FirstRun", "3");
    services.scripted.setHandler([this](const platform::HttpRequest& request) { return answer(request); });
    controller = std::make_unique<RVTorrentListController>();
  }

  platform::HttpAnswer answer(const platform::HttpRequest& request) {
    const bool isDetail = request.body.find("\"ids\"") != std::string::npos;
    return answerOf(request, R"({"arguments":{"torrents":[)" + (isDetail ? details : torrents) + "]}}");
  }

  void connect() {
    ClientFixture::connect();
    settle();
  }
  void tick() {
    services.clock.advanceSeconds(2);
    settle();
  }
  void settle() {
    do {
      services.settle();
      services.settle();
    } while (table().isReloading());
  }
  void tap(int row) {
    table().tapRow(row);
    settle();
  }
  void show(double height = 600) {
    controller->viewDidLoad();
    table().setViewport(0, height);
    settle();
    connect();
    tick();
  }

  platform::TableView& table() { return *controller->table(); }
  RVTorrentListCell* cell(int row) { return static_cast<RVTorrentListCell*>(table().visibleCell(row)); }

  // The torrents of the daemon, as JSON without the brackets.
  std::string torrents = R"({"id":11,"name":"seeds","status":6,"percentDone":1},)"
                         R"({"id":12,"name":"loads","status":4,"percentDone":0.5},)"
                         R"({"id":13,"name":"rests","status":0,"percentDone":0.5},)"
                         R"({"id":14,"name":"is done","status":0,"percentDone":1})";
  std::string details = R"({"comment":"details"})";
  support::TestUiServices ui;
  std::unique_ptr<RVTorrentListController> controller;
};

class FakePanel final : public TorrentDetailPanel {
 public:
  void setDetailInfo(std::shared_ptr<RVTorrentInfo> info) override {
    ++shown;
    comment = info ? info->comment.value_or("") : "";
  }
  void resetPosition() override { ++reset; }

  int shown = 0;
  int reset = 0;
  std::string comment;
};

}  // namespace seedmote
