// The delivered tables, loaded once for all tests.
#pragma once

#include "convert/reference_tables.h"
#include "paths.h"

namespace tobarine {

template <typename Tables>
const Tables& delivered() {
  static const Tables tables = [] {
    Tables loaded;
    loaded.load(delivered_folder());
    return loaded;
  }();
  return tables;
}

}  // namespace tobarine
