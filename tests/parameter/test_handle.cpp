// Handles, the shared errors and the base class's neutral answers.

#include "../support/prelude.h"

#include <atomic>
#include <thread>

TEST(Handle, EmptyHandlesEqualityAndOwners) {
    vorParameterPtr empty;
    EXPECT_TRUE(empty.is_null());
    vorParameter* first = empty.operator->();
    EXPECT_EQ(empty->type(), TYPE_ERROR);
    EXPECT_EQ(empty->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(empty.operator->(), first) << "a second dereference gives the same node";

    const vorParameterPtr also_empty;
    EXPECT_EQ(also_empty.par()->subtype(), ERR_UNKNOWN);
    EXPECT_TRUE(vorParameterPtr().copy()->is_error());

    // Equality is identity, except for the nothing value.
    vorParameterPtr a(new vorParameterString("x"));
    vorParameterPtr b(new vorParameterString("x"));
    EXPECT_TRUE(a == a);
    EXPECT_FALSE(a == b);
    vorParameterPtr unknown_a = vorParameterError::create(ERR_UNKNOWN);
    vorParameterPtr unknown_b = vorParameterPtr().copy();
    EXPECT_NE(unknown_a.get(), unknown_b.get());
    EXPECT_TRUE(unknown_a == unknown_b);
    vorParameterPtr type_a = vorParameterError::create(ERR_TYPE);
    vorParameterPtr type_b = type_a.copy();
    EXPECT_FALSE(type_a == type_b);

    // Owners are counted; extern handles do not own.
    vorParameterPtr owner(new vorParameterString("x"));
    EXPECT_TRUE(owner.unique());
    {
        vorParameterPtr second = owner;
        EXPECT_FALSE(owner.unique());
        vorParameterPtr moved = std::move(second);
        EXPECT_TRUE(second.is_null());
        EXPECT_FALSE(owner.unique());
    }
    EXPECT_TRUE(owner.unique());
    vorParameterPtr view(coPrfExtern(), owner.get());
    EXPECT_TRUE(owner.unique()) << "a non-owning handle is not counted";
    EXPECT_FALSE(view.unique());
}

TEST(Base, NeutralAnswersSharedErrorsRecordsAndDisplayNames) {
    vorParameterPtr s(new vorParameterString("abc"));
    s->set_name("label");
    vorParameterPtr clone = s.copy();
    EXPECT_EQ(clone->ut_dynamic_type().name(), std::string("vorParameterString"));
    s->set_desc("shared");
    EXPECT_EQ(clone->get_desc(), "shared") << "copies share the descriptive record";
    EXPECT_EQ(clone->get_name(), "label");
    EXPECT_EQ(s->get_typename(), "Invalid typename");
    EXPECT_EQ(s->operate_prefix("-")->subtype(), ERR_TYPE);
    EXPECT_EQ((*s)[vorParameterKey("x")]->subtype(), ERR_TYPE);
    EXPECT_EQ(s->add(vorParameterKey("x"), clone)->subtype(), ERR_TYPE);
    EXPECT_EQ(s.par(), s.get());
    EXPECT_FALSE(s->is_ref());

    vorParameterPtr integer(new vorParameterNumeric(SUB_INT, DIM_NONE, 3));
    integer->set_measure_mode(MEASURE_RELATIVE);
    EXPECT_EQ(integer->get_measure_mode(), MEASURE_NONE) << "only reals and angles take a mode";
    vorParameterPtr real(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 3));
    real->set_measure_mode(MEASURE_RELATIVE);
    EXPECT_EQ(real->get_measure_mode(), MEASURE_RELATIVE);

    vorParameterPtr tool(new vorParameterMap());
    tool->set_name("tool");
    vorParameterPtr diameter(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6));
    tool->add("diameter", diameter);
    EXPECT_EQ(vorParameter::get_name(*diameter, 0), "diameter");
    EXPECT_EQ(vorParameter::get_name(*diameter, 1), "tool.diameter");

    vorParameterPtr list = tool->add("list", vorParameterPtr(new vorParameterArray()));
    vorParameterPtr third;
    for (int i = 0; i < 3; ++i)
        third = list->add(vorParameterKey(), text("x"));
    third->set_name("");
    EXPECT_EQ(vorParameter::get_name(*third, 1), "tool.list[2]");
    EXPECT_EQ(vorParameter::get_name(*third, 0), "[2]");

    vorParameterPtr nameless(new vorParameterString("x"));
    EXPECT_EQ(vorParameter::get_name(*nameless, 1), "");

    // Errors are shared per kind, with translated messages.
    vorParameterPtr e5 = vorParameterError::create(ERR_DIVIDE_BY_ZERO);
    EXPECT_EQ(e5.get(), vorParameterError::create(5).get());
    EXPECT_EQ(e5->get_string(), "#ERROR: Divide by zero");
    EXPECT_EQ(e5->print(0), "(ERROR) Divide by zero\n");
    EXPECT_FALSE(e5->is_valid());
    EXPECT_TRUE(e5->is_active());
    e5->set_double(3.0);
    EXPECT_EQ(e5->get_double(), 0.0);

    vorParameterPtr e12 = vorParameterError::create(12);
    EXPECT_EQ(e12->subtype(), ERR_UNKNOWN);
    EXPECT_EQ(e12->get_expr(), "Unknown error");
    EXPECT_EQ(e12.get(), vorParameterError::create(99).get());
    EXPECT_NE(e12.get(), vorParameterError::create(0).get());

    vorParameterPtr fresh = e5->evaluate();
    EXPECT_NE(fresh.get(), e5.get()) << "evaluate gives a copy, not the shared instance";
    EXPECT_EQ(fresh->subtype(), ERR_DIVIDE_BY_ZERO);
    EXPECT_FALSE(vorParameterError::valid_subtype(10));
}

TEST(HandleThreads, SharedEmptyHandleIsReplacedOnceWithoutARace) {
    // Four threads dereference one empty handle at the same time, each many
    // fresh handles; all must see the one shared error (ThreadSanitizer
    // checks that the replacement is race-free).
    for (int round = 0; round < 200; ++round) {
        const vorParameterPtr shared;
        std::vector<std::thread> threads;
        std::atomic<int> unknown{0};
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&] {
                if (shared->subtype() == ERR_UNKNOWN && shared.copy()->is_error())
                    ++unknown;
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(unknown.load(), 4);
        EXPECT_EQ(shared.get(), vorParameterError::create(ERR_UNKNOWN).get());
    }
}

TEST(HandleThreads, KeysAreCopiedAndDroppedOnAnyThread) {
    // Key records count their keys atomically. Four threads copy and drop
    // one shared cached key, and each takes the last copy of an index key,
    // whose record no cache holds, and deletes it on its way out
    // (ThreadSanitizer checks the counts, AddressSanitizer the deletion).
    const vorParameterKey cached("tool.diameter");
    const int shares = vorParameterKeyImpl::get_impl(utString("tool.diameter")).use_count();
    for (int round = 0; round < 50; ++round) {
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t)
            threads.emplace_back([&cached, index = vorParameterKey(t, "")] {
                for (int i = 0; i < 1000; ++i) {
                    const vorParameterKey copies[] = {cached, index, cached};
                    EXPECT_EQ(copies[1].first(), index.first());
                }
            });
        for (std::thread& thread : threads)
            thread.join();
    }
    EXPECT_EQ(vorParameterKeyImpl::get_impl(utString("tool.diameter")).use_count(), shares);
}
