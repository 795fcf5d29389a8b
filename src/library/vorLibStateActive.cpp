//===- vorLibStateActive.cpp - The function "state_active" ----------------===//
//
// Registered when the library is loaded, like the mathematical functions.
// This build does not provide it yet: a call answers ERR_UNKNOWN.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibSupport.h"

namespace {

const vorLibSupport::Registration state_active("state_active", vorLibSupport::unavailable,
                                               "Test whether an enum state of a parameter is "
                                               "active.");

} // namespace
