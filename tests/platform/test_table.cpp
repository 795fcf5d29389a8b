// The insertion-ordered hash tables under maps, the function table and the
// update tracker.
#include "../support/prelude.h"

#include <algorithm>
#include <random>
#include <unordered_map>

namespace {

std::vector<std::string> keys_in_order(const coTable<utString, int>& table) {
    std::vector<std::string> keys;
    for (const auto& [key, value] : table)
        keys.push_back(key.str());
    return keys;
}

} // namespace

TEST(OrderedTable, TablesAndSetsKeepInsertionOrderThroughErasureAndPacking) {
    coTable<utString, int> table;
    for (int i = 0; i < 6; ++i)
        table.set(utString(("k" + std::to_string(i)).c_str()), i);
    EXPECT_TRUE(table.erase("k1"));
    EXPECT_FALSE(table.erase("k1"));
    // Setting an existing key keeps its place; an erased key comes back last.
    table.set("k3", 30);
    table.set("k1", 10);
    EXPECT_EQ(keys_in_order(table), (std::vector<std::string>{"k0", "k2", "k3", "k4", "k5", "k1"}));
    EXPECT_EQ(*table.find("k3"), 30);

    // Erasing all but the last packs the holes away; what is left is intact.
    for (const char* key : {"k0", "k2", "k3", "k4", "k5"})
        table.erase(key);
    EXPECT_EQ(keys_in_order(table), (std::vector<std::string>{"k1"}));
    EXPECT_EQ(table.size(), 1u);
    table.erase("k1");
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.begin(), table.end());

    // Pointers hash to multiples of their alignment; they must still spread.
    std::vector<double> storage(3000);
    coSet<const double*> set;
    for (const double& d : storage)
        EXPECT_TRUE(set.insert(&d));
    EXPECT_FALSE(set.insert(&storage[7]));
    for (std::size_t i = 0; i < storage.size(); i += 2)
        set.erase(&storage[i]);
    const std::vector<const double*> left(set.begin(), set.end());
    ASSERT_EQ(left.size(), 1500u);
    for (std::size_t i = 0; i < left.size(); ++i)
        EXPECT_EQ(left[i], &storage[2 * i + 1]);
}

// Random insertions and erasures checked against a plain model: every probe
// run must stay reachable after the backward shifts of erasure, and the order
// must survive the packing of holes.
TEST(OrderedTable, AgreesWithAModelUnderRandomChurn) {
    coTable<utString, int> table;
    std::vector<std::string> order;
    std::unordered_map<std::string, int> values;
    std::mt19937 random(12345);
    for (int step = 0; step < 20000; ++step) {
        const std::string key = "n" + std::to_string(random() % 500);
        const int value = static_cast<int>(random() % 1000);
        if (random() % 3 == 0) {
            EXPECT_EQ(table.erase(utString(key.c_str())), values.erase(key) == 1);
            order.erase(std::remove(order.begin(), order.end(), key), order.end());
        } else {
            if (values.count(key) == 0)
                order.push_back(key);
            values[key] = value;
            table.set(utString(key.c_str()), value);
        }
    }
    ASSERT_EQ(keys_in_order(table), order);
    for (const auto& [key, value] : values) {
        ASSERT_NE(table.find(utString(key.c_str())), nullptr) << key;
        EXPECT_EQ(*table.find(utString(key.c_str())), value);
    }
    EXPECT_FALSE(table.contains("absent"));
}

