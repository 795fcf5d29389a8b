// The list, set and dictionary functions, and the examples of their
// documentation.

#include "../support/doc_examples.h"
#include "lib_test_tree.h"
#include "shown_value.h"

#include "../support/prelude.h"

#include <random>

namespace {

vorParameterPtr tool_map(const char* name, double diameter) {
    vorParameterPtr tool(new vorParameterMap());
    tool->add("name", text(name));
    tool->add("diameter", real(diameter, DIM_LENGTH));
    return tool;
}

/// The tree of docs/functions-lists.md.
vorParameterPtr lists_tree() {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    vorParameterPtr passes =
        root->add("passes", vorParameterPtr(new vorParameterList(real(0, DIM_LENGTH))));
    for (double pass : {1.0, 2.0, 3.0})
        passes->add(vorParameterKey(), real(pass, DIM_LENGTH));
    auto* prototype = new vorParameterMap();
    prototype->not_fixed();
    vorParameterPtr tools = root->add("tools", vorParameterPtr(new vorParameterList(prototype)));
    tools->add(vorParameterKey(), tool_map("T1", 6));
    tools->add(vorParameterKey(), tool_map("T2", 10));
    tools->add(vorParameterKey(), tool_map("T3", 3));
    tools->add(vorParameterKey(), tool_map("T4", 10));
    vorParameterPtr tool = root->add("tool", map());
    tool->set_typename("EndMill");
    tool->add("diameter", real(6, DIM_LENGTH));
    tool->add("flutes", real(4, DIM_NONE, SUB_INT));
    root->add("method", vorParameterPtr(new vorParameterEnum("raster|offset|spiral", "offset")));
    vorParameterPtr frozen = root->add("frozen", vorParameterPtr(new vorParameterList(real(0))));
    frozen->set_int(2);
    frozen["[0]"]->set_double(1);
    frozen["[1]"]->set_double(2);
    frozen->lock(1);
    return root;
}

std::string shown(const vorParameterPtr& scope, const char* expression) {
    return shown(eval(scope, expression));
}

} // namespace

TEST(LibListsDocs, EveryExampleGivesTheDocumentedResult) {
    expect_doc_examples("docs/functions-lists.md", 50, [](const std::string& expression) {
        return shown(lists_tree(), expression.c_str());
    });
}

TEST(LibLists, TreeListsChangeInPlaceAndBraceListsDoNot) {
    vorParameterPtr root = lists_tree();
    vorParameterPtr passes = root["passes"];
    vorParameterPtr second = passes["[1]"];

    // A list of lengths turns the text into its own element; the result is
    // the list of the tree itself.
    vorParameterPtr changed = eval(root, "add_first(passes; '7')");
    EXPECT_EQ(changed.get(), passes.get());
    EXPECT_EQ(passes["[0]"]->subtype(), SUB_REAL);
    EXPECT_EQ(shown(passes), "{7; 1; 2; 3}");

    // remove_duplicates keeps the surviving elements themselves, parented.
    eval(root, "add_last(passes; 1)");
    eval(root, "add_last(passes; 2)");
    EXPECT_EQ(eval(root, "remove_duplicates(passes)")->get_int(), 2);
    EXPECT_EQ(shown(passes), "{7; 1; 2; 3}");
    EXPECT_EQ(passes["[2]"].get(), second.get());
    EXPECT_EQ(second->parent(), passes.get());

    vorParameterPtr taken = eval(root, "remove_last(passes)");
    EXPECT_EQ(taken->get_double(), 3);
    EXPECT_EQ(taken->parent(), nullptr);
    EXPECT_EQ(eval(root, "remove(passes; 7)")->get_int(), 1);
    EXPECT_EQ(shown(passes), "{1; 2}");

    // A brace list naming members of the tree: its copy changes, the members
    // stay where they are.
    vorParameterPtr tool = root["tool"];
    vorParameterPtr copy = eval(root, "remove_first({tool; passes})");
    EXPECT_NE(copy.get(), tool.get());
    EXPECT_EQ(tool->parent(), root.get());
    eval(root, "add_last({passes}; tool)");
    EXPECT_EQ(tool->parent(), root.get());
    EXPECT_EQ(root["tool"].get(), tool.get());

    // A plain array of the tree stores a copy of a member added to it.
    vorParameterPtr plain = root->add("plain", vorParameterPtr(new vorParameterArray()));
    eval(root, "add_last(plain; tool)");
    EXPECT_EQ(tool->parent(), root.get());
    EXPECT_EQ(plain["[0].flutes"]->get_int(), 4);
}

