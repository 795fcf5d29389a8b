// Deep and wide trees, handles shared by threads and the bounded key cache:
// each would overflow the stack, take quadratic time or grow memory without
// bound if a walk or a table were naive.

#include "../support/prelude.h"

namespace {

constexpr int kChainDepth = 100000;

/// A chain of nested maps, each the only member ("m") of the one above,
/// built bottom up; the deepest map holds the number "x".
vorParameterPtr make_chain(int depth) {
    vorParameterPtr bottom(new vorParameterMap());
    bottom->add("x", real(1.0, vorDimensions()));
    vorParameterPtr top = bottom;
    for (int i = 1; i < depth; ++i) {
        vorParameterPtr up(new vorParameterMap());
        up->add("m", top);
        top = up;
    }
    return top;
}

vorParameter* deepest(const vorParameterPtr& top) {
    vorParameter* node = top.get();
    while (node->size() == 1 && node->type() == TYPE_MAP && !(*node)["m"]->is_error())
        node = (*node)["m"].get();
    return node;
}

} // namespace

TEST(StressTree, DeepChainIsReleasedCopiedComparedAndPrinted) {
    vorParameterPtr chain = make_chain(kChainDepth);
    vorParameterPtr copy = chain.copy();
    vorParameter* bottom = deepest(copy);
    EXPECT_DOUBLE_EQ((*bottom)["x"]->get_double(), 1.0) << "the copy reaches the bottom";
    EXPECT_NE(bottom, deepest(chain)) << "the copy shares no node with the original";

    // The walks that recurse stop at the depth limit with their fallback.
    EXPECT_FALSE(chain->is_valid());
    EXPECT_FALSE(*chain == *copy);
    const std::string printed = chain->print(0).str();
    EXPECT_NE(printed.find("(TOO DEEP)"), std::string::npos);
    EXPECT_LT(printed.size(), 2u * 1024 * 1024);

    // Within the limit, the same walks answer in full.
    vorParameterPtr shallow = make_chain(vorParameter::max_tree_depth - 1);
    EXPECT_TRUE(shallow->is_valid());
    EXPECT_TRUE(*shallow == *shallow.copy());

    // The display name of the deepest node is the whole dotted path.
    const utString name = vorParameter::get_name(*bottom, 1);
    EXPECT_EQ(name.size(), 2u * (kChainDepth - 1) - 1);

    // A name is searched up through every enclosing map: "x" at the bottom
    // is found from there, an unknown one is an error after the whole walk.
    vorParameterPtr probe(new vorParameterNumeric(SUB_REAL, vorDimensions(), 0.0));
    bottom->add("probe", probe);
    probe->set_string("x * 2");
    EXPECT_DOUBLE_EQ(probe->get_double(), 2.0);
    EXPECT_TRUE(bottom->resolve(vorParameterKey("nowhere"))->is_error());
    EXPECT_TRUE(probe->is_active());
    EXPECT_FALSE(probe->get_lock_id().is_valid());
    EXPECT_EQ(probe->get_precedence(), 0);
    chain->reset(); // stops at the depth limit
    chain->set_onread_callback(nullptr);

    chain.reset();
    copy.reset(); // both releases are iterative: no stack overflow
}

TEST(StressTree, BuildingTopDownWalksNoAncestorsAndTheKeyCacheStaysBounded) {
    // Each add puts a new map under the deepest one. With a lock anywhere in
    // the process, is_locked() must still answer for the chain.
    vorParameterPtr top(new vorParameterMap());
    vorParameter* bottom = top.get();
    for (int i = 0; i < kChainDepth; ++i) {
        vorParameterPtr child(new vorParameterMap());
        ASSERT_FALSE(bottom->add("m", child)->is_error());
        bottom = child.get();
    }
    // A map cannot take an ancestor, however deep it sits.
    EXPECT_TRUE(bottom->add("loop", top)->is_error());

    top->lock(1);
    EXPECT_TRUE(bottom->is_locked());
    EXPECT_TRUE(bottom->add("n", map())->is_error());
    top->lock(0);
    EXPECT_FALSE(bottom->is_locked());
    EXPECT_FALSE(bottom->add("n", map())->is_error());

    // A million distinct names, each used once: the cache drops the records
    // no key holds. Keys alive meanwhile keep their shared record.
    vorParameterKey kept("kept_name");
    for (int i = 0; i < 1000000; ++i) {
        vorParameterKey key("name_" + std::to_string(i));
        ASSERT_EQ(key.type(), TYPE_MAP);
    }
    EXPECT_TRUE(kept == vorParameterKey("kept_name"));
    EXPECT_FALSE(vorParameterKey("name_5") == vorParameterKey("name_6"));
    EXPECT_TRUE(vorParameterKey("name_5") == vorParameterKey("name_5"));
}
