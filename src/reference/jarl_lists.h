// The league's lists of cities, guns and wards on its web server.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "reference/http.h"
#include "reference/jcc_builder.h"

namespace tobarine {

inline constexpr const char* kJarlUrl = "https://www.jarl.org/Japanese/A_Shiryo/A-2_jcc-jcg/";

using HttpAsk = std::function<HttpAnswer(const std::string& url, const HttpLimits& limits)>;

// Where the lists stand, how long to wait for them, and how to ask. An address of the user's own is
// taken as it is; the default one is asked by https, and by plain http only when nobody listens for
// https there.
struct JarlServer {
  std::string url;  // empty: the default
  HttpLimits limits;
  HttpAsk get = http_get;
  HttpAsk head = http_head;
};

struct JarlDates {
  std::array<std::string, 3> dates;  // yyyy/mm/dd; empty: the server does not say
  bool plain_http = false;           // the default address was asked without https
};

// The dates of the lists on the server, in the order of kListFiles: the server's, else the one in
// the list's first lines, else empty. Throws NetworkError.
JarlDates jarl_dates(const JarlServer& server);

struct JarlLists {
  std::array<std::string, 3> lists;  // bytes, as the server has them
  std::array<std::string, 3> dates;
  JccBuild build;
  bool plain_http = false;
};

// The lists hold other numbers of places than their first lines say; a list may be wrong there.
class IncompleteLists : public NetworkError {
 public:
  using NetworkError::NetworkError;
};

// Fetches all three and makes sure that they are what they should be: readable lists with as many
// places as their first lines say. Throws NetworkError; nothing is written.
JarlLists fetch_jarl_lists(const JarlServer& server);

// Asks for an https address; for the same by http when nobody listens there, and from then on. Of
// every other failure, above all a certificate that cannot be trusted, the HttpError goes on.
HttpAnswer ask_securely(const std::string& https_url, const HttpLimits& limits, const HttpAsk& ask,
                        bool& plain_http);

}  // namespace tobarine
