// Where the tests find the project's files. Functions, so that only paths.cpp depends on the place
// of the checkout and compiled tests can be shared between checkouts.
#pragma once

namespace tobarine {

const char* delivered_folder();  // data/
const char* samples_folder();    // samples/
const char* expected_folder();   // tests/data/

}  // namespace tobarine
