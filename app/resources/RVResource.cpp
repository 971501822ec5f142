#include "app/resources/RVResource.h"

#include <map>
#include <utility>

#include "platform/core/Shared.h"

namespace seedmote {
namespace {

using Table = std::map<std::string, std::string, std::less<>>;
using Tables = std::map<std::string, Table, std::less<>>;

const Tables& themes() {
  static const Table kElegant{{"All", "Ellegant_Star_44_44.png"},
                              {"Paused", "Ellegant_Pause_44_44.png"},
                              {"Downloading", "Ellegant_Download_44_44.png"},
                              {"Finished", "Ellegant_Finish_Stopped_44_44.png"},
                              {"Seeding", "Ellegant_Seeding_44_44.png"},
                              {"Verifying", "Ellegant_Checking_44_44.png"},
                              {"Waiting", "Ellegant_Waiting_44_44.png"},
                              {"Refresh", "Ellegant_Refresh_22_22.png"}};
  static const Tables kThemes{{"Default", kElegant}, {"Ellegant", kElegant}};
  return kThemes;
}

const Tables& languages() {
  static const Tables kLanguages{{"English",
                                  {{"All", "All"},
                                   {"Paused", "Paused"},
                                   {"Downloading", "Downloading"},
                                   {"Finished", "Finished"},
                                   {"Seeding", "Seeding"},
                                   {"Verifying", "Verifying"},
                                   {"Waiting", "Waiting"}}},
                                 {"Chinese",
                                  {{"All", "所有种子"},
                                   {"Paused", "暂停"},
                                   {"Downloading", "下载中"},
                                   {"Finished", "已完成"},
                                   {"Seeding", "做种中"},
                                   {"Verifying", "检查中"},
                                   {"Waiting", "等待检查"}}}};
  return kLanguages;
}

platform::Shared<std::string>& currentStyle() {
  static platform::Shared<std::string> style("Default");
  return style;
}

platform::Shared<std::string>& currentLanguage() {
  static platform::Shared<std::string> language("English");
  return language;
}

std::optional<std::string> find(const Tables& tables, const std::string& table, std::string_view key) {
  const auto chosen = tables.find(table);
  if (chosen == tables.end()) return std::nullopt;
  const auto found = chosen->second.find(key);
  return found == chosen->second.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

void RVResource::initResource() {
  themes();
  languages();
}

void RVResource::setStyle(std::string style) {
  currentStyle().set(std::move(style));
}

void RVResource::setLang(std::string language) {
  currentLanguage().set(std::move(language));
}

std::optional<std::string> RVResource::getIcon(std::string_view key) {
  return find(themes(), currentStyle().get(), key);
}

std::optional<std::string> RVResource::getWording(std::string_view key) {
  return find(languages(), currentLanguage().get(), key);
}

}  // namespace seedmote
