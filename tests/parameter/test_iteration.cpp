// Tree iteration: order, keys relative to the start, depth limit, filters,
// references and cycles, changes during a walk, and the example of the docs.

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterFunction.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterRef.h"
#include "vorparameter/parameter/vorParameterRoot.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

vorParameterPtr real(double v) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, v));
}

vorParameterPtr map() {
    return vorParameterPtr(new vorParameterMap());
}

/// root { tool { diameter, flutes }, list [ { name }, { name } ], depth }
struct Tree {
    vorParameterPtr root{new vorParameterRoot("machining")};
    vorParameterPtr tool = root->add("tool", map());
    vorParameterPtr diameter = tool->add("diameter", real(6));
    vorParameterPtr flutes = tool->add("flutes", real(4));
    vorParameterPtr list = root->add("list", vorParameterPtr(new vorParameterArray()));
    vorParameterPtr depth;

    Tree() {
        for (const char* name : {"first", "second"}) {
            vorParameterPtr element = list->add(vorParameterKey(), map());
            element->add("name", vorParameterPtr(new vorParameterString(name)));
        }
        depth = root->add("depth", real(2));
    }
};

/// The keys the walk visits, in order.
std::vector<std::string> keys(vorParameterIter it) {
    std::vector<std::string> out;
    while (++it)
        out.push_back(it.index().str().str());
    return out;
}

using Keys = std::vector<std::string>;

} // namespace

TEST(Iteration, VisitsDepthFirstWithKeysRelativeToTheStart) {
    Tree t;
    const Keys all = {"tool",         "tool.diameter", "tool.flutes",  "list", "list[0]",
                      "list[0].name", "list[1]",       "list[1].name", "depth"};
    EXPECT_EQ(keys(vorParameterIter(t.root)), all);
    EXPECT_EQ(keys(vorParameterIter(t.list.get())), (Keys{"[0]", "[0].name", "[1]", "[1].name"}));

    // Every key finds its node from the start.
    vorParameterIter it(t.root);
    int visited = 0;
    while (++it) {
        EXPECT_EQ((*t.root)[it.index()], it()) << it.index().str();
        ++visited;
    }
    EXPECT_EQ(visited, 9);
    EXPECT_FALSE(++it) << "the end stays the end";
    EXPECT_TRUE(it().is_null());
    EXPECT_TRUE(it.index().empty());

    it.reset();
    ASSERT_TRUE(++it);
    EXPECT_EQ(it(), t.tool);

    // A copy goes on from the same place, independently.
    ++it;
    vorParameterIter copy = it;
    EXPECT_EQ(copy(), t.diameter);
    EXPECT_EQ(keys(copy), Keys(all.begin() + 2, all.end()));
    EXPECT_EQ(it(), t.diameter);

    // Nothing below a number, an empty map, an empty handle or a null start.
    EXPECT_TRUE(keys(vorParameterIter(t.depth)).empty());
    EXPECT_TRUE(keys(vorParameterIter(map())).empty());
    EXPECT_TRUE(keys(vorParameterIter(vorParameterPtr())).empty());
    EXPECT_TRUE(keys(vorParameterIter(static_cast<const vorParameter*>(nullptr))).empty());
}

TEST(Iteration, DepthLimitAndFilters) {
    Tree t;
    vorParameterIter direct(t.root);
    direct.set_max_depth(1);
    EXPECT_EQ(keys(direct), (Keys{"tool", "list", "depth"}));
    vorParameterIter two(t.root);
    two.set_max_depth(2);
    EXPECT_EQ(keys(two), (Keys{"tool", "tool.diameter", "tool.flutes", "list", "list[0]", "list[1]",
                               "depth"}));

    vorParameterIter leaves(t.root);
    leaves.set_leaf_only(1);
    EXPECT_EQ(keys(leaves),
              (Keys{"tool.diameter", "tool.flutes", "list[0].name", "list[1].name", "depth"}));

    // An inactive node is skipped with everything below it.
    t.tool->set_active("depth > 5");
    t.depth->set_active("1");
    vorParameterIter active(t.root);
    active.set_active_only(1);
    active.set_max_depth(2);
    EXPECT_EQ(keys(active), (Keys{"list", "list[0]", "list[1]", "depth"}));

    // Functions are skipped unless asked for; reserved names when asked.
    t.root->add("twice", vorParameterPtr(new vorParameterFunction("argv[0] * 2")));
    t.root->add("_hidden", real(1));
    vorParameterIter top(t.root);
    top.set_max_depth(1);
    EXPECT_EQ(keys(top), (Keys{"tool", "list", "depth", "_hidden"}));
    top.exclude_functions(0);
    top.exclude_reserved();
    EXPECT_EQ(keys(top), (Keys{"tool", "list", "depth", "twice"}));
}

