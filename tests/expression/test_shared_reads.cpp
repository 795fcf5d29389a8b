// Work shared within one read: a number reached by several paths of one read
// is evaluated once, and the answer is always the one a fresh read gives.

#include "../support/prelude.h"

namespace {

utString level(int i) {
    return utString("n" + std::to_string(i));
}

/// n0 = 1 and n<i> = n<i-1> + n<i-1>: every level reads the one below twice.
vorParameterPtr doubling_chain(int depth) {
    vorParameterPtr root(new vorParameterRoot("Tool", 0, "T1"));
    root->add("n0", numeric("1"));
    for (int i = 1; i <= depth; ++i)
        root->add(level(i), numeric(level(i - 1) + " + " + level(i - 1)));
    return root;
}

} // namespace

TEST(SharedReads, ChangesAreSeenAndCallbacksRunAsOftenAsEver) {
    vorParameterPtr root = doubling_chain(30);
    EXPECT_EQ(root["n30"]->get_double(), 1073741824.0);

    root["n0"]->set_double(2);
    EXPECT_EQ(root["n30"]->get_double(), 2147483648.0) << "a new read starts afresh";

    // Replacing a member the chain reads, by removing and adding it.
    root->remove("n29");
    root->add("n29", numeric("5"));
    EXPECT_EQ(root["n30"]->get_double(), 10);

    // A value that two paths read, changed by a callback on every read:
    // the second path reads what a second read on its own would.
    vorParameterPtr flip = root->add("flip", numeric("1"));
    vorParameterPtr reader = root->add("reader", numeric("flip + 0"));
    root->add("both", numeric("reader * 10 + reader"));
    flip->set_onread_callback([](const vorParameter* self) {
        auto* value = static_cast<vorParameterNumeric*>(const_cast<vorParameter*>(self));
        value->set_double(value->get_value() == "1" ? 2 : 1);
    });
    const double once = reader->get_double();
    const double twice = reader->get_double();
    flip->set_string("1");
    EXPECT_EQ(root["both"]->get_double(), once * 10 + twice);

    // Callbacks run as often as ever.
    vorParameterPtr chain = doubling_chain(10);
    chain["n0"]->set_string("1 + 0");
    chain["n0"]->set_onread_callback(count_read);

    g_reads = 0;
    chain["n1"]->get_double();
    const int per_n1 = g_reads;
    g_reads = 0;
    EXPECT_EQ(chain["n10"]->get_double(), 1024);
    EXPECT_EQ(g_reads, per_n1 * 512) << "n0 has a callback: every path reads it";

    // Without the callback the same chain shares its work, and reads the
    // same value.
    chain["n0"]->set_onread_callback(nullptr);
    EXPECT_EQ(chain["n10"]->get_double(), 1024);
}

TEST(SharedReads, ReusedValuesSpendTheBudgetOnce) {
    // Each level costs its own evaluation and one reuse: a budget of 100
    // reads forty levels, which unshared would take 2^41 evaluations.
    vorParameterPtr root = doubling_chain(40);
    const long previous = vorEvaluator::set_max_evaluations(100);
    EXPECT_EQ(root["n40"]->get_double(), 1099511627776.0);
    vorEvaluator::set_max_evaluations(40);
    EXPECT_EQ(root["n40"]->evaluate()->subtype(), ERR_EXPRESSION);
    vorEvaluator::set_max_evaluations(previous);

    // The copies handed out are values of their own.
    vorParameterPtr a = root["n2"]->evaluate();
    vorParameterPtr b = root["n2"]->evaluate();
    EXPECT_NE(a.get(), b.get());
    EXPECT_EQ(a->get_double(), b->get_double());
}
