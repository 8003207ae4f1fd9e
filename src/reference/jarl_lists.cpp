#include "reference/jarl_lists.h"

#include <string_view>

#include "text/error.h"
#include "text/strings.h"

namespace tobarine {
namespace {

std::string base_of(const JarlServer& server) {
  std::string base = server.url.empty() ? kJarlUrl : server.url;
  if (!base.ends_with('/')) base += '/';
  return base;
}

HttpAnswer ask(const JarlServer& server, std::string_view file, const HttpAsk& function,
               bool& plain_http) {
  const std::string url = base_of(server) + std::string(file);
  if (!server.url.empty()) return function(url, server.limits);
  return ask_securely(url, server.limits, function, plain_http);
}

// A page that stands in for the list, as some networks show before their users have signed in.
bool is_page(std::string_view body) {
  const std::string beginning = upper(body.substr(0, 1000));
  return contains(beginning, "<HTML") || contains(beginning, "<!DOCTYPE");
}

std::string date_on_server(const JarlServer& server, std::string_view file, bool& plain_http) {
  try {
    std::string date = ask(server, file, server.head, plain_http).last_modified;
    if (!date.empty()) return date;
  } catch (const HttpError& error) {  // some servers only answer when the file itself is asked for
    if (error.kind() != HttpError::Kind::kAnswered) throw;
  }
  HttpAnswer answer = ask(server, file, server.get, plain_http);
  if (is_page(answer.body)) {
    throw NetworkError(base_of(server) + std::string(file), "リストではないようです");
  }
  return answer.last_modified.empty() ? stated_date(answer.body) : std::move(answer.last_modified);
}

// What came without https may be anything; only a list that counts itself is believed.
void refuse_uncounted(const JarlServer& server, const std::array<std::string, 3>& lists) {
  for (std::size_t i = 0; i < lists.size(); ++i) {
    if (stated_count(lists[i]) != JccCount()) continue;
    throw NetworkError(base_of(server) + std::string(kListFiles[i]),
                       "https で取得できず、リストに件数も書いてないので、確かめられません");
  }
}

}  // namespace

HttpAnswer ask_securely(const std::string& https_url, const HttpLimits& limits, const HttpAsk& ask,
                        bool& plain_http) {
  if (!plain_http) {
    try {
      return ask(https_url, limits);
    } catch (const HttpError& error) {
      if (error.kind() != HttpError::Kind::kRefused) throw;
      plain_http = true;
    }
  }
  return ask("http" + https_url.substr(std::string_view("https").size()), limits);
}

JarlDates jarl_dates(const JarlServer& server) {
  JarlDates result;
  for (std::size_t i = 0; i < kListFiles.size(); ++i) {
    result.dates[i] = date_on_server(server, kListFiles[i], result.plain_http);
  }
  return result;
}

JarlLists fetch_jarl_lists(const JarlServer& server) {
  JarlLists result;
  for (std::size_t i = 0; i < kListFiles.size(); ++i) {
    HttpAnswer answer = ask(server, kListFiles[i], server.get, result.plain_http);
    result.lists[i] = std::move(answer.body);
    result.dates[i] = answer.last_modified.empty() ? stated_date(result.lists[i])
                                                   : std::move(answer.last_modified);
  }
  try {
    result.build = build_jcc(result.lists);
  } catch (const FileError& error) {
    throw NetworkError(base_of(server), error.what());
  }
  if (const std::string reason = miscount_text(result.build); !reason.empty()) {
    throw IncompleteLists(base_of(server), reason);
  }
  if (result.plain_http) refuse_uncounted(server, result.lists);
  return result;
}

}  // namespace tobarine
