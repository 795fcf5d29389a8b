// Stripping and mirroring trees 100 000 parameters wide and 100 000 levels
// deep, with reference cycles: a recursive walk would overflow the stack, a
// walk that followed references would never end, and a quadratic one would
// time out.

#include "../support/prelude.h"

namespace {

constexpr int kSize = 100000;

/// A chain of kSize nested maps ("m" inside "m"...), each holding a number
/// "x" with an active expression and mirror mode 1, and a reference back to
/// the top of the chain. Returns the top.
vorParameterPtr make_cyclic_chain() {
    vorParameterPtr top(new vorParameterMap());
    vorParameterPtr map = top;
    for (int i = 0; i < kSize; ++i) {
        vorParameterPtr x = map->add("x", real(i));
        x->set_active("x > 0");
        x->set_mirror_mode(MIRROR_NEGATE);
        map->add("up", reference("^^top"));
        map = map->add("m", vorParameterPtr(new vorParameterMap()));
    }
    return top;
}

/// Clears the references so that the chain's handles can be freed.
void break_cycles(const vorParameterPtr& top) {
    vorParameterIter it(top);
    while (++it)
        if (it()->is_ref())
            it()->parent()->remove("up");
}

} // namespace

TEST(StressUtilities, DeepChainWithCyclesAndWideTreeOfPoints) {
    vorParameterPtr top = make_cyclic_chain();
    vorParameterUtils::remove_active_expressions(*top);
    vorParameterUtils::mirror_parameters(top, giPoint3(), giVector3(1, 0, 0));

    vorParameterIter it(top);
    it.set_leaf_only(1);
    double sum = 0;
    int numbers = 0;
    while (++it) {
        if (it()->type() != TYPE_NUMERIC)
            continue;
        ++numbers;
        sum += it()->get_double();
        if (!it()->get_active_expr().empty())
            ADD_FAILURE() << it.index().str();
    }
    EXPECT_EQ(numbers, kSize);
    EXPECT_DOUBLE_EQ(sum, -double(kSize) * (kSize - 1) / 2) << "each number negated once";
    break_cycles(top);

    vorParameterPtr wide(new vorParameterMap());
    for (int i = 0; i < kSize / 4; ++i) {
        auto* point = new vorParameterVector(3, real(i));
        point->set_mirror_mode(MIRROR_NEGATE);
        wide->add(vorParameterKey("p" + std::to_string(i)), vorParameterPtr(point));
    }
    vorParameterUtils::mirror_parameters(wide, giPoint3(1, 0, 0), giVector3(1, 0, 0));
    giPoint3 last = vorParameterUtils::to_gipoint3(*(*wide)[vorParameterKey("p24999")]);
    EXPECT_DOUBLE_EQ(last.x(), 2 - 24999.0);
    EXPECT_DOUBLE_EQ(last.y(), 24999.0);
}
