// The active state: computed lazily from the active expression, refreshed
// after a parameter it read changes; locks and on-modify functions.

#include "../support/prelude.h"

namespace {

const vorParameter* g_notified = nullptr;
void remember(vorParameter* p) {
    g_notified = p;
}

} // namespace

TEST(Active, FollowsWhatItReadsLocksNeedItAndChangesNotify) {
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr depth = root->add("Depth", real(2));
    vorParameterPtr finish = root->add("finish", real(1));
    finish->set_active("Depth > 0");
    EXPECT_TRUE(finish->is_active());
    ASSERT_EQ(finish->get_dependencies().size(), 1u);
    EXPECT_EQ(depth->get_callbacks().size(), 1u);
    depth->set_double(0);
    EXPECT_FALSE(finish->is_active()) << "the change made the cached state unknown";
    finish->set_active("");
    EXPECT_TRUE(finish->is_active());
    EXPECT_TRUE(finish->get_dependencies().empty());
    EXPECT_TRUE(depth->get_callbacks().empty());

    // A lock needs an active node.
    vorParameterPtr flag = root->add("flag", real(0));
    vorParameterPtr value = root->add("value", real(1));
    value->lock(1);
    value->set_active("flag");
    EXPECT_FALSE(value->is_locked()) << "a locked but inactive node is not locked";
    flag->set_double(1);
    EXPECT_TRUE(value->is_locked());
    value->set_double(5);
    EXPECT_EQ(value->get_double(), 1);
    {
        vorParameterNoLock no_lock;
        EXPECT_FALSE(value->is_locked());
        value->set_double(5);
    }
    EXPECT_EQ(value->get_double(), 5);

    vorParameterPtr group = root->add("group", map());
    vorParameterPtr member = group->add("member", real(1));
    group->set_active("'yes'");
    EXPECT_FALSE(group->is_active()) << "a string result is inactive";
    EXPECT_FALSE(member->is_active()) << "so is everything below";
    group->set_active("undefined_name");
    EXPECT_FALSE(group->is_active());
    group->set_active("1");
    EXPECT_TRUE(member->is_active());

    // Two parameters whose active expressions read each other: no recursion,
    // and (checked by the leak sanitizer) no ownership cycle.
    vorParameterPtr a = root->add("a", real(1));
    vorParameterPtr b = root->add("b", real(1));
    a->set_active("b > 0");
    b->set_active("a > 0");
    EXPECT_TRUE(a->is_active());
    EXPECT_TRUE(b->is_active());

    // Changes call the nearest on-modify function.
    vorParameterPtr tool = root->add("tool", map());
    vorParameterPtr diameter = tool->add("diameter", real(6));
    root->set_onmodify_callback(remember);
    g_notified = nullptr;
    diameter->set_double(8);
    EXPECT_EQ(g_notified, root.get()) << "the ancestor's function, with the ancestor";
    diameter->set_onmodify_callback(remember);
    diameter->set_double(9);
    EXPECT_EQ(g_notified, diameter.get());

    g_notified = nullptr;
    vorParameterPtr watcher = root->add("watcher", real(0));
    watcher->set_active("tool.diameter > 8");
    EXPECT_TRUE(watcher->is_active());
    {
        vorBlockParUpdateCallbacks blocked;
        diameter->set_double(7);
    }
    EXPECT_EQ(g_notified, nullptr) << "blocked callbacks call nothing";
    EXPECT_FALSE(watcher->is_active()) << "but dependants still learn of the change";

    vorParameterUpdateTrack tracker;
    diameter->set_double(10);
    EXPECT_EQ(tracker.get_list_size(), 1);
    EXPECT_EQ(tracker.get_changed_params_list()[0], diameter.get());
}
