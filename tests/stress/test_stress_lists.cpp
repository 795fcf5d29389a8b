// The list functions on a million items: sort and filter through their
// expression, remove_duplicates and the set functions through the index of
// equal items. Sized so that a quadratic path would not finish within the
// test's timeout.
#include "../support/prelude.h"

namespace {

constexpr int kItems = 1000000;

/// A root holding a list "L" of kItems numbers, i % 1000 scrambled, and a
/// list "S" of their texts.
vorParameterPtr root_with_lists() {
    vorParameterPtr root(new vorParameterLibRoot("Stress"));
    vorParameterPtr numbers =
        root->add("L", vorParameterPtr(new vorParameterList(vorParameterPtr(
                           new vorParameterNumeric(SUB_REAL, vorDimensions(), 0.0)))));
    vorParameterPtr texts = root->add("S", vorParameterPtr(new vorParameterList(text(""))));
    numbers->set_int(kItems);
    texts->set_int(kItems);
    auto& n = static_cast<vorParameterArray&>(*numbers);
    auto& s = static_cast<vorParameterArray&>(*texts);
    for (int i = 0; i < kItems; ++i) {
        const long long value = (i * 7919LL) % 1000;
        n.at(i)->set_double(value);
        s.at(i)->set_string(utString(("t" + std::to_string(value)).c_str()));
    }
    return root;
}

} // namespace

TEST(StressLists, SortFilterDuplicatesAndSetsOfAMillionItems) {
    vorParameterPtr root = root_with_lists();
    vorParameterPtr sorted = eval(root, "sort(L; '-this')");
    ASSERT_EQ(sorted->size(), kItems);
    EXPECT_EQ(sorted["[0]"]->get_double(), 999);
    EXPECT_EQ(sorted["[999999]"]->get_double(), 0);

    vorParameterPtr chosen = eval(root, "filter(L; 'this < 10')");
    EXPECT_EQ(chosen->size(), kItems / 100);

    EXPECT_EQ(eval(root, "size(set_union(L; S))")->get_int(), 2000);
    EXPECT_EQ(eval(root, "size(intersection(L; L))")->get_int(), 1000);
    EXPECT_EQ(eval(root, "size(subtract(S; {'t1'}))")->get_int(), 999);
    EXPECT_EQ(eval(root, "remove_duplicates(L)")->get_int(), kItems - 1000);
    EXPECT_EQ(root["L"]->size(), 1000);
    EXPECT_EQ(eval(root, "remove_duplicates(S)")->get_int(), kItems - 1000);
}
