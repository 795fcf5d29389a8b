// References: resolution, chains and cycles, entity designations, required
// types, writing through, printing; and data parameters.

#include "../support/prelude.h"

namespace {

/// root { tool { diameter: 6mm, depth: 2mm, name: "End mill" } }
struct Tree {
    vorParameterPtr root{new vorParameterRoot("machining")};
    vorParameterPtr tool = root->add("tool", map());
    vorParameterPtr diameter = tool->add("diameter", real(6));
    vorParameterPtr depth = tool->add("depth", real(2));
    vorParameterPtr name = tool->add("name", text("End mill"));
};

} // namespace

TEST(Reference, ResolvesForwardsAndEndsCyclesInAnError) {
    Tree t;
    vorParameterPtr r = t.root->add("r", reference("tool.diameter"));
    EXPECT_EQ(r->type(), TYPE_NUMERIC);
    EXPECT_EQ(r->subtype(), SUB_REAL);
    EXPECT_DOUBLE_EQ(r->get_double(), 6.0);
    EXPECT_EQ(r.par(), t.diameter.get());
    EXPECT_TRUE(r->is_ref());

    r->set_string("3");
    EXPECT_DOUBLE_EQ(t.diameter->get_double(), 3.0) << "a write goes to the referent";
    r->set_string("&tool.depth");
    EXPECT_EQ(r.par(), t.depth.get()) << "a write beginning with & retargets";
    EXPECT_EQ((*r)["_ref"]->get_string(), "tool.depth");

    // Operators and expressions see the referent.
    vorParameterPtr twice = t.root->add("twice", real(0));
    twice->set_string("r * 2");
    EXPECT_DOUBLE_EQ(twice->get_double(), 4.0);

    // A reference to a map looks members up in it.
    vorParameterPtr m = t.root->add("m", reference("tool"));
    EXPECT_EQ(m->type(), TYPE_MAP);
    EXPECT_EQ((*m)["name"]->get_string(), "End mill");
    EXPECT_EQ(m->size(), 3);

    // To itself, to its own parent, a to b to a, a to b to c to a.
    vorParameterPtr self = t.tool->add("self", reference("self"));
    vorParameterPtr up = t.tool->add("up", reference("tool"));
    vorParameterPtr a = t.root->add("a", reference("b"));
    vorParameterPtr b = t.root->add("b", reference("a"));
    vorParameterPtr c1 = t.root->add("c1", reference("c2"));
    t.root->add("c2", reference("c3"));
    t.root->add("c3", reference("c1"));
    for (const vorParameterPtr& cyclic : {self, up, a, b, c1}) {
        EXPECT_TRUE(cyclic->is_error());
        EXPECT_EQ(cyclic->type(), TYPE_ERROR);
        EXPECT_EQ(cyclic->subtype(), ERR_EXPRESSION);
        EXPECT_NE(cyclic.par(), nullptr);
        EXPECT_DOUBLE_EQ(cyclic->get_double(), 0.0);
        EXPECT_FALSE(cyclic->is_valid());
    }
    EXPECT_EQ(a->print(0), "(REF !) b = (NULL REFERENCE!)\n");
    EXPECT_EQ(vorParameterRef().subtype(), ERR_EXPRESSION) << "no text, no referent";

    // A cycle through maps ends in the marked print.
    vorParameterPtr m1 = t.root->add("m1", map());
    vorParameterPtr m2 = t.root->add("m2", map());
    m1->add("to", reference("m2"));
    m2->add("to", reference("m1"));
    EXPECT_NE(m1->print(0).find("(RECURSIVE REFERENCE!)"), utString::npos);

    vorParameterPtr root(new vorParameterRoot("chain"));
    root->add("r0", real(7));
    for (int i = 1; i <= 100; ++i)
        root->add(utString("r" + std::to_string(i)),
                  reference(("r" + std::to_string(i - 1)).c_str()));
    vorParameterPtr last = (*root)["r100"];
    EXPECT_DOUBLE_EQ(last->get_double(), 7.0);
    EXPECT_EQ(last.par(), (*root)["r0"].get()) << "the chain collapses to its end";
}

