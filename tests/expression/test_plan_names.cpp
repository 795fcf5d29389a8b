// The names of a compiled expression keep their resolution between reads:
// every change of the tree that could move a name must be seen on the next
// read, exactly as a fresh lookup would see it. Plain arithmetic runs on
// doubles alone while its reads can have no effect: anything that makes a
// read observable (a callback, a range, a host's function, the nesting
// limit) must be honoured as the interpreter honours it.

#include "../support/prelude.h"

namespace {

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

vorParameterPtr answer_42(const vorParameterPtr&) {
    return real(42);
}

/// How `p` evaluates, compiled or scanned: its type, subtype and text.
std::string evaluated(const vorParameterPtr& p, bool compiled) {
    const bool previous = vorEvaluator::set_compiled(compiled);
    vorParameterPtr result = p->evaluate();
    vorEvaluator::set_compiled(previous);
    return std::to_string(result->type()) + "/" + std::to_string(result->subtype()) + " " +
           result->get_string().str();
}

} // namespace

TEST(CompiledNames, FollowEveryChangeOfTheTreeAndAskHostsEveryTime) {
    vorParameterLibRoot root("job");
    root.add("a", real(3));
    root.add("b", real(4));
    vorParameterPtr inner = root.add("inner", map());
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
    vorParameterPtr ref = root.add("r", reference("a"));
    x->set_string("r * 10");
    EXPECT_EQ(read(x), 50);
    static_cast<vorParameterRef&>(*ref).set_ref_string("b");
    EXPECT_EQ(read(x), 90);

    // A host may answer lookups as it likes: it is asked every time.
    vorParameterPtr host = root.add("host", vorParameterPtr(new ShiftingMap()));
    vorParameterPtr shifted = host->add("x", real(0));
    shifted->set_string("shift * 10");
    EXPECT_EQ(shifted->get_double(), 10);
    EXPECT_EQ(shifted->get_double(), 10);
    EXPECT_EQ(shifted->get_double(), 10);
    EXPECT_EQ(shifted->get_double(), 20) << "the fourth lookup answers another member";
}

TEST(CompiledArithmetic, HonoursWhateverMakesAReadObservable) {
    vorParameterLibRoot root("job");
    vorParameterPtr a = root.add("a", real(3));
    root.add("b", real(4));
    vorParameterPtr x = root.add("x", real(0));
    x->set_string("a*2+b");
    EXPECT_EQ(read(x), 10);

    a->set_onread_callback(count_read);
    g_reads = 0;
    EXPECT_EQ(read(x), 10);
    EXPECT_EQ(g_reads, 4) << "three compiled reads and one scanned";
    a->set_onread_callback(nullptr);

    static_cast<vorParameterNumeric&>(*a).set_range(vorRange(0, 2));
    EXPECT_EQ(read(x), 8) << "a is read through its range";
    static_cast<vorParameterNumeric&>(*a).set_range(vorRange());

    // A host's own "sqrt" is called, whatever the library computed before.
    x->set_string("sqrt(b) + 1");
    EXPECT_EQ(read(x), 3);
    EXPECT_EQ(x->get_double(), 3);
    const vorParameterLibEntry saved = *vorParameterLib::find_entry("sqrt");
    vorParameterLib::add_entry("sqrt", answer_42, saved.desc);
    EXPECT_EQ(x->get_double(), 43);
    vorParameterLib::add_entry("sqrt", saved.fn, saved.desc);
    EXPECT_EQ(read(x), 3);

    // The angle unit is read at each call.
    x->set_string("sin(a * 30) * 2");
    EXPECT_NEAR(read(x), 2, 1e-12);
    vorParameterLib::set_angle_unit(GI_RADIANS);
    EXPECT_NEAR(read(x), 2 * std::sin(90.0), 1e-12);
    vorParameterLib::set_angle_unit(GI_DEGREES);

    // Failures, kinds and dimensions are the interpreter's.
    for (const char* text : {"a/(b-4)", "sqrt(-a) * 2", "-a mm * 2", "atan2(a; b) + 0",
                             "(a < b) * 1", "a ^ 0.5 - 1", "compare(a; 3.01; 0.1) + 0"}) {
        x->set_string(text);
        read(x);
        EXPECT_EQ(evaluated(x, true), evaluated(x, false)) << text;
    }
}

TEST(CompiledArithmetic, MeetsTheNestingLimitAndSpendsTheBudgetAsTheInterpreterDoes) {
    vorParameterLibRoot root("job");
    root.add("p0", real(1));
    std::vector<vorParameterPtr> chain;
    for (int i = 1; i <= 260; ++i) {
        chain.push_back(root.add(("p" + std::to_string(i)).c_str(), real(0)));
        chain.back()->set_string(("p" + std::to_string(i - 1) + " + 1").c_str());
    }
    int deepest_valid = 0;
    for (const vorParameterPtr& p : chain) {
        const std::string scanned = evaluated(p, false);
        for (int i = 0; i < 3; ++i)
            ASSERT_EQ(evaluated(p, true), scanned) << p->get_name().str();
        if (p->is_valid())
            deepest_valid = static_cast<int>(&p - chain.data()) + 1;
    }
    EXPECT_GT(deepest_valid, 50);
    EXPECT_LT(deepest_valid, 260) << "the chain reaches past the limit";

    // Each level reads the one below twice: what the read memo may keep (not
    // values computed through a function call) decides how many evaluations
    // the read spends.
    root.add("a", real(4));
    for (const char* text : {"sqrt(a) + 1", "a * 2 + 1"}) {
        root.add("q0", real(0))->set_string(text);
        for (int i = 1; i <= 4; ++i)
            root.add(("q" + std::to_string(i)).c_str(), real(0))
                ->set_string(
                    ("q" + std::to_string(i - 1) + " + q" + std::to_string(i - 1)).c_str());
        const vorParameterPtr top = root["q4"];
        for (long budget = 1; budget <= 40; ++budget) {
            const long previous = vorEvaluator::set_max_evaluations(budget);
            const std::string scanned = evaluated(top, false);
            for (int i = 0; i < 3; ++i)
                EXPECT_EQ(evaluated(top, true), scanned) << text << ", budget " << budget;
            vorEvaluator::set_max_evaluations(previous);
        }
    }
}
