// What every test file uses: the library, GoogleTest and the standard
// containers and streams the tests build their cases with.
#ifndef VORPARAMETER_TESTS_SUPPORT_PRELUDE_H
#define VORPARAMETER_TESTS_SUPPORT_PRELUDE_H

#include "vorparameter/vorparameter.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#endif // VORPARAMETER_TESTS_SUPPORT_PRELUDE_H