TEST(Reference, RequiredTypesEntityDesignationsAndDataParameters) {
    Tree t;
    auto* typed = new vorParameterRef("tool.name");
    vorParameterPtr r = t.root->add("typed", vorParameterPtr(typed));
    typed->set_required_type(TYPE_NUMERIC);
    EXPECT_EQ(r->subtype(), ERR_TYPE);
    typed->set_ref_string("tool.depth");
    EXPECT_EQ(r->type(), TYPE_NUMERIC);

    auto* rooted = new vorParameterRef("rootpar");
    vorParameterPtr rr = t.tool->add("rooted", vorParameterPtr(rooted));
    rooted->set_required_type(TYPE_MAP);
    EXPECT_EQ(rooted->get_ref_root_type(), "*");
    // rootpar is the root above the reference, which holds it: self-containment.
    EXPECT_EQ(rr->subtype(), ERR_EXPRESSION);
    vorParameterPtr other(new vorParameterRoot("milling"));
    t.root->add("other", other);
    rooted->set_ref_string("other");
    EXPECT_EQ(rr->type(), TYPE_MAP);
    rooted->set_ref_root_type("turning");
    EXPECT_EQ(rr->subtype(), ERR_TYPE);
    rooted->set_ref_root_type("milling");
    EXPECT_EQ(rr->type(), TYPE_MAP);

    const vorUniqueId id(0x0123456789abcdefULL, 0x0fedcba987654321ULL);
    vorParameterRef by_id("id:" + id.hex_string());
    EXPECT_EQ(by_id.get_ref_string(), "id:0123456789abcdef0fedcba987654321");
    EXPECT_EQ(by_id["_ref"]->get_string(), by_id.get_ref_string());
    EXPECT_EQ(by_id.get_ref_id().get_uid(), id);

    vorParameterRef excl("excl:" + id.hex_string() + ":depth");
    EXPECT_EQ(excl.get_ref_string(), "excl:0123456789abcdef0fedcba987654321:depth");

    vorParameterRef entity("curve:O'Neil");
    EXPECT_EQ(entity.get_ref_string(), "curve:O'Neil");

    // The host answers entity(...): here a user function of the root that
    // returns the text it was asked for, so the designation shows.
    vorParameterLibRoot host("machining");
    host.add("probe", function("argv[0] + '/' + argv[1]"));
    host.add("entity", vorParameterPtr(new vorParameterFunction("probe(argv[0]; argv[1])")));
    vorParameterPtr quoted = host.add("quoted", reference("curve:O'Neil"));
    EXPECT_EQ(quoted->get_string(), "curve/O'Neil") << "double quotes around a name with '";
    vorParameterPtr plain = host.add("plain", reference("curve:c1"));
    EXPECT_EQ(plain->get_string(), "curve/c1");

    vorParameterLibRoot root("machining");
    vorParameterPtr data = root.add("d", vorParameterPtr(new vorParameterData("material")));
    auto* d = static_cast<vorParameterData*>(data.get());
    EXPECT_EQ(d->get_data_type(), "material");
    EXPECT_EQ(data->type(), TYPE_DATA);
    EXPECT_EQ(data->print(0), "(DATA type:material) \n");
    // No vordata function: the call fails.
    EXPECT_EQ(d->get_data_par()->subtype(), ERR_INVALID_DATA);
    // A host function that answers something other than data.
    root.add("vordata", function("argv[0]"));
    EXPECT_EQ(d->get_data_par()->subtype(), ERR_TYPE);
    // One that answers data.
    root.remove("vordata");
    root.add("vordata", function("d"));
    EXPECT_EQ(d->get_data_par().get(), data.get());

    vorParameterPtr copy = data.copy();
    EXPECT_TRUE(*copy == *d);
    static_cast<vorParameterData&>(*copy).set_id(vorRefToObjectId(vorUniqueId(1, 2)));
    EXPECT_FALSE(*copy == *d);
    EXPECT_NE(copy->print(0).find(" id:00000000000000010000000000000002"), utString::npos);
}
