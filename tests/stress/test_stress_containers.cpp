// Attacks on the size of containers: maps of a million members added and
// removed by name, lists of the largest size concatenated, and every way of
// growing a list past its limit. Sized so that a quadratic path would not
// finish within the test's timeout.
#include "../support/prelude.h"

namespace {

constexpr int kLimit = vorParameterArray::max_elements;

utString member_name(int i) {
    return utString(("m" + std::to_string(i)).c_str());
}

vorParameterPtr element(const vorParameterPtr& array, int i) {
    return static_cast<const vorParameterArray&>(*array).at(i);
}

/// A root holding a list "L" of `size` numbers 0, 1, 2 ...
vorParameterPtr root_with_list(int size) {
    vorParameterPtr root(new vorParameterRoot("Stress", 0, "stress"));
    vorParameterPtr list =
        root->add(vorParameterKey("L"), vorParameterPtr(new vorParameterList(real(0))));
    list->set_int(size);
    for (int i : {0, size / 2, size - 1})
        element(list, i)->set_double(i);
    return root;
}

} // namespace

TEST(StressContainers, MembersByNameKeepOrderConcatenationIsLinearAndNothingPassesTheLimit) {
    // Large enough that a removal linear in the map's size would take hours,
    // small enough for seconds under the sanitizers.
    constexpr int n = 200000;
    std::vector<vorParameterKey> keys;
    keys.reserve(n);
    for (int i = 0; i < n; ++i)
        keys.emplace_back(member_name(i));
    vorParameterPtr map(new vorParameterMap());
    for (const vorParameterKey& key : keys)
        map->add(key, real(map->size()));
    ASSERT_EQ(map->size(), n);

    // Remove two members of every three, in an order that jumps around the
    // map (7 is prime to n), some of them by another letter case.
    for (int step = 0; step < n; ++step) {
        const int i = static_cast<int>((7LL * step) % n);
        if (i % 3 == 0)
            continue;
        const vorParameterKey key =
            i % 5 == 0 ? vorParameterKey(utString(("M" + std::to_string(i)).c_str()))
                       : keys[static_cast<std::size_t>(i)];
        ASSERT_FALSE(map->remove(key)->is_error()) << i;
    }
    const auto& members = static_cast<const vorParameterMap&>(*map).members();
    ASSERT_EQ(members.size(), static_cast<std::size_t>((n + 2) / 3));
    int expected = 0;
    for (const auto& [name, member] : members) {
        ASSERT_EQ(name, member_name(expected));
        ASSERT_EQ(member->get_double(), expected);
        expected += 3;
    }
    EXPECT_TRUE((*map)[vorParameterKey("m1")]->is_error());
    EXPECT_EQ((*map)[vorParameterKey("M199998")]->get_double(), 199998);

    map->remove_all();
    EXPECT_EQ(map->size(), 0);

    vorParameterPtr root = root_with_list(kLimit / 2);
    vorParameterPtr joined = eval(root, "L+L");
    ASSERT_FALSE(joined->is_error());
    ASSERT_EQ(joined->size(), kLimit);
    EXPECT_EQ(element(joined, kLimit / 2 - 1)->get_double(), kLimit / 2 - 1);
    EXPECT_EQ(element(joined, kLimit / 2 + kLimit / 4)->get_double(), kLimit / 4);
    joined = vorParameterPtr();

    // A long sum stops at the first term that would pass the limit, and the
    // error travels through the remaining terms.
    std::string sum = "L";
    for (int i = 1; i < 200; ++i)
        sum += "+L";
    vorParameterPtr total = eval(root, sum);
    EXPECT_TRUE(total->is_error());

    vorParameterPtr full = root_with_list(kLimit + 5);
    vorParameterPtr list = full->operator[](vorParameterKey("L"));
    ASSERT_EQ(list->size(), kLimit);

    EXPECT_TRUE(eval(full, "L+L")->is_error());
    EXPECT_TRUE(eval(full, "L+{1}")->is_error());
    EXPECT_TRUE(eval(full, "L[-1]")->is_error());
    EXPECT_TRUE(eval(full, "L[" + std::to_string(kLimit) + "]")->is_error());
    EXPECT_EQ(list->add(vorParameterKey(), real(1))->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(list->add(vorParameterKey(0, utString()), real(1))->subtype(), ERR_UNKNOWN);
    EXPECT_EQ((*list)[vorParameterKey(-1, utString())]->subtype(), ERR_UNKNOWN);
    list->set_int(kLimit + 1);
    EXPECT_EQ(list->size(), kLimit);
    // Element-wise operators and copies stay at the size they were given.
    EXPECT_EQ(eval(full, "-L")->size(), kLimit);
    EXPECT_EQ(vorParameterPtr(list->create_new())->size(), kLimit);

    // A full list still shrinks and then grows again.
    list->set_int(kLimit - 1);
    EXPECT_FALSE((*list)[vorParameterKey(-1, utString())]->is_error());
    EXPECT_EQ(list->size(), kLimit);

    // Sharing arrays hold the same limit, named elements included.
    vorParameterPtr temp(new vorParameterTempArray());
    const vorParameterPtr first = element(list, 0);
    for (int i = 0; i < kLimit; ++i)
        temp->add(vorParameterKey(), first);
    EXPECT_EQ(temp->add(vorParameterKey(), first)->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(temp->size(), kLimit);
}
