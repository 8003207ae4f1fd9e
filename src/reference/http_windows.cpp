// Fetching by the system's own means (WinHTTP): its proxies and certificates count.
#include <array>
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
    default:
      return "通信エラー " + std::to_string(error);
  }
}

class Request {
 public:
  Request(const std::string& url, const HttpLimits& limits, const wchar_t* verb) : url_(url) {
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
    const int connect = static_cast<int>(limits.connect_seconds * 1000);
    const int answer = static_cast<int>(limits.seconds * 1000);
    WinHttpSetTimeouts(session_.get(), connect, connect, answer, answer);
    connection_.reset(WinHttpConnect(session_.get(), host.data(), parts.nPort, 0));
    check(connection_ != nullptr);
    const DWORD secure = parts.nScheme == INTERNET_SCHEME_HTTPS ? WINHTTP_FLAG_SECURE : 0;
    request_.reset(WinHttpOpenRequest(connection_.get(), verb, path.data(), nullptr,
                                      WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, secure));
    check(request_ != nullptr);
    check(WinHttpSendRequest(request_.get(), WINHTTP_NO_ADDITIONAL_HEADERS, 0,
                             WINHTTP_NO_REQUEST_DATA, 0, 0, 0) != FALSE &&
          WinHttpReceiveResponse(request_.get(), nullptr) != FALSE);
    const DWORD status = number(WINHTTP_QUERY_STATUS_CODE, 0);
    constexpr DWORD kOk = 200;
    if (status != kOk) {
      throw NetworkError(url_, "サーバーの返事が " + std::to_string(status) + " です");
    }
  }

  std::string body(std::size_t longest) {
    const DWORD stated = number(WINHTTP_QUERY_CONTENT_LENGTH, 0);
    std::string result;
    for (;;) {
      std::array<char, 16384> bytes;
      DWORD got = 0;
      check(WinHttpReadData(request_.get(), bytes.data(), bytes.size(), &got) != FALSE);
      if (got == 0) break;
      if (result.size() + got > longest) throw NetworkError(url_, "大きすぎます");
      result.append(bytes.data(), got);
    }
    if (result.size() < stated) throw NetworkError(url_, "途中で切れました");
    return result;
  }

  std::string last_modified() {
    SYSTEMTIME time{};
    DWORD size = sizeof time;
    if (WinHttpQueryHeaders(request_.get(),
                            WINHTTP_QUERY_LAST_MODIFIED | WINHTTP_QUERY_FLAG_SYSTEMTIME,
                            WINHTTP_HEADER_NAME_BY_INDEX, &time, &size,
                            WINHTTP_NO_HEADER_INDEX) == FALSE) {
      return {};
    }
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04u/%02u/%02u", time.wYear, time.wMonth, time.wDay);
    return text.data();
  }

 private:
  void check(bool well) const {
    if (!well) throw NetworkError(url_, reason_of(GetLastError()));
  }

  DWORD number(DWORD header, DWORD without) {
    DWORD value = 0;
    DWORD size = sizeof value;
    const BOOL known = WinHttpQueryHeaders(request_.get(), header | WINHTTP_QUERY_FLAG_NUMBER,
                                           WINHTTP_HEADER_NAME_BY_INDEX, &value, &size,
                                           WINHTTP_NO_HEADER_INDEX);
    return known == FALSE ? without : value;
  }

  std::string url_;
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
