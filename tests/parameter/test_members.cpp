// Range-for over a container's members: order and names, what is walked
// (references, non-containers, empty handles), loaded empty slots, and
// changes made by the loop body.

#include "../support/prelude.h"

namespace {

using Names = std::vector<std::string>;

Names names_of(const vorMemberRange& range) {
    Names names;
    for (const auto& [name, member] : range)
        names.push_back(name.str());
    return names;
}

} // namespace

TEST(Members, MapMembersInOrderAndEmptyRangesForAnythingElse) {
    vorParameterRoot root("machining");
    vorParameterPtr tool = root.add("tool", map());
    vorParameterPtr zeta = tool->add("Zeta", real(1));
    tool->add("alpha", real(2));
    tool->add("_hidden", real(3));
    tool->add("Mid", real(4));

    EXPECT_EQ(names_of(vorMembers(tool)), (Names{"Zeta", "alpha", "_hidden", "Mid"}));
    const vorParameterPtr& const_tool = tool;
    auto range = vorMembers(const_tool);
    ASSERT_EQ(range.size(), 4u);
    EXPECT_EQ(range.begin()->par, zeta) << "the handles are the members themselves";
    // A root on the stack, and a reference to the map, which is followed.
    EXPECT_EQ(names_of(vorMembers(root)), Names{"tool"});
    root.add("holder", reference("tool"));
    EXPECT_EQ(names_of(vorMembers(root["holder"])), names_of(vorMembers(tool)));

    // Anything but the right container gives an empty range.
    vorParameterPtr list = root.add("list", vorParameterPtr(new vorParameterArray()));
    list->add(vorParameterKey(), real(1));
    vorParameterPtr dangling = root.add("dangling", reference("nosuch"));

    EXPECT_TRUE(vorMembers(list).empty());
    EXPECT_TRUE(vorElements(vorParameterPtr::share(&root)).empty());
    EXPECT_TRUE(vorMembers(real(5)).empty());
    EXPECT_TRUE(vorMembers(root["nosuch"]).empty());
    EXPECT_TRUE(vorMembers(dangling).empty());
    EXPECT_TRUE(vorElements(dangling).empty());
    vorParameterPtr none;
    EXPECT_TRUE(vorMembers(none).empty());
    EXPECT_TRUE(vorElements(none).empty());
    EXPECT_TRUE(none.is_null()) << "looping over an empty handle leaves it empty";
}

TEST(Members, ElementsInIndexOrderAndTheLoopBodyMayChangeOrReleaseTheContainer) {
    std::istringstream file("{\"type\" : \"job\", \"version\" : \"1\", \"time\" : \"0\"}\n"
                            "{\"passes\" : (\"1\", , \"3\")}\n");
    vorParameterSerialError error = SERIAL_OK;
    std::unique_ptr<vorParameterOpenRoot> root =
        vorParameterOpenRoot::load(file, vorParameterSerializer::get_template_serializer(), error);
    ASSERT_EQ(error, SERIAL_OK);

    Names texts;
    std::vector<bool> active;
    for (const vorParameterPtr& element : vorElements((*root)["passes"])) {
        texts.push_back(element->get_string().str());
        active.push_back(element->is_active());
    }
    EXPECT_EQ(texts, (Names{"1", "", "3"}));
    EXPECT_EQ(active, (std::vector<bool>{true, false, true}));

    vorParameterPtr tool(new vorParameterMap());
    for (const char* name : {"a", "b", "c"})
        tool->add(name, real(1));

    // Removing every member and adding new ones while looping: the loop sees
    // exactly the members that stood when it began, alive to the end.
    Names seen;
    for (const auto& [name, member] : vorMembers(tool)) {
        seen.push_back(name.str());
        tool->remove("a");
        tool->remove("b");
        tool->remove("c");
        tool->add(name + "_new", real(2));
        EXPECT_EQ(member->get_double(), 1.0);
    }
    EXPECT_EQ(seen, (Names{"a", "b", "c"}));
    EXPECT_EQ(names_of(vorMembers(tool)), (Names{"a_new", "b_new", "c_new"}));

    vorParameterPtr list(new vorParameterArray());
    for (int i = 0; i < 3; ++i)
        list->add(vorParameterKey(), real(i));
    double sum = 0;
    for (const vorParameterPtr& element : vorElements(list)) {
        list.reset(); // the last handle of the array itself goes
        sum += element->get_double();
    }
    EXPECT_EQ(sum, 3.0);
}
