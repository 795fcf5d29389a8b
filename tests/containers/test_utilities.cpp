// The whole-tree tools: detaching records, stripping active expressions,
// reserved names, entities and the default validity test.

#include "../support/prelude.h"

namespace {} // namespace

TEST(Utilities, StrippingDetachesTheRecordMakesSubtreesActiveAndValidityEvaluatesNumbers) {
    vorParameterPtr original = numeric("1");
    original->set_active("0");
    vorParameterPtr copy = original.copy();
    vorParameterUtils::strip_expression(*copy);
    copy->set_label("copy");
    EXPECT_EQ(original->get_active_expr(), "0");
    EXPECT_EQ(original->get_label(), "");
    EXPECT_TRUE(copy->is_active());
    EXPECT_FALSE(original->is_active());

    EXPECT_TRUE(vorParameterUtils::default_valid(*numeric("2*3")));
    EXPECT_FALSE(vorParameterUtils::default_valid(*numeric("1/0")));
    EXPECT_FALSE(vorParameterUtils::default_valid(*numeric("'text'")));
    vorParameterPtr ranged = numeric("12");
    static_cast<vorParameterNumeric&>(*ranged).set_range(vorRange(0, 10));
    EXPECT_FALSE(vorParameterUtils::default_valid(*ranged));
    EXPECT_TRUE(vorParameterUtils::default_valid(*text("x")));
    EXPECT_FALSE(vorParameterUtils::default_valid(*vorParameterPtr(new vorParameterData(""))));

    vorParameterPtr root(new vorParameterMap());
    vorParameterPtr inner = root->add("inner", map());
    inner->set_active("0");
    vorParameterPtr depth = inner->add("depth", numeric("2+3"));
    depth->set_active("depth > 100");
    vorParameterPtr list = inner->add("list", vorParameterPtr(new vorParameterArray()));
    list->add(vorParameterKey(), numeric("7"))->set_active("0");
    auto* choice = new vorParameterEnum();
    choice->add_state("raster", "", "", "0");
    choice->add_state("spiral", "", "", "depth > 100");
    choice->set_string("spiral");
    inner->add("method", vorParameterPtr(choice));
    vorParameterPtr body = root->add("twice", function("argv[0]*2"));
    body->set_active("0");

    vorParameterUtils::remove_active_expressions(*root);

    vorParameterIter it(root);
    it.exclude_functions(0);
    int visited = 0;
    while (++it) {
        ++visited;
        EXPECT_TRUE(it()->get_active_expr().empty()) << it.index().str();
        EXPECT_TRUE(it()->is_active()) << it.index().str();
    }
    EXPECT_EQ(visited, 6);
    EXPECT_TRUE(choice->is_state_active(0) && choice->is_state_active(1));
    EXPECT_EQ(choice->get_string(), "spiral");
    EXPECT_DOUBLE_EQ(depth->get_double(), 5.0);
}

TEST(Utilities, ReservedNamesAndEntities) {
    vorParameterPtr par = numeric("1");
    for (const char* name : {"vantrel", "local", "project"}) {
        par->set_name(name);
        EXPECT_TRUE(vorParameterUtils::is_restricted_parameter(par)) << name;
    }
    for (const char* name : {"Local", "locals", ""}) {
        par->set_name(name);
        EXPECT_FALSE(vorParameterUtils::is_restricted_parameter(par)) << name;
    }

    vorParameterRoot root;
    auto* data = new vorParameterData("Boundary");
    vorParameterPtr boundary = root.add("boundary", vorParameterPtr(data));
    vorParameterPtr no_id = root.add("plain", vorParameterPtr(new vorParameterData("Boundary")));
    data->set_id(vorRefToObjectId(vorUniqueId::generate()));
    EXPECT_FALSE(vorParameterUtils::is_entity(boundary)) << "no entity function: an error";
    root.add("entity", function("argv[0]"));
    EXPECT_TRUE(vorParameterUtils::is_entity(boundary));
    EXPECT_FALSE(vorParameterUtils::is_entity(no_id));
    auto* ref = new vorParameterRef();
    vorParameterPtr by_ref = root.add("ref", vorParameterPtr(ref));
    ref->set_ref_from_id(data->get_id());
    EXPECT_TRUE(vorParameterUtils::is_entity(by_ref));
    EXPECT_FALSE(vorParameterUtils::is_entity(vorParameterPtr()));
}
