// Lists and shared lists: growth on lookup, what add() stores, resizing,
// copying values, and the checks of shared lists.

#include "container_test_helpers.h"

#include "../support/prelude.h"

using namespace container_test;

namespace {

vorParameterPtr integer(int v) {
    return number(v, SUB_INT);
}
vorParameterPtr list_of(vorParameterPtr prototype) {
    return vorParameterPtr(new vorParameterList(std::move(prototype)));
}

} // namespace

TEST(List, LookupOnePastTheEndAppends) {
    vorParameterPtr list = list_of(integer(7));
    list->set_int(3);
    vorParameterPtr fourth = list["3"];
    EXPECT_EQ(list->size(), 4);
    EXPECT_EQ(fourth->get_int(), 7);
    EXPECT_EQ(list["5"]->subtype(), ERR_INVALID_NAME);
    list["-1"];
    EXPECT_EQ(list->size(), 5);

    // Expressions read through the const lookup, and a path continues into
    // the new element.
    vorParameterMap scope;
    vorParameterPtr maps = scope.add("maps", list_of(map()));
    EXPECT_EQ(vorEvaluator(&scope).evaluate("maps[0]")->type(), TYPE_MAP);
    EXPECT_EQ(maps["-1.x"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(maps->size(), 2);

    list->lock(1);
    EXPECT_EQ(list["-1"]->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(list->size(), 5);
}

TEST(List, ElementTypeDecidesWhatIsAdded) {
    vorParameterPtr ints = list_of(integer(0));
    vorParameterPtr added = ints->add(vorParameterKey(), text("5"));
    EXPECT_EQ(added->subtype(), SUB_INT);
    EXPECT_EQ(added->get_int(), 5);
    EXPECT_EQ(ints->add("0", vorParameterError::create(ERR_TYPE))->get_int(), 0);

    vorParameterPtr arrays = list_of(list_of(integer(1)));
    vorParameterPtr given = list_of(integer(2));
    given->set_int(4);
    EXPECT_EQ(arrays->add(vorParameterKey(), given)->size(), 0) << "a fresh clone";

    // A map element type that is not fixed takes clones of what it is given.
    auto* open = new vorParameterMap();
    open->not_fixed();
    vorParameterPtr maps = list_of(vorParameterPtr(open));
    vorParameterPtr tool(new vorParameterMap());
    tool->add("diameter", integer(6));
    vorParameterPtr copy = maps->add(vorParameterKey(), tool);
    EXPECT_NE(copy.get(), tool.get());
    EXPECT_EQ(copy["diameter"]->get_int(), 6);
    EXPECT_EQ(maps->add(vorParameterKey(), vorParameterError::create(ERR_TYPE))->size(), 0);

    // A list can never hold itself: what it stores is always a new node.
    EXPECT_NE(arrays->add(vorParameterKey(), arrays).get(), arrays.get());

    vorParameterPtr broken = list_of(vorParameterPtr());
    EXPECT_EQ(broken->add(vorParameterKey(), integer(1))->subtype(), ERR_UNKNOWN);
    EXPECT_TRUE(broken["-1"]->is_error());
    broken->set_int(3);
    EXPECT_EQ(broken->size(), 0);
}

TEST(List, SetIntResizesCopiesFollowTheSourceAndSharedListsHoldMembers) {
    vorParameterPtr list = list_of(integer(9));
    list->set_int(2);
    list["0"]->set_int(1);
    list->set_int(5);
    EXPECT_EQ(list->get_int(), 5);
    EXPECT_EQ(list["4"]->get_int(), 9);
    list->set_int(1);
    EXPECT_EQ(list["0"]->get_int(), 1);
    list->set_int(-4);
    EXPECT_EQ(list->size(), 0);

    vorParameterPtr source(new vorParameterArray());
    source->add(vorParameterKey(), text("3"));
    source->add(vorParameterKey(), text("4"));
    list->copy_value_from(*source);
    ASSERT_EQ(list->size(), 2);
    EXPECT_EQ(list["1"]->get_int(), 4);
    EXPECT_EQ(list["1"]->subtype(), SUB_INT);

    vorParameterPtr copy = list.copy();
    EXPECT_EQ(static_cast<vorParameterList&>(*copy).get_element_type().get_int(), 9);

    vorParameterPtr names = vorParameterList::of_strings({"a", "B"});
    EXPECT_EQ(names["1"]->get_string(), "B");
    EXPECT_EQ(names["-1"]->type(), TYPE_STRING);

    // A shared list holds parented members of its type only.
    vorParameterMap tools;
    vorParameterPtr t1 = tools.add("t1", integer(1));
    vorParameterPtr label = tools.add("label", text("x"));
    vorParameterPtr shared(new vorParameterSharedList(integer(0)));
    EXPECT_EQ(shared->add(vorParameterKey(), t1).get(), t1.get());
    EXPECT_EQ(t1->parent(), &tools);
    EXPECT_EQ(shared->add(vorParameterKey(), integer(2))->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(shared->add(vorParameterKey(), label)->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(shared->add("0.x", t1)->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(shared->add("0", vorParameterError::create(ERR_TYPE))->subtype(), SUB_INT);
    EXPECT_EQ(shared["2"]->type(), TYPE_NUMERIC);

    vorParameterPtr shared_copy = shared.copy();
    EXPECT_EQ(shared_copy["1"].get(), t1.get());
    EXPECT_EQ(shared->remove("1").get(), t1.get());
    shared.reset();
    shared_copy.reset();
    EXPECT_EQ(t1->parent(), &tools);

    vorParameterPtr lists(new vorParameterSharedList(list_of(integer(0))));
    tools.add("lists", lists);
    EXPECT_EQ(lists->add(vorParameterKey(), lists)->subtype(), ERR_UNKNOWN);
}
