#include <array>
#include <cerrno>
#include <ctime>
#include <curl/curl.h>
#include <memory>

#include "reference/http.h"
#include "text/error.h"

namespace tobarine {
namespace {

constexpr long kMostRedirects = 5;

struct Download {
  std::string body;
  std::size_t longest;
};

std::size_t take(char* bytes, std::size_t size, std::size_t count, void* user) {
  auto& download = *static_cast<Download*>(user);
  if (download.body.size() + size * count > download.longest) return 0;
  download.body.append(bytes, size * count);
  return size * count;
}

std::string status_reason(long status) {
  return "サーバーの返事が " + std::to_string(status) + " です";
}

std::string reason_of(CURLcode code, long status) {
  switch (code) {
    case CURLE_HTTP_RETURNED_ERROR:
      return status_reason(status);
    case CURLE_OPERATION_TIMEDOUT:
      return "時間切れです";
    case CURLE_PARTIAL_FILE:
      return "途中で切れました";
    case CURLE_WRITE_ERROR:
      return "大きすぎます";
    case CURLE_COULDNT_RESOLVE_HOST:
      return "サーバーが見つかりません";
    case CURLE_COULDNT_CONNECT:
      return "サーバーに繋がりません";
    case CURLE_PEER_FAILED_VERIFICATION:
      return "サーバーの証明書が確かめられません";
    case CURLE_SSL_CONNECT_ERROR:
      return "サーバーと https で繋がりません";
    case CURLE_UNSUPPORTED_PROTOCOL:
      return "https でも http でもないか、https から http へ移そうとしています";
    case CURLE_URL_MALFORMAT:
      return "URL として読めません";
    case CURLE_TOO_MANY_REDIRECTS:
      return "別の所へ移され続けます";
    case CURLE_GOT_NOTHING:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_RECV_ERROR:
      return "サーバーの返事が読めません";
    default:
      return "通信エラー " + std::to_string(code);
  }
}

HttpError::Kind kind_of(CURLcode code, CURL* curl) {
  switch (code) {
    case CURLE_COULDNT_CONNECT: {
      long system_error = 0;
      curl_easy_getinfo(curl, CURLINFO_OS_ERRNO, &system_error);
      return system_error == ECONNREFUSED ? HttpError::Kind::kRefused : HttpError::Kind::kOther;
    }
    case CURLE_HTTP_RETURNED_ERROR:
    case CURLE_GOT_NOTHING:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_RECV_ERROR:
    case CURLE_PARTIAL_FILE:
      return HttpError::Kind::kAnswered;
    default:
      return HttpError::Kind::kOther;
  }
}

std::string date_of(curl_off_t time) {
  if (time < 0) return {};
  const auto seconds = static_cast<std::time_t>(time);
  std::array<char, 16> text{};
  std::tm utc{};
  gmtime_r(&seconds, &utc);
  static_cast<void>(std::strftime(text.data(), text.size(), "%Y/%m/%d", &utc));
  return text.data();
}

HttpAnswer ask(const std::string& url, const HttpLimits& limits, bool head_only) {
  const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(),
                                                                 &curl_easy_cleanup);
  if (!curl) throw HttpError(HttpError::Kind::kOther, url, "通信の準備ができません");
  Download download{{}, limits.longest};
  const auto set = [&curl](CURLoption option, auto value) {
    curl_easy_setopt(curl.get(), option, value);
  };
  set(CURLOPT_URL, url.c_str());
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_REDIR_PROTOCOLS_STR, url.starts_with("http:") ? "http,https" : "https");
  set(CURLOPT_FOLLOWLOCATION, 1L);
  set(CURLOPT_MAXREDIRS, kMostRedirects);
  set(CURLOPT_FAILONERROR, 1L);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_FILETIME, 1L);
  set(CURLOPT_TIMEOUT, limits.seconds);
  set(CURLOPT_CONNECTTIMEOUT, limits.connect_seconds);
  set(CURLOPT_USERAGENT, "Tobarine");
  set(CURLOPT_WRITEFUNCTION, &take);
  set(CURLOPT_WRITEDATA, static_cast<void*>(&download));
  if (head_only) set(CURLOPT_NOBODY, 1L);
  const CURLcode code = curl_easy_perform(curl.get());
  long status = 0;
  curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &status);
  if (code != CURLE_OK) {
    throw HttpError(kind_of(code, curl.get()), url, reason_of(code, status));
  }
  constexpr long kOk = 200;
  if (status != kOk) throw HttpError(HttpError::Kind::kAnswered, url, status_reason(status));
  curl_off_t time = -1;
  curl_easy_getinfo(curl.get(), CURLINFO_FILETIME_T, &time);
  return {std::move(download.body), date_of(time)};
}

}  // namespace

HttpAnswer http_get(const std::string& url, const HttpLimits& limits) {
  return ask(url, limits, false);
}

HttpAnswer http_head(const std::string& url, const HttpLimits& limits) {
  return ask(url, limits, true);
}

}  // namespace tobarine
