// The league's lists of cities, guns and wards on its web server.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "reference/http.h"
#include "reference/jcc_builder.h"

namespace tobarine {

inline constexpr const char* kJarlUrl = "https://www.jarl.org/Japanese/A_Shiryo/A-2_jcc-jcg/";

// Where the lists stand, and how long to wait for them. The default address is tried by https
// first, then by http; an address of the user's own is taken as it is.
struct JarlServer {
  std::string url;  // empty: the default
  HttpLimits limits;
};

// The dates (yyyy/mm/dd) of the lists on the server, in the order of kListFiles: the server's, else
// the one in the list's first lines, else empty. Throws NetworkError.
std::array<std::string, 3> jarl_dates(const JarlServer& server);

struct JarlLists {
  std::array<std::string, 3> lists;  // bytes, as the server has them
  std::array<std::string, 3> dates;
  JccBuild build;
};

// Fetches all three and makes sure that they are what they should be: readable lists with as many
// places as their first lines say. Throws NetworkError; nothing is written.
JarlLists fetch_jarl_lists(const JarlServer& server);

}  // namespace tobarine
