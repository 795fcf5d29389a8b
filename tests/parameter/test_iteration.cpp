// Tree iteration: order, keys relative to the start, depth limit, filters,
// references and cycles, changes during a walk, and the example of the docs.

#include "../support/prelude.h"

#include <fstream>

namespace {

using Keys = std::vector<std::string>;

/// root { tool { diameter, flutes }, list [ { name }, { name } ], depth }
struct Tree {
    vorParameterPtr root{new vorParameterRoot("machining")};
    vorParameterPtr tool = root->add("tool", map());
    vorParameterPtr diameter = tool->add("diameter", real(6));
    vorParameterPtr flutes = tool->add("flutes", real(4));
    vorParameterPtr list = root->add("list", vorParameterPtr(new vorParameterArray()));
    vorParameterPtr first = list->add(vorParameterKey(), map());
    vorParameterPtr second = list->add(vorParameterKey(), map());
    vorParameterPtr depth = root->add("depth", real(2));

    Tree() {
        first->add("name", text("first"));
        second->add("name", text("second"));
    }
};

/// The keys the rest of the walk visits, in order.
Keys keys(vorParameterIter it) {
    Keys out;
    while (++it)
        out.push_back(it.index().str().str());
    return out;
}

} // namespace

TEST(Iteration, VisitsDepthFirstWithRelativeKeysDepthLimitAndFilters) {
    Tree t;
    const Keys all = {"tool",         "tool.diameter", "tool.flutes",  "list", "list[0]",
                      "list[0].name", "list[1]",       "list[1].name", "depth"};
    EXPECT_EQ(keys(vorParameterIter(t.root)), all);
    EXPECT_EQ(keys(vorParameterIter(t.list.get())), (Keys{"[0]", "[0].name", "[1]", "[1].name"}));

    vorParameterIter it(t.root);
    while (++it)
        EXPECT_EQ((*t.root)[it.index()], it()) << "the key finds the node: " << it.index().str();
    EXPECT_FALSE(++it) << "the end stays the end";
    EXPECT_TRUE(it().is_null());
    EXPECT_TRUE(it.index().empty());

    // reset() starts again; a copy goes on from the same place on its own.
    it.reset();
    ++it;
    ++it;
    vorParameterIter copy = it;
    EXPECT_EQ(keys(copy), Keys(all.begin() + 2, all.end()));
    EXPECT_EQ(it(), t.diameter);

    for (vorParameterPtr start : {t.depth, map(), vorParameterPtr()})
        EXPECT_TRUE(keys(vorParameterIter(start)).empty());

    vorParameterIter limited(t.root);
    limited.set_max_depth(2);
    EXPECT_EQ(keys(limited), (Keys{"tool", "tool.diameter", "tool.flutes", "list", "list[0]",
                                   "list[1]", "depth"}));

    vorParameterIter leaves(t.root);
    leaves.set_leaf_only(1);
    EXPECT_EQ(keys(leaves),
              (Keys{"tool.diameter", "tool.flutes", "list[0].name", "list[1].name", "depth"}));

    // An inactive node is skipped with everything below it.
    t.tool->set_active("depth > 5");
    vorParameterIter active(t.root);
    active.set_active_only(1);
    active.set_max_depth(2);
    EXPECT_EQ(keys(active), (Keys{"list", "list[0]", "list[1]", "depth"}));

    // Functions are skipped unless asked for; reserved names when asked.
    t.root->add("twice", function("argv[0] * 2"));
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
    vorParameterPtr a = t.root->add("a", map());
    vorParameterPtr b = t.root->add("b", map());
    vorParameterPtr to_b = a->add("to_b", reference("b"));
    vorParameterPtr cutter = a->add("cutter", reference("tool"));
    b->add("to_a", reference("a"));

    vorParameterIter plain(a);
    plain.set_leaf_only(1);
    EXPECT_EQ(keys(plain), (Keys{"to_b", "cutter"})) << "references are leaves by default";

    // Followed: into the referent with the reference's path, but never back
    // into a container the walk is inside (a, from b.to_a).
    vorParameterIter follow(a);
    follow.set_follow_refs(1);
    EXPECT_EQ(keys(follow),
              (Keys{"to_b", "to_b.to_a", "cutter", "cutter.diameter", "cutter.flutes"}));
    while (++follow)
        EXPECT_EQ((*a)[follow.index()].par(), follow().par()) << follow.index().str();
    follow.set_leaf_only(1);
    follow.reset();
    EXPECT_EQ(keys(follow), (Keys{"to_b.to_a", "cutter.diameter", "cutter.flutes"}))
        << "a reference the walk cannot follow is a leaf";

    vorParameterIter whole(t.root);
    whole.set_follow_refs(1);
    EXPECT_EQ(keys(whole).size(), 9u + 6u + 6u) << "each cycle ends where it comes round";

    // Neither is a suppressed target followed; a reference as the start is
    // walked through only when following.
    vorParameterRef::ut_dynamic_cast(cutter.get())->set_suppress_target(1);
    EXPECT_TRUE(keys(vorParameterIter(to_b)).empty());
    vorParameterIter through(to_b);
    through.set_follow_refs(1);
    EXPECT_EQ(keys(through), (Keys{"to_a", "to_a.to_b", "to_a.cutter"}));
}

