// Fetching a file from a web server.
#pragma once

#include <string>

namespace tobarine {

struct HttpLimits {
  long seconds = 60;  // for the whole answer
  long connect_seconds = 15;
  std::size_t longest = 4'000'000;  // bytes; a longer answer is refused
};

struct HttpAnswer {
  std::string body;
  std::string last_modified;  // yyyy/mm/dd (UTC); empty when the server does not say
};

// Follow redirects; throw NetworkError when the server cannot be reached, does not have the file,
// or cuts the answer short. http_head() asks for the headers only.
HttpAnswer http_get(const std::string& url, const HttpLimits& limits);
HttpAnswer http_head(const std::string& url, const HttpLimits& limits);

}  // namespace tobarine
