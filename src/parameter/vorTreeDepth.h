//===- vorTreeDepth.h - Bounds recursive walks down a tree ------*- C++ -*-===//
//
// print, is_valid and is_equal descend into nested containers recursively.
// Each container entered holds a vorTreeDepth for the time it is visited;
// more than vorParameter::max_tree_depth of them alive on one thread means
// the walk is too deep to go on, and the container answers its documented
// fallback instead of descending (a marked print, invalid, unequal).
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_PARAMETER_VORTREEDEPTH_H
#define VORPARAMETER_SRC_PARAMETER_VORTREEDEPTH_H

#include "vorparameter/parameter/vorParameter.h"

class vorTreeDepth {
public:
    vorTreeDepth() { ++s_depth; }
    ~vorTreeDepth() { --s_depth; }
    vorTreeDepth(const vorTreeDepth&) = delete;
    vorTreeDepth& operator=(const vorTreeDepth&) = delete;

    /// True when this level is below the limit.
    bool too_deep() const { return s_depth > vorParameter::max_tree_depth; }

    /// What a container too deep to print prints instead of its members.
    static constexpr const char* too_deep_mark = "(TOO DEEP) \n";

private:
    static thread_local int s_depth;
};

#endif // VORPARAMETER_SRC_PARAMETER_VORTREEDEPTH_H