TEST(LibLists, SharedListsHoldMembersAndAnswerSharedLists) {
    vorParameterPtr root = lists_tree();
    vorParameterPtr chosen =
        root->add("chosen", vorParameterPtr(new vorParameterSharedList(tool_map("", 0))));
    vorParameterPtr t2 = root["tools[1]"];
    eval(root, "add_last(chosen; tools[1])");
    eval(root, "add_first(chosen; tools[2])");
    EXPECT_EQ(root["chosen[1]"].get(), t2.get());
    EXPECT_EQ(eval(root, "add_last(chosen; 5)")->subtype(), ERR_UNKNOWN);

    vorParameterPtr sorted = eval(root, "sort(chosen; '-diameter')");
    EXPECT_EQ(sorted->subtype(), SUB_SHARED_LIST);
    EXPECT_EQ(sorted["[0]"].get(), t2.get());
    // Removing from a shared list leaves the member in its own list.
    EXPECT_EQ(eval(root, "remove_last(chosen)").get(), t2.get());
    EXPECT_EQ(t2->parent(), root["tools"].get());
}

TEST(LibLists, FilterAndSortTreatFailingItemsAsDocumented) {
    vorParameterPtr root = lists_tree();
    vorParameterPtr tools = root["tools"];
    tools["[2]"]->remove("diameter"); // T3 has no diameter now
    vorParameterPtr odd = tool_map("T5", 4);
    odd->remove("diameter");
    odd->add("diameter", text("wide"));
    tools->add(vorParameterKey(), odd);

    EXPECT_EQ(shown(root, "extract(filter(tools; 'diameter - 5 > 0'); 'name')"), "{T1; T2; T4}");
    // Numbers first, then texts, then the failures in their own order; the
    // equal keys of T2 and T4 keep theirs.
    EXPECT_EQ(shown(root, "extract(sort(tools; 'diameter'); 'name')"), "{T1; T2; T4; T5; T3}");
    EXPECT_EQ(eval(root, "sort(tools; 'nothing')")->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(eval(root, "filter(tools; 'diameter >')")->subtype(), ERR_SYNTAX);
    EXPECT_EQ(shown(root, "filter({}; 'x')"), "{}");

    // A list's result keeps the element type and copies of the items.
    vorParameterPtr sorted = eval(root, "sort(tools; 'name')");
    EXPECT_EQ(sorted->subtype(), SUB_LIST);
    EXPECT_NE(sorted["[0]"].get(), tools["[0]"].get());
    EXPECT_EQ(sorted["[0].diameter"]->get_double(), 6);
}

TEST(LibLists, SetFunctionsAgreeWithMemberAndBadArgumentsGiveErrorValues) {
    // Items close to each other around the tolerance, texts, and small
    // arrays and maps of them; the set functions must find exactly the
    // equalities that member() finds by looking at every item.
    std::mt19937 random(13);
    const double tol = vorParameterNumeric::comparison_tol();
    auto random_item = [&]() -> vorParameterPtr {
        const int pick = static_cast<int>(random() % 10);
        const double value = static_cast<double>(random() % 20) * tol * 0.7;
        if (pick < 5)
            return real(value);
        if (pick < 7)
            return text(std::to_string(random() % 6).c_str());
        if (pick < 9) {
            vorParameterPtr array(new vorParameterArray());
            array->add(vorParameterKey(), real(value));
            array->add(vorParameterKey(), text(pick == 7 ? "a" : "b"));
            return array;
        }
        return tool_map(random() % 2 ? "x" : "y", value);
    };
    for (int round = 0; round < 20; ++round) {
        vorParameterPtr first(new vorParameterArray());
        vorParameterPtr second(new vorParameterArray());
        for (int i = 0; i < 60; ++i)
            first->add(vorParameterKey(), random_item());
        for (int i = 0; i < 40; ++i)
            second->add(vorParameterKey(), random_item());

        // Brute force: an item is kept when no kept item equals it.
        vorParameterPtr kept(new vorParameterArray());
        vorParameterPtr common(new vorParameterArray());
        for (const vorParameterPtr& item : static_cast<vorParameterArray&>(*first).elements()) {
            if (vorParameterLib::member(arguments({kept, item}))->get_int())
                continue;
            kept->add(vorParameterKey(), item.copy());
            if (vorParameterLib::member(arguments({second, item}))->get_int())
                common->add(vorParameterKey(), item.copy());
        }
        const int duplicates = first->size() - kept->size();
        EXPECT_EQ(shown(vorParameterLib::intersection(arguments({first, second}))), shown(common));
        EXPECT_EQ(vorParameterLib::subtract(arguments({first, second}))->size(),
                  kept->size() - common->size());
        EXPECT_EQ(vorParameterLib::remove_duplicates(arguments({first}))->get_int(), duplicates);
        EXPECT_EQ(shown(first), shown(kept));
    }

    vorParameterPtr root = lists_tree();
    vorParameterPtr list = root["passes"];
    vorParameterPtr error = vorParameterError::create(ERR_DOMAIN);
    const vorParameterLibFn two_lists[] = {vorParameterLib::set_union, vorParameterLib::subtract,
                                           vorParameterLib::intersection};
    for (vorParameterLibFn fn : two_lists) {
        EXPECT_EQ(fn(arguments({list, error}))->subtype(), ERR_INVALID_ARGUMENTS);
        EXPECT_EQ(fn(arguments({list}))->subtype(), ERR_INVALID_ARGUMENTS);
        EXPECT_EQ(fn(arguments({list, real(1)}))->subtype(), ERR_INVALID_ARGUMENTS);
    }
    const vorParameterLibFn list_and_item[] = {vorParameterLib::add_first,
                                               vorParameterLib::add_last, vorParameterLib::member,
                                               vorParameterLib::remove};
    for (vorParameterLibFn fn : list_and_item) {
        EXPECT_EQ(fn(arguments({list, error}))->subtype(), ERR_INVALID_ARGUMENTS);
        EXPECT_EQ(fn(arguments({error, real(1)}))->subtype(), ERR_INVALID_ARGUMENTS);
        EXPECT_EQ(fn(arguments({list, real(1), real(1)}))->subtype(), ERR_INVALID_ARGUMENTS);
    }
    const vorParameterLibFn one_list[] = {
        vorParameterLib::remove_first,      vorParameterLib::remove_last,
        vorParameterLib::remove_duplicates, vorParameterLib::is_empty,
        vorParameterLibFunctions::reverse,  vorParameterLibFunctions::sort};
    for (vorParameterLibFn fn : one_list) {
        EXPECT_EQ(fn(arguments({error}))->subtype(), ERR_INVALID_ARGUMENTS);
        EXPECT_EQ(fn(arguments({}))->subtype(), ERR_INVALID_ARGUMENTS);
    }
    EXPECT_EQ(vorParameterLib::get_typename(arguments({error}))->subtype(), ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(vorParameterLibFunctions::fill(arguments({real(2), error}))->subtype(),
              ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(vorParameterLibFunctions::fill(arguments({real(2e6), real(1)}))->subtype(),
              ERR_DOMAIN);
    // The list is left as it was by every refused call.
    EXPECT_EQ(shown(list), "{1; 2; 3}");
}
