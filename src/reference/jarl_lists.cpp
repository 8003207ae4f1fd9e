#include "reference/jarl_lists.h"

#include <string_view>

#include "text/error.h"

namespace tobarine {
namespace {

using Ask = HttpAnswer (*)(const std::string& url, const HttpLimits& limits);

HttpAnswer ask(const JarlServer& server, std::string_view file, Ask function) {
  std::string base = server.url.empty() ? kJarlUrl : server.url;
  if (!base.ends_with('/')) base += '/';
  const std::string url = base + std::string(file);
  if (!server.url.empty()) return function(url, server.limits);
  try {
    return function(url, server.limits);
  } catch (const NetworkError&) {
    return function("http" + url.substr(std::string_view("https").size()), server.limits);
  }
}

void refuse_short_list(std::string_view file, std::string_view list, const JccCount& found) {
  const JccCount stated = stated_count(list);
  if (stated == JccCount() || stated == found) return;
  throw NetworkError(file, "リストが揃っていません (現存 " + std::to_string(stated.current) +
                               " 消滅 " + std::to_string(stated.abolished) + " のはずが " +
                               std::to_string(found.current) + " と " +
                               std::to_string(found.abolished) + ")");
}

}  // namespace

std::array<std::string, 3> jarl_dates(const JarlServer& server) {
  std::array<std::string, 3> dates;
  for (std::size_t i = 0; i < dates.size(); ++i) {
    dates[i] = ask(server, kListFiles[i], http_head).last_modified;
    if (dates[i].empty()) dates[i] = stated_date(ask(server, kListFiles[i], http_get).body);
  }
  return dates;
}

JarlLists fetch_jarl_lists(const JarlServer& server) {
  JarlLists result;
  for (std::size_t i = 0; i < kListFiles.size(); ++i) {
    HttpAnswer answer = ask(server, kListFiles[i], http_get);
    result.lists[i] = std::move(answer.body);
    result.dates[i] = answer.last_modified.empty() ? stated_date(result.lists[i])
                                                   : std::move(answer.last_modified);
  }
  try {
    result.build = build_jcc(result.lists);
  } catch (const FileError& error) {
    throw NetworkError(server.url.empty() ? kJarlUrl : server.url, error.what());
  }
  refuse_short_list(kListFiles[0], result.lists[0], result.build.cities);
  refuse_short_list(kListFiles[1], result.lists[1], result.build.guns);
  refuse_short_list(kListFiles[2], result.lists[2], result.build.wards);
  return result;
}

}  // namespace tobarine
