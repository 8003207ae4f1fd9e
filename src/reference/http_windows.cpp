// Fetching by the system's own means (WinHTTP): its proxies and certificates count.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <windows.h>
#include <winhttp.h>

#include "reference/http.h"
#include "text/error.h"

namespace tobarine {
namespace {

struct CloseHandleOf {
  void operator()(void* handle) const { WinHttpCloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOf>;

std::wstring wide(const std::string& utf8) {
  return path_from_text(utf8).wstring();
}

std::string reason_of(DWORD error) {
  switch (error) {
    case ERROR_WINHTTP_TIMEOUT:
      return "時間切れです";
    case ERROR_WINHTTP_NAME_NOT_RESOLVED:
      return "サーバーが見つかりません";
    case ERROR_WINHTTP_CANNOT_CONNECT:
      return "サーバーに繋がりません";
    case ERROR_WINHTTP_CONNECTION_ERROR:
      return "途中で切れました";
    case ERROR_WINHTTP_SECURE_FAILURE:
      return "サーバーの証明書が確かめられません";
    case ERROR_WINHTTP_REDIRECT_FAILED:
      return "別の所へ移され続けるか、https から http へ移そうとしています";
    case ERROR_WINHTTP_INVALID_URL:
    case ERROR_WINHTTP_UNRECOGNIZED_SCHEME:
      return "URL として読めません";
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:
      return "サーバーの返事が読めません";
    default:
      return "通信エラー " + std::to_string(error);
  }
}

HttpError::Kind kind_of(DWORD error) {
  switch (error) {
    case ERROR_WINHTTP_CANNOT_CONNECT:
      return HttpError::Kind::kRefused;
    case ERROR_WINHTTP_CONNECTION_ERROR:
    case ERROR_WINHTTP_INVALID_SERVER_RESPONSE:
      return HttpError::Kind::kAnswered;
    default:
      return HttpError::Kind::kOther;
  }
}

class Request {
 public:
  Request(const std::string& url, const HttpLimits& limits, const wchar_t* verb)
      : url_(url), end_(Clock::now() + std::chrono::seconds(limits.seconds)) {
    const std::wstring text = wide(url);
    URL_COMPONENTS parts{};
    parts.dwStructSize = sizeof parts;
    std::array<wchar_t, 256> host{};
    std::array<wchar_t, 2048> path{};
    parts.lpszHostName = host.data();
    parts.dwHostNameLength = host.size();
    parts.lpszUrlPath = path.data();
    parts.dwUrlPathLength = path.size();
    check(WinHttpCrackUrl(text.c_str(), 0, 0, &parts) != FALSE);
    session_.reset(WinHttpOpen(L"Tobarine", WINHTTP_ACCESS_TYPE_DEFAULT_PROXY,
                               WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0));
    check(session_ != nullptr);
    const int answer = static_cast<int>(time_left());
    const int connect = std::min(static_cast<int>(limits.connect_seconds * 1000), answer);
    WinHttpSetTimeouts(session_.get(), connect, connect, answer, answer);
    connection_.reset(WinHttpConnect(session_.get(), host.data(), parts.nPort, 0));
    check(connection_ != nullptr);
    const DWORD secure = parts.nScheme == INTERNET_SCHEME_HTTPS ? WINHTTP_FLAG_SECURE : 0;
    request_.reset(WinHttpOpenRequest(connection_.get(), verb, path.data(), nullptr,
                                      WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, secure));
    check(request_ != nullptr);
    DWORD redirects = WINHTTP_OPTION_REDIRECT_POLICY_DISALLOW_HTTPS_TO_HTTP;
    check(WinHttpSetOption(request_.get(), WINHTTP_OPTION_REDIRECT_POLICY, &redirects,
                           sizeof redirects) != FALSE);
    check(WinHttpSendRequest(request_.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                             WINHTTP_NO_REQUEST_DATA, 0, 0, 0) != FALSE &&
          WinHttpReceiveResponse(request_.get(), nullptr) != FALSE);
    static_cast<void>(time_left());  // what comes too late does not count
    const DWORD status = number(WINHTTP_QUERY_STATUS_CODE, 0);
    constexpr DWORD kOk = 200;
    if (status != kOk) {
      fail(HttpError::Kind::kAnswered, "サーバーの返事が " + std::to_string(status) + " です");
    }
  }

  std::string body(std::size_t longest) {
    const DWORD stated = number(WINHTTP_QUERY_CONTENT_LENGTH, 0);
    std::string result;
    for (;;) {
      DWORD left = time_left();
      DWORD ready = 0;
      check(WinHttpSetOption(request_.get(), WINHTTP_OPTION_RECEIVE_TIMEOUT, &left, sizeof left) !=
                FALSE &&
            WinHttpQueryDataAvailable(request_.get(), &ready) != FALSE);
      if (ready == 0) break;
      std::array<char, 16384> bytes;
      DWORD got = 0;
      check(WinHttpReadData(request_.get(), bytes.data(), std::min<DWORD>(ready, bytes.size()),
                            &got) != FALSE);
      if (result.size() + got > longest) fail(HttpError::Kind::kOther, "大きすぎます");
      result.append(bytes.data(), got);
    }
    if (result.size() < stated) fail(HttpError::Kind::kAnswered, "途中で切れました");
    return result;
  }

  std::string last_modified() {
    SYSTEMTIME time{};
    DWORD size = sizeof time;
    if (WinHttpQueryHeaders(
            request_.get(), WINHTTP_QUERY_LAST_MODIFIED | WINHTTP_QUERY_FLAG_SYSTEMTIME,
            WINHTTP_HEADER_NAME_BY_INDEX, &time, &size, WINHTTP_NO_HEADER_INDEX) == FALSE) {
      return {};
    }
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04u/%02u/%02u", time.wYear, time.wMonth, time.wDay);
    return text.data();
  }

 private:
  void check(bool well) const {
    if (well) return;
    const DWORD error = GetLastError();
    fail(kind_of(error), reason_of(error));
  }

  [[noreturn]] void fail(HttpError::Kind kind, const std::string& reason) const {
    throw HttpError(kind, url_, reason);
  }

  // Milliseconds until the whole answer must be there.
  DWORD time_left() const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end_ - Clock::now());
    if (left.count() <= 0) fail(HttpError::Kind::kOther, reason_of(ERROR_WINHTTP_TIMEOUT));
    return static_cast<DWORD>(left.count());
  }

  DWORD number(DWORD header, DWORD without) {
    DWORD value = 0;
    DWORD size = sizeof value;
    const BOOL known =
        WinHttpQueryHeaders(request_.get(), header | WINHTTP_QUERY_FLAG_NUMBER,
                            WINHTTP_HEADER_NAME_BY_INDEX, &value, &size, WINHTTP_NO_HEADER_INDEX);
    return known == FALSE ? without : value;
  }

  using Clock = std::chrono::steady_clock;
  std::string url_;
  Clock::time_point end_;
  Handle session_;
  Handle connection_;
  Handle request_;
};

}  // namespace

HttpAnswer http_get(const std::string& url, const HttpLimits& limits) {
  Request request(url, limits, L"GET");
  std::string date = request.last_modified();
  return {request.body(limits.longest), std::move(date)};
}

HttpAnswer http_head(const std::string& url, const HttpLimits& limits) {
  Request request(url, limits, L"HEAD");
  return {{}, request.last_modified()};
}

}  // namespace tobarine
