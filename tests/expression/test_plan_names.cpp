// The names of a compiled expression keep their resolution between reads:
// every change of the tree that could move a name must be seen on the next
// read, exactly as a fresh lookup would see it.

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

#include <gtest/gtest.h>

namespace {

vorParameterPtr real(double value) {
    return vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_NONE, value));
}

/// Reads `p` often enough for its text to run compiled, and answers the
/// last read, after checking that the evaluator, scanning the text, agrees.
double read(const vorParameterPtr& p) {
    double value = 0.0;
    for (int i = 0; i < 3; ++i)
        value = p->get_double();
    const bool previous = vorEvaluator::set_compiled(false);
    EXPECT_EQ(p->get_double(), value) << p->get_expr().str();
    vorEvaluator::set_compiled(previous);
    return value;
}

/// A map whose members change without the tree knowing: a host may answer
/// lookups as it likes, so searches through it are never remembered.
class ShiftingMap : public vorParameterMap {
public:
    vorParameterPtr operator[](const vorParameterKey& key) const override {
        if (key.str() == "shift")
            return ++m_reads > 3 ? m_second : m_first;
        return vorParameterMap::operator[](key);
    }
    vorParameterPtr operator[](const vorParameterKey& key) override {
        return static_cast<const ShiftingMap&>(*this)[key];
    }
    vorParameterPtr m_first = real(1);
    vorParameterPtr m_second = real(2);
    mutable int m_reads = 0;
};

} // namespace

TEST(CompiledNames, FollowEveryChangeOfTheTree) {
    vorParameterLibRoot root("job");
    root.add("a", real(3));
    root.add("b", real(4));
    vorParameterPtr inner = root.add("inner", vorParameterPtr(new vorParameterMap()));
    vorParameterPtr x = inner->add("x", real(0));
    x->set_string("a*2+b + sqrt(b)");
    EXPECT_EQ(read(x), 12);

    root["a"]->set_double(5); // a value, not a name, changed
    EXPECT_EQ(read(x), 16);
    inner->add("a", real(100)); // a nearer member now answers "a"
    EXPECT_EQ(read(x), 206);
    inner->remove("a");
    EXPECT_EQ(read(x), 16);
    vorParameterPtr moved = root.remove("b"); // gone: the name is unknown
    EXPECT_EQ(read(x), 0);
    EXPECT_FALSE(x->is_valid());
    root.add("b", real(9));
    EXPECT_EQ(read(x), 22);

    // A member that shadows a library function only where functions are
    // not looked for.
    root.add("sqrt", real(-1));
    EXPECT_EQ(read(x), 22);

    // References: the name stands for the reference, which follows its
    // target as it changes.
    vorParameterPtr ref = root.add("r", vorParameterPtr(new vorParameterRef("a")));
    x->set_string("r * 10");
    EXPECT_EQ(read(x), 50);
    static_cast<vorParameterRef&>(*ref).set_ref_string("b");
    EXPECT_EQ(read(x), 90);
}

TEST(CompiledNames, HostLookupsAreAskedEveryTime) {
    vorParameterLibRoot root("job");
    vorParameterPtr host = root.add("host", vorParameterPtr(new ShiftingMap()));
    vorParameterPtr x = host->add("x", real(0));
    x->set_string("shift * 10");
    EXPECT_EQ(x->get_double(), 10);
    EXPECT_EQ(x->get_double(), 10);
    EXPECT_EQ(x->get_double(), 10);
    EXPECT_EQ(x->get_double(), 20) << "the fourth lookup answers another member";
}
