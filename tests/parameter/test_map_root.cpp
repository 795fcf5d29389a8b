// Maps and roots: lookup, adding, removing, synonyms and built-in names.

#include "../support/prelude.h"

namespace {

vorParameterPtr number(double v) {
    return real(v, DIM_LENGTH);
}

} // namespace

TEST(Map, LooksNamesAndPathsUpCaseInsensitivelyExactFirst) {
    vorParameterMap map;
    vorParameterPtr depth = map.add("Depth", number(1));
    vorParameterPtr width = map.add("width", number(2));
    EXPECT_EQ(map["depth"].get(), depth.get());
    EXPECT_EQ(map["WIDTH"].get(), width.get());
    EXPECT_EQ(map["[0]"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(map["nothing"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(map["a b"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(depth->parent(), &map);
    EXPECT_EQ(depth->get_name(), "Depth");

    vorParameterPtr exact = map.add("depth", number(3));
    EXPECT_EQ(exact.get(), depth.get()) << "add finds the existing member, any case";
    EXPECT_EQ(map.size(), 2);

    vorParameterPtr tool(new vorParameterMap());
    vorParameterMap root;
    root.add("tool", tool);
    vorParameterPtr diameter = tool->add("diameter", number(6));
    EXPECT_EQ(root["tool.diameter"].get(), diameter.get());
    EXPECT_EQ(root["TOOL.Diameter"].get(), diameter.get());
    EXPECT_EQ(root["tool.diameter.x"]->subtype(), ERR_INVALID_NAME)
        << "a lookup in a non-container is reported as an invalid name";
    EXPECT_EQ(root[vorParameterKey(utString(std::string(1 << 20, 'x')))]->subtype(),
              ERR_INVALID_NAME);

    vorParameterMap keyed;
    keyed.add("b", number(1));
    keyed.add("A", number(2));
    keyed.add("_keys", number(3));
    vorParameterPtr keys = keyed["_keys"];
    ASSERT_EQ(keys->type(), TYPE_ARRAY);
    ASSERT_EQ(keys->size(), 2) << "a member named _keys is never added or reachable";
    EXPECT_EQ(keys["[0]"]->get_string(), "b");
    EXPECT_EQ(keys["[1]"]->get_string(), "A");
}

TEST(Map, MembersDifferingInLetterCaseAloneAfterReplacingAReference) {
    vorParameterMap map;
    map.add("target", number(1));
    vorParameterPtr reference = map.add("ab", vorParameterPtr(new vorParameterRef("target")));
    vorParameterPtr upper = map.add("Ab", number(2));
    EXPECT_EQ(map.size(), 3) << "a reference found in another case does not stop the add";
    EXPECT_EQ(map["ab"].get(), reference.get());
    EXPECT_EQ(map["AB"].get(), upper.get()) << "other cases find the member added last";

    map.remove("Ab");
    EXPECT_EQ(map["ab"].get(), reference.get());
    EXPECT_EQ(map["AB"]->subtype(), ERR_INVALID_NAME)
        << "removing the member other cases found leaves them finding nothing";

    vorParameterPtr capitals = map.add("AB", number(3));
    EXPECT_EQ(map["aB"].get(), capitals.get());
    map.remove("ab");
    EXPECT_EQ(map["aB"].get(), capitals.get());
    map.remove("aB");
    vorParameterPtr lower = map.add("ab", number(4));
    EXPECT_EQ(map["AB"].get(), lower.get());

    vorParameterPtr copy = vorParameterPtr(new vorParameterMap(map));
    EXPECT_EQ(copy["aB"]->get_double(), 4.0) << "copies keep the letter-case index";
}

namespace {

/// A host's map that answers every lookup itself.
class AnsweringMap : public vorParameterMap {
public:
    using vorParameterMap::operator[];
    vorParameterPtr operator[](const vorParameterKey&) const override { return number(42); }
    vorParameterPtr operator[](const vorParameterKey&) override { return number(42); }
};

/// What a lookup answers, comparable across two lookups of one path: the
/// member found, or what a value made for the occasion prints.
std::pair<const vorParameter*, utString> answer(const vorParameterPtr& found) {
    if (!found->parent())
        return {nullptr, found->print(0)};
    return {found.get(), utString()};
}

} // namespace

TEST(Map, TextLookupsAnswerAsKeyLookups) {
    // A map finds a path the key cache knows by walking it without a key; a
    // root does too when no synonym applies. Every path must get the key
    // lookup's answer, the first time (unknown text) and the next (known).
    for (vorParameterPtr handle : {vorParameterPtr(new vorParameterRoot("Tool", 0, "T1")),
                                   vorParameterPtr(new vorParameterLibRoot("Tool", 0, "T1"))}) {
        vorParameter& root = *handle;
        vorParameterPtr plain = root.add("plain", map());
        plain->add("Inner", map())->add("depth", number(1));
        plain->add("broken", vorParameterError::create(ERR_DIVIDE_BY_ZERO));
        plain->add("to_inner", reference("plain.inner"));
        vorParameterPtr host = plain->add("host", vorParameterPtr(new AnsweringMap()));
        host->add("x", number(2));
        vorParameterPtr list = plain->add("list", vorParameterPtr(new vorParameterList(number(0))));
        list->add(vorParameterKey(0, ""), number(3));
        root.add("Name", text("member"));

        const vorParameterMap& plain_map = static_cast<const vorParameterMap&>(*plain);
        for (int round = 0; round < 2; ++round)
            for (const char* path :
                 {"plain.inner.depth", "PLAIN.Inner.DEPTH", "$plain.inner", "plain.broken",
                  "plain.missing.x", "plain.inner.depth.x", "plain._keys", "plain.to_inner.depth",
                  "plain.host.x", "plain.list[0]", "plain.list.0", "name", "rootpar",
                  "tool.plain.inner", "sqrt", "", "a b"}) {
                const vorParameterKey key(path);
                EXPECT_EQ(answer(root[path]), answer(root[key])) << path;
                EXPECT_EQ(answer(plain_map[path]), answer(plain_map[key])) << path;
                EXPECT_EQ(answer(plain[path]), answer(plain[key])) << path;
            }
        EXPECT_EQ(plain["host.x"]->get_double(), 42) << "a host's map answers for itself";
        EXPECT_EQ((*host)["x"]->get_double(), 42);

        const vorEvalFunction only_functions(EVAL_FUNCTIONS_ONLY);
        EXPECT_EQ(answer(root["plain.inner.depth"]),
                  answer(root[vorParameterKey("plain.inner.depth")]));
        EXPECT_EQ(root["plain.inner.depth"]->subtype(), ERR_INVALID_NAME);
    }
}

TEST(Map, RemoveLockCyclesCopiesAndTheRootsNames) {
    vorParameterPtr map(new vorParameterMap());
    vorParameterPtr x = map->add("x", number(1));
    EXPECT_EQ(map->remove("X").get(), x.get());
    EXPECT_EQ(x->parent(), nullptr);
    EXPECT_EQ(map->size(), 0);
    EXPECT_EQ(map->remove("x")->subtype(), ERR_INVALID_NAME);

    EXPECT_EQ(map->add("self", map)->subtype(), ERR_UNKNOWN) << "a map cannot hold itself";
    vorParameterPtr inner = map->add("inner", vorParameterPtr(new vorParameterMap()));
    EXPECT_EQ(inner->add("outer", map)->subtype(), ERR_UNKNOWN) << "nor an ancestor";
    vorParameterPtr shared_error = vorParameterError::create(ERR_DOMAIN);
    inner->add("failure", shared_error);
    EXPECT_EQ(shared_error->parent(), nullptr) << "shared errors belong to no container";
    EXPECT_EQ(inner.copy()->parent(), nullptr) << "a copy stands alone";

    map->lock(1);
    EXPECT_EQ(map->add("y", number(2))->subtype(), ERR_UNKNOWN);
    EXPECT_TRUE(inner->is_locked()) << "a lock covers the members";

    vorParameterPtr copied(new vorParameterMap());
    copied->add("a", number(1));
    vorParameterPtr copy = copied.copy();
    EXPECT_NE(copy["a"].get(), copied["a"].get());
    EXPECT_EQ(copy["a"]->parent(), copy.get());
    EXPECT_TRUE(*copy == *copied);
    copy["a"]->set_double(2);
    EXPECT_FALSE(*copy == *copied);
    EXPECT_EQ(copied->print(0), "(MAP) \na: (REAL) 1 [L]\n");

    vorParameterPtr root_handle(new vorParameterRoot("Tool", 0, "T1"));
    vorParameterRoot& root = static_cast<vorParameterRoot&>(*root_handle);
    EXPECT_EQ(root.subtype(), SUB_ROOT);
    EXPECT_EQ(root["tool"].get(), &root);
    EXPECT_EQ(root["ROOTPAR"].get(), &root);
    EXPECT_EQ(root["roottype"]->get_string(), "Tool");
    EXPECT_EQ(root["name"]->get_string(), "T1");
    EXPECT_EQ(root["id"]->get_string(), "") << "no id yet";
    root.set_id(vorRefToObjectId(vorUniqueId(1, 2)));
    EXPECT_EQ(root["id"]->get_string(), "00000000000000010000000000000002");

    vorParameterPtr name = root.add("Name", text("member"));
    EXPECT_EQ(root["name"].get(), name.get()) << "the synonym finds the member first";
    vorParameterPtr diameter = root.add("diameter", number(6));
    EXPECT_EQ(root["tool.diameter"].get(), diameter.get());
    EXPECT_EQ(root.translate_key("name[2].name"), "Name[2].name");
    EXPECT_EQ(root.translate_key("tool.name"), "tool.name");
    EXPECT_EQ(vorParameterRoot::get_root(diameter.get()), &root);
    EXPECT_EQ(vorParameter::get_name(root, 0), "Tool");

    vorParameterPtr scope(new vorParameterRoot("machining"));
    vorParameterPtr tolerance = scope->add("tolerance", number(0.01));
    vorParameterPtr strategy = scope->add("strategy", vorParameterPtr(new vorParameterMap()));
    vorParameterPtr stepover = strategy->add("stepover", number(2));
    EXPECT_EQ(stepover->resolve("tolerance").get(), tolerance.get());
    EXPECT_EQ(stepover->resolve("")->subtype(), ERR_SYNTAX);
    EXPECT_EQ(stepover->resolve("missing")->subtype(), ERR_INVALID_NAME);
}
