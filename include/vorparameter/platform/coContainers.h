//===- coContainers.h - Container names of the public interfaces -*- C++ -*-===//
//
// The public interfaces name their containers by element and kind
// (vorParameterPtrcoDList, utStringutStringcoTable). These are aliases over
// the standard library, each chosen for the operations the library performs:
//
//   coDList<T>  - a sequence indexed in O(1) with amortised O(1) append
//                 (std::vector); insertion in the middle is O(n).
//   coSList<T>  - a sequence that is only appended to and walked (std::vector).
//   coStack<T>  - a stack (std::vector: push_back, back, pop_back).
//   coTable, coSet - insertion-ordered hash tables (coTable.h).
//
// coPrfExtern marks a handle that refers to an object without owning it.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PLATFORM_COCONTAINERS_H
#define VORPARAMETER_PLATFORM_COCONTAINERS_H

#include "vorparameter/platform/coTable.h"
#include "vorparameter/platform/utString.h"

#include <vector>

template <class T>
using coDList = std::vector<T>;
template <class T>
using coSList = std::vector<T>;
template <class T>
using coStack = std::vector<T>;

/// Tag of the constructors that make a non-owning handle.
struct coPrfExtern {
    explicit coPrfExtern() = default;
};

using utStringutStringcoTable = coTable<utString, utString>;
using utStringintcoTable = coTable<utString, int>;
using utStringcoSet = coSet<utString>;
using utStringcoSList = coSList<utString>;
using utStringutStringcoSetcoTable = coTable<utString, utStringcoSet>;

#endif // VORPARAMETER_PLATFORM_COCONTAINERS_H
