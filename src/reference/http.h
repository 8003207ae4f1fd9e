// Fetching a file from a web server.
#pragma once

#include <string>

#include "text/error.h"

namespace tobarine {

struct HttpLimits {
  long seconds = 60;  // for the whole answer; 1 .. kLongestWait
  long connect_seconds = 15;
  std::size_t longest = 1'000'000;  // bytes; a longer answer is refused
};
inline constexpr long kLongestWait = 3600;

struct HttpAnswer {
  std::string body;
  std::string last_modified;  // yyyy/mm/dd (UTC); empty when the server does not say
};

class HttpError : public NetworkError {
 public:
  enum class Kind {
    kRefused,   // nobody listens at the server's port
    kAnswered,  // an answer came, but not the file: a status other than 200, or no sound HTTP
    kOther,     // no such server, no certificate that can be trusted, too slow, too long ...
  };
  HttpError(Kind kind, std::string_view url, std::string_view reason)
      : NetworkError(url, reason), kind_(kind) {}
  Kind kind() const { return kind_; }

 private:
  Kind kind_;
};

// Follow redirects, from https to https only; throw HttpError. http_head() asks for the headers
// only.
HttpAnswer http_get(const std::string& url, const HttpLimits& limits);
HttpAnswer http_head(const std::string& url, const HttpLimits& limits);

}  // namespace tobarine
