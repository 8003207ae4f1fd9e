#include "paths.h"

namespace tobarine {

const char* delivered_folder() {
  return TOBARINE_DATA;
}
const char* samples_folder() {
  return TOBARINE_SAMPLES;
}
const char* expected_folder() {
  return TOBARINE_TEST_DATA;
}

}  // namespace tobarine
