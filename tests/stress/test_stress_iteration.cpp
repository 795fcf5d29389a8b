// Walks over trees a million members wide and a hundred thousand levels deep,
// trees changed under a walk, and reference cycles with references followed:
// each would overflow the stack, take quadratic time, touch freed memory or
// never end if the walk were naive.

#include "../support/prelude.h"

namespace {

constexpr int kWide = 1000000;
constexpr int kDeep = 100000;

/// A chain of `depth` nested maps, each the member "m" of the one above; the
/// deepest holds the number "x". Returns the top.
vorParameterPtr make_chain(int depth) {
    vorParameterPtr top(new vorParameterMap());
    top->add("x", real(1));
    for (int i = 1; i < depth; ++i) {
        vorParameterPtr up(new vorParameterMap());
        up->add("m", top);
        top = up;
    }
    return top;
}

} // namespace

TEST(StressIteration, MillionMembersWide) {
    vorParameterPtr array(new vorParameterArray());
    for (int i = 0; i < kWide; ++i)
        array->add(vorParameterKey(), real(i));
    vorParameterIter elements(array);
    double sum = 0;
    while (++elements)
        sum += elements()->get_double();
    EXPECT_DOUBLE_EQ(sum, double(kWide) * (kWide - 1) / 2) << "each element once";

    // Maps: every member once, in order, with its key (more distinct name
    // keys than the bounded key cache keeps). Adding a member costs a name
    // key of its own, so the map is a tenth as wide.
    vorParameterPtr map(new vorParameterMap());
    for (int i = 0; i < kWide / 10; ++i)
        map->add(vorParameterKey("m" + std::to_string(i)), real(i));
    vorParameterIter it(map);
    int seen = 0;
    while (++it) {
        if (it.index().str() != "m" + std::to_string(seen))
            ADD_FAILURE() << it.index().str() << " at " << seen;
        ++seen;
    }
    EXPECT_EQ(seen, kWide / 10);
}

TEST(StressIteration, HundredThousandLevelsDeep) {
    vorParameterPtr chain = make_chain(kDeep);
    vorParameterIter it(chain);
    int seen = 0;
    utString deepest_key;
    while (++it) {
        ++seen;
        deepest_key = it.index().str(); // asked at every level: linear overall
        if (seen == 3) {
            EXPECT_EQ(deepest_key, "m.m.m");
        }
    }
    EXPECT_EQ(seen, kDeep);
    EXPECT_TRUE(deepest_key.empty()) << "a path longer than a key has the empty key";

    // A copy in the middle of the deep walk copies every level.
    vorParameterIter half(chain);
    for (int i = 0; i < kDeep / 2; ++i)
        ++half;
    vorParameterIter copy = half;
    int rest = 0;
    while (++copy)
        ++rest;
    EXPECT_EQ(rest, kDeep - kDeep / 2);
}

TEST(StressIteration, TreeChangedAndReleasedUnderTheWalk) {
    // Every step takes the node just visited out of its map and adds two new
    // members there; one step empties the container it stands on, and later
    // the last outside handle to the tree goes. The walk sees each container
    // as it was entered and holds what it has still to visit.
    vorParameterPtr chain = make_chain(1000);
    for (vorParameter* node = chain.get(); !(*node)["m"]->is_error(); node = (*node)["m"].get())
        for (int i = 0; i < 10; ++i)
            node->add(vorParameterKey("n" + std::to_string(i)), real(i));

    vorParameterIter it(chain);
    int steps = 0;
    while (++it) {
        ++steps;
        vorParameterPtr node = it();
        if (vorParameter* parent = node->parent()) {
            parent->remove(vorParameterKey(node->get_name()));
            parent->add(vorParameterKey("late" + std::to_string(steps)), real(0));
            parent->add(vorParameterKey("later" + std::to_string(steps)), map());
        }
        if (steps == 200)
            node->remove_all();
        if (steps == 500)
            chain.reset();
    }
    EXPECT_EQ(steps, 200 + 10 * 200) << "the chain below step 200 was emptied";
}

TEST(StressIteration, ReferenceCyclesEndWithReferencesFollowed) {
    // Two deep chains, the bottom of each referring to the top of the other:
    // followed, each is walked once and the reference back is a leaf.
    vorParameterPtr holder(new vorParameterRoot("deep"));
    for (const char* name : {"a", "b"}) {
        vorParameterPtr chain = holder->add(name, make_chain(kDeep));
        vorParameter* bottom = chain.get();
        while (!(*bottom)["m"]->is_error())
            bottom = (*bottom)["m"].get();
        bottom->add("other", reference(*name == 'a' ? "b" : "a"));
    }
    vorParameterIter deep((*holder)["a"]);
    deep.set_follow_refs(1);
    int count = 0;
    while (++deep)
        ++count;
    EXPECT_EQ(count, 2 * (kDeep + 1));
}
