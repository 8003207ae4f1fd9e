#include "text/folder.h"

#include <string>
#include <system_error>

#include "text/error.h"
#include "text/strings.h"

namespace tobarine {

std::filesystem::path file_in(const std::filesystem::path& folder, std::string_view name) {
  std::filesystem::path exact = folder / path_from_text(name);
  std::error_code error;
  if (std::filesystem::exists(exact, error)) return exact;
  for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
       it.increment(error)) {
    if (equal_ignoring_case(path_text(it->path().filename()), name)) return it->path();
  }
  return exact;
}

}  // namespace tobarine
