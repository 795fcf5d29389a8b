//===- vorTreeGeneration.h - Counts changes to the shape of trees -*- C++ -*-===//
//
// What a name resolves to depends on the shape of the tree: which members a
// container holds and under which names, which node is whose parent, what a
// reference stands for, which synonyms the keys know. Every change of that
// kind, in any tree of the process, advances one counter. Anything derived
// from the shape (a resolved name, a value computed within a read) is kept
// together with the generation it was made in and is used only while the
// generation is still the same: then nothing that could alter it has
// happened. A node can be released without a change of shape (a copy of a
// member keeps the member's parent), so whatever keeps derived results must
// also keep the nodes they name alive, or check them otherwise.
//
// Changes of values (set_double, set_string) do not advance it: a resolved
// name stays right when a member's value changes.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_SRC_PARAMETER_VORTREEGENERATION_H
#define VORPARAMETER_SRC_PARAMETER_VORTREEGENERATION_H

#include <atomic>
#include <cstdint>

class vorTreeGeneration {
public:
    static std::uint64_t current() { return s_counter.load(std::memory_order_relaxed); }
    /// Called by every change that could alter what a name resolves to.
    static void advance() { s_counter.fetch_add(1, std::memory_order_relaxed); }

private:
    // Inline, so that a compiled expression checks each of its names with
    // one load. Only the library's own code includes this header, so the
    // shared library holds the one instance.
    static inline std::atomic<std::uint64_t> s_counter{0};
};

#endif // VORPARAMETER_SRC_PARAMETER_VORTREEGENERATION_H
