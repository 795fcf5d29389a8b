//===- vorTreeGeneration.cpp - Counts changes to the shape of trees -------===//

#include "parameter/vorTreeGeneration.h"

std::atomic<std::uint64_t>& vorTreeGeneration::counter() {
    static std::atomic<std::uint64_t> generation{0};
    return generation;
}