TEST(Iteration, ReferencesAreFollowedOnlyWhenAskedAndCyclesEnd) {
    Tree t;
    auto ref = [](const char* text) { return vorParameterPtr(new vorParameterRef(text)); };
    vorParameterPtr a = t.root->add("a", map());
    vorParameterPtr b = t.root->add("b", map());
    vorParameterPtr to_b = a->add("to_b", ref("b"));
    vorParameterPtr to_tool = a->add("cutter", ref("tool"));
    b->add("to_a", ref("a"));

    vorParameterIter plain(a);
    EXPECT_EQ(keys(plain), (Keys{"to_b", "cutter"})) << "references are not followed by default";
    plain.set_leaf_only(1);
    EXPECT_EQ(keys(plain), (Keys{"to_b", "cutter"})) << "and are leaves then";

    // Followed: into the referent with the reference's path, but never back
    // into a container the walk is inside (a, from b.to_a).
    vorParameterIter follow(a);
    follow.set_follow_refs(1);
    EXPECT_EQ(keys(follow),
              (Keys{"to_b", "to_b.to_a", "cutter", "cutter.diameter", "cutter.flutes"}));
    follow.reset();
    while (++follow)
        EXPECT_EQ((*a)[follow.index()].par(), follow().par()) << follow.index().str();
    follow.set_leaf_only(1);
    follow.reset();
    EXPECT_EQ(keys(follow), (Keys{"to_b.to_a", "cutter.diameter", "cutter.flutes"}))
        << "a reference the walk cannot follow is a leaf";

    // From the root, each cycle ends where it comes round.
    vorParameterIter whole(t.root);
    whole.set_follow_refs(1);
    const Keys all = keys(whole);
    EXPECT_EQ(all.size(), 9u + 6u + 6u);
    EXPECT_EQ(all.back(), "b.to_a.cutter.flutes");

    // A suppressed target is not followed either.
    vorParameterRef::ut_dynamic_cast(to_tool.get())->set_suppress_target(1);
    vorParameterIter suppressed(a);
    suppressed.set_follow_refs(1);
    suppressed.set_max_depth(1);
    EXPECT_EQ(keys(suppressed), (Keys{"to_b", "cutter"}));

    // A reference as the start is walked through only when following.
    EXPECT_TRUE(keys(vorParameterIter(to_b)).empty());
    vorParameterIter through(to_b);
    through.set_follow_refs(1);
    EXPECT_EQ(keys(through), (Keys{"to_a", "to_a.to_b", "to_a.cutter"}));
}

TEST(Iteration, ChangesDuringTheWalkTakeEachContainerAsEntered) {
    Tree t;
    vorParameterIter it(t.root);
    ASSERT_TRUE(++it); // tool: the root's members are taken now
    t.root->remove("depth");
    t.root->add("late", real(1));
    t.tool->add("radius", real(3)); // tool is not entered yet: seen
    Keys seen;
    while (++it)
        seen.push_back(it.index().str().str());
    EXPECT_EQ(seen, (Keys{"tool.diameter", "tool.flutes", "tool.radius", "list", "list[0]",
                          "list[0].name", "list[1]", "list[1].name", "depth"}));

    // Dropping the whole tree mid-walk: the walk holds what it still visits.
    vorParameterIter held(t.list);
    ASSERT_TRUE(++held);
    t = Tree();
    int rest = 0;
    while (++held) {
        EXPECT_FALSE(held()->is_error());
        ++rest;
    }
    EXPECT_EQ(rest, 3);
}

TEST(Iteration, OneLevelIteratorsAndDisplayNames) {
    Tree t;
    std::unique_ptr<vorBaseParIter> members(vorBaseParIter::create(t.list));
    EXPECT_TRUE(members->undefined());
    ASSERT_TRUE(++*members);
    EXPECT_EQ(members->index().str(), "[0]");
    ASSERT_TRUE(++*members);
    EXPECT_FALSE(++*members);
    EXPECT_TRUE(members->undefined());
    EXPECT_TRUE((*members)().is_null());
    EXPECT_FALSE(++std::unique_ptr<vorBaseParIter>(vorBaseParIter::create(t.depth)).operator*());

    vorSingleParIter single(t.diameter);
    ASSERT_TRUE(++single);
    EXPECT_EQ(single(), t.diameter);
    EXPECT_EQ(single.index().str(), "diameter");
    EXPECT_FALSE(++single);

    // A nameless member is named by its key in the parent, functions too.
    vorParameterPtr f = t.tool->add("f", vorParameterPtr(new vorParameterFunction("1")));
    f->set_name("");
    EXPECT_EQ(vorParameter::get_name(*f, 0), "f");
    EXPECT_EQ(vorParameter::get_name(*(*t.list)["[1]"], 1), "machining.list[1]");
}

TEST(Iteration, TheDocumentedExampleRuns) {
    // The example of docs/parameters.md, "Iterating a tree".
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));
    tool->add("name", vorParameterPtr(new vorParameterString("End mill")));
    vorParameterPtr passes = root->add("passes", vorParameterPtr(new vorParameterArray()));
    passes->add(vorParameterKey(),
                vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 1)));
    passes->add(vorParameterKey(),
                vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 2)));
    root->add("cutter", vorParameterPtr(new vorParameterRef("tool")));

    std::ostringstream out;
    vorParameterIter it(root);
    it.set_leaf_only(1);
    it.set_follow_refs(1);
    while (++it)
        out << it.index().str() << " = " << it()->get_string() << '\n';

    std::ifstream doc(std::string(VORPARAMETER_SOURCE_DIR) + "/docs/parameters.md");
    std::string line, shown;
    bool inside = false;
    while (std::getline(doc, line)) {
        if (line.rfind("```", 0) == 0) {
            inside = line == "```vor-output";
            continue;
        }
        if (inside)
            shown += line + '\n';
    }
    EXPECT_EQ(out.str(), shown);
}
