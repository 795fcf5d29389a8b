// Arrays and temporary arrays: keys, placement, ownership, operators,
// slicing and the names of temporary arrays.

#include "container_test_helpers.h"

#include "../support/prelude.h"

#include <climits>

using namespace container_test;

TEST(Array, KeysThatAreNoElementAreInvalidNames) {
    vorParameterPtr array = array_of({10, 20, 30});
    EXPECT_EQ(array["0"]->get_double() + array["[ 1 ]"]->get_double(), 30);
    for (const char* bad : {"-1", "3", "99999999999", "x", "", "[1x]"})
        EXPECT_EQ(array[bad]->subtype(), ERR_INVALID_NAME) << bad;

    // The rest of a key goes to the element: an error for a number, a path
    // into a nested container.
    EXPECT_TRUE(array["1.x"]->is_error());
    vorParameterPtr inner = array->add(vorParameterKey(), array_of({7, 8}));
    EXPECT_EQ(array["3[1]"]->get_double(), 8);
    EXPECT_EQ(static_cast<const vorParameter&>(*array)["[3].0"]->get_double(), 7);
}

TEST(Array, AddPlacesLinksAndRefuses) {
    vorParameterPtr array = array_of({1, 2, 3});
    vorParameterPtr front = array->add("0", number(0));
    vorParameterPtr back = array->add("-1", number(4));
    array->add("5", number(5));
    EXPECT_EQ(values_of(array), (std::vector<double>{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(front->parent(), array.get());
    for (const char* bad : {"7", "-2", "name"})
        EXPECT_EQ(array->add(bad, number(9))->subtype(), ERR_INVALID_NAME) << bad;

    // The array itself or an ancestor would make the tree own itself.
    vorParameterPtr inner = array->add(vorParameterKey(), array_of({}));
    EXPECT_EQ(array->add(vorParameterKey(), array)->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(inner->add(vorParameterKey(), array)->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(array->size(), 7);

    EXPECT_EQ(array->remove("[0]").get(), front.get());
    EXPECT_EQ(front->parent(), nullptr);
    EXPECT_EQ(array->remove("7")->subtype(), ERR_INVALID_NAME);

    array->lock(1);
    EXPECT_EQ(array->add(vorParameterKey(), number(1))->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(array->remove("0")->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(array->size(), 6);

    // An element that outlives its array keeps no pointer to it.
    array.reset();
    EXPECT_EQ(back->parent(), nullptr);
}

TEST(Array, CopiesCloneAndParentTheElements) {
    vorParameterMap map;
    vorParameterPtr array = map.add("values", array_of({1, 2}));
    vorParameterPtr copy = array.copy();
    EXPECT_NE(copy["0"].get(), array["0"].get());
    EXPECT_EQ(copy["0"]->parent(), copy.get());

    // Copying a value replaces the elements but keeps the array's own name.
    array->copy_value_from(*array_of({7, 8, 9}));
    EXPECT_EQ(values_of(array), (std::vector<double>{7, 8, 9}));
    EXPECT_EQ(array->get_name(), "values");
    EXPECT_EQ(array["2"]->parent(), array.get());

    // A source that lives inside the array survives the copy.
    vorParameterPtr nested = array_of({});
    nested->add(vorParameterKey(), array_of({4, 5}));
    nested->copy_value_from(*nested["0"]);
    EXPECT_EQ(values_of(nested), (std::vector<double>{4, 5}));
}

TEST(Array, OperatorsValidityAndPrint) {
    vorParameterPtr a = array_of({1, 2});
    vorParameterPtr joined = a->operate_binary("+", array_of({3}));
    EXPECT_EQ(values_of(joined), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(a->size(), 2);
    EXPECT_EQ(a->operate_binary("+", number(3))->subtype(), ERR_TYPE);

    EXPECT_EQ(a->operate_binary("==", array_of({1, 2, 3}))->get_int(), 0);
    EXPECT_EQ(a->operate_binary("!=", array_of({1, 5}))->get_int(), 1);
    EXPECT_EQ(array_of({})->operate_binary("==", array_of({}))->get_int(), 1);
    EXPECT_EQ(a->operate_binary("==", number(1))->get_int(), 0);
    vorParameterPtr broken = array_of({0});
    broken["0"]->set_string("no_such_name");
    EXPECT_EQ(broken->operate_binary("==", broken)->get_int(), 0)
        << "elements that cannot be compared differ";

    EXPECT_EQ(values_of(a->operate_prefix("-")), (std::vector<double>{-1, -2}));
    EXPECT_TRUE(a->operate_prefix("nonsense")["0"]->is_error());

    // Through the expression language.
    vorParameterMap scope;
    scope.add("a", a);
    vorEvaluator eval(&scope);
    EXPECT_EQ(eval.evaluate("a == {1;2}")->get_int(), 1);
    EXPECT_EQ(eval.evaluate("(a + {3; 4})[3]")->get_double(), 4);

    // Validity and print skip inactive elements.
    vorParameterPtr array = array_of({1});
    vorParameterPtr dangling = array->add(vorParameterKey(), number(0));
    dangling->set_string("no_such_name + 1");
    EXPECT_TRUE(array->print(0).starts_with("(ARRAY !) \n\t[0] "));
    dangling->set_active("0");
    EXPECT_TRUE(array->is_valid()) << "inactive elements do not count";
    EXPECT_FALSE(array->print(0).contains("[1] "));
    EXPECT_TRUE(array->print(-5).starts_with("(ARRAY) \n\t[0] "));
}

TEST(Array, SliceKeepsARangeOfClones) {
    vorParameterPtr five = array_of({0, 1, 2, 3, 4});
    vorParameterArray& array = static_cast<vorParameterArray&>(*five);
    EXPECT_EQ(values_of(array.slice(1, 3)), (std::vector<double>{1, 2}));
    EXPECT_EQ(values_of(array.slice(0, 9)), (std::vector<double>{0, 1, 2, 3, 4}));
    EXPECT_EQ(array.slice(3, 1)->size() + array.slice(INT_MAX, INT_MIN)->size(), 0);
    EXPECT_EQ(array.slice(INT_MIN, INT_MAX)->size(), 5);
    vorParameterMap owner;
    owner.add("five", five);
    vorParameterPtr part = array.slice(1, 3);
    EXPECT_EQ(part->parent(), nullptr);
    EXPECT_EQ(part["0"]->parent(), part.get());
}

TEST(TempArray, HoldsWithoutParentingByNameOrPosition) {
    vorParameterMap owner;
    vorParameterPtr radius = owner.add("radius", number(3));
    vorParameterPtr temp(new vorParameterTempArray());
    EXPECT_EQ(temp->add("a", radius).get(), radius.get());
    EXPECT_EQ(radius->parent(), &owner);
    EXPECT_EQ(temp->add("A", number(1))->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(temp->add("0", number(1))->subtype(), ERR_INVALID_NAME);
    temp->add("b", number(4));
    EXPECT_EQ(temp["B"]->get_double(), 4);
    EXPECT_EQ(temp["[0]"].get(), radius.get());
    EXPECT_EQ(temp["_keys"]["1"]->get_string(), "b");
    vorParameterPtr outer(new vorParameterTempArray());
    outer->add(vorParameterKey(), temp);
    EXPECT_EQ(temp->add(vorParameterKey(), outer)->subtype(), ERR_UNKNOWN) << "a cycle";

    vorParameterPtr copy = temp.copy();
    EXPECT_EQ(copy["a"].get(), radius.get()) << "a copy holds the same nodes and names";
    EXPECT_EQ(temp->remove("A").get(), radius.get());
    EXPECT_EQ(static_cast<vorParameterVector&>(*temp).get_access_names(), "b");
    EXPECT_EQ(temp["_keys"]->size(), 1);
    EXPECT_EQ(temp->remove("a")->subtype(), ERR_INVALID_NAME);
    temp.reset();
    copy.reset();
    EXPECT_EQ(radius->parent(), &owner);

    // Unnamed, index keys place without range errors.
    temp = vorParameterPtr(new vorParameterTempArray());
    temp->add(vorParameterKey(), number(2));
    temp->add(vorParameterKey(0, ""), number(1));
    temp->add("99", number(4));
    temp->add("-7", number(0));
    temp->add("-1", number(5));
    EXPECT_EQ(values_of(temp), (std::vector<double>{0, 1, 2, 4, 5}));
    temp->copy_value_from(*vector_of(2, VECTOR_ACCESS_XYZ));
    EXPECT_EQ(temp["y"].get(), temp["1"].get()) << "takes a vector's elements and names";

    // Slicing keeps names and elements in step.
    vorParameterPtr named(new vorParameterTempArray());
    for (const char* name : {"p", "q", "r"})
        named->add(name, number(name[0]));
    vorParameterPtr part = static_cast<vorParameterArray&>(*named).slice(1, 2);
    EXPECT_EQ(static_cast<vorParameterVector&>(*part).get_access_names(), "q");
    EXPECT_EQ(part["q"]->get_double(), 'q');
}