TEST(Iteration, ChangesDuringTheWalkTakeEachContainerAsEntered) {
    Tree t;
    vorParameterIter it(t.root);
    ASSERT_TRUE(++it); // on tool: the root's members are taken now
    t.root->remove("depth");
    t.root->add("late", real(1));
    t.tool->add("radius", real(3)); // tool is not entered yet
    EXPECT_EQ(keys(it), (Keys{"tool.diameter", "tool.flutes", "tool.radius", "list", "list[0]",
                              "list[0].name", "list[1]", "list[1].name", "depth"}));

    // Dropping the whole tree mid-walk: the walk holds what it still visits.
    vorParameterIter held(t.list);
    ++held;
    t = Tree();
    EXPECT_EQ(keys(held), (Keys{"[0].name", "[1]", "[1].name"}));
}

TEST(Iteration, OneLevelIteratorsDisplayNamesAndTheDocumentedExample) {
    Tree t;
    std::unique_ptr<vorBaseParIter> members(vorBaseParIter::create(t.list));
    EXPECT_TRUE(members->undefined());
    ASSERT_TRUE(++*members);
    EXPECT_EQ(members->index().str(), "[0]");
    ASSERT_TRUE(++*members);
    EXPECT_FALSE(++*members);
    EXPECT_TRUE((*members)().is_null());

    vorSingleParIter single(t.diameter);
    ASSERT_TRUE(++single);
    EXPECT_EQ(single.index().str(), "diameter");
    EXPECT_FALSE(++single);

    // A nameless member is named by its key in the parent, functions too.
    vorParameterPtr f = t.tool->add("f", function("1"));
    f->set_name("");
    EXPECT_EQ(vorParameter::get_name(*f, 0), "f");
    EXPECT_EQ(vorParameter::get_name(*t.second, 1), "machining.list[1]");

    // The example of docs/parameters.md, "Iterating a tree".
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr tool = root->add("tool", map());
    tool->add("diameter", real(6, DIM_LENGTH));
    tool->add("name", text("End mill"));
    vorParameterPtr passes = root->add("passes", vorParameterPtr(new vorParameterArray()));
    passes->add(vorParameterKey(), real(1, DIM_LENGTH));
    passes->add(vorParameterKey(), real(2, DIM_LENGTH));
    root->add("cutter", reference("tool"));

    std::ostringstream out;
    vorParameterIter it(root);
    it.set_leaf_only(1);
    it.set_follow_refs(1);
    while (++it)
        out << it.index().str() << " = " << it()->get_string() << '\n';

    // The output shown in the docs: the block fenced as "vor-output".
    std::ifstream doc(std::string(VORPARAMETER_SOURCE_DIR) + "/docs/parameters.md");
    std::string line, shown;
    bool inside = false;
    while (std::getline(doc, line)) {
        if (line.rfind("```", 0) == 0)
            inside = line == "```vor-output";
        else if (inside)
            shown += line + '\n';
    }
    EXPECT_EQ(out.str(), shown);
}
