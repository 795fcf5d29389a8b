// What a node carries besides its value: the descriptive record that copies
// share and private copies duplicate, and the functions and dependency lists
// that only some nodes have.

#include "../support/prelude.h"

namespace {

vorParameterMirrorMode always_negate(const vorParameter*) {
    return MIRROR_NEGATE;
}

} // namespace

TEST(NodeRecord, PrivateCopiesOwnTheirTextsAndSharedCopiesShareThem) {
    vorParameterPtr map(new vorParameterMap());
    vorParameterPtr depth = map->add("depth", real(2));
    depth->set_label("Depth");
    depth->set_desc("Cutting depth");
    depth->set_group_name("cut");
    depth->set_active("1 > 0");
    depth->set_defaults("3", "0.1");

    // A clone without active expressions gets records of its own: stripping
    // the clone's expression leaves the original's, and the other texts stay.
    vorParameterPtr clone(static_cast<vorParameterMap&>(*map).create_object());
    vorParameterPtr cloned = (*clone)["depth"];
    EXPECT_EQ(cloned->get_active_expr(), "");
    EXPECT_EQ(depth->get_active_expr(), "1 > 0");
    EXPECT_EQ(cloned->get_label(), "Depth");
    EXPECT_EQ(cloned->get_desc(), "Cutting depth");
    EXPECT_EQ(cloned->get_group_name(), "cut");
    cloned->set_label("Other");
    EXPECT_EQ(depth->get_label(), "Depth");
    cloned->reset();
    EXPECT_DOUBLE_EQ(cloned->get_double(), 3) << "the defaults came along";

    // A plain copy shares the record: renaming it renames the original.
    vorParameterPtr copy = depth.copy();
    copy->set_desc("Shared");
    EXPECT_EQ(depth->get_desc(), "Shared");

    // A node that never had the rare texts reads them as empty, and reset()
    // records its current text as its default.
    vorParameterPtr plain = map->add("plain", real(5));
    EXPECT_EQ(plain->get_label(), "");
    EXPECT_EQ(plain->get_active_expr(), "");
    plain->set_double(7);
    plain->reset();
    EXPECT_DOUBLE_EQ(plain->get_double(), 7);
}

TEST(NodeRecord, CopiesTakeFunctionsButNotDependencies) {
    vorParameterPtr map(new vorParameterMap());
    vorParameterPtr depth = map->add("depth", real(2));
    vorParameterPtr finish = map->add("finish", real(1));
    finish->set_active("depth > 0");
    finish->set_onmodify_callback(&count_modification);
    finish->set_mirror_mode_callback(&always_negate);
    ASSERT_TRUE(finish->is_active());
    ASSERT_EQ(finish->get_dependencies().size(), 1u);

    vorParameterPtr copy = finish.copy();
    EXPECT_TRUE(copy->get_dependencies().empty());
    EXPECT_TRUE(copy->get_callbacks().empty());
    EXPECT_EQ(copy->get_mirror_mode(), MIRROR_NEGATE);
    g_modified = 0;
    copy->set_double(4);
    EXPECT_EQ(g_modified, 1);

    // Taking the functions away leaves the node as if it never had them.
    EXPECT_EQ(copy->set_onmodify_callback(nullptr), &count_modification);
    EXPECT_EQ(copy->set_onmodify_callback(nullptr), nullptr);
    copy->set_double(5);
    EXPECT_EQ(g_modified, 1);

    // Releasing the node that read `depth` leaves `depth` no dangling dependant.
    finish.reset();
    map->remove("finish");
    EXPECT_TRUE(depth->get_callbacks().empty());
}
