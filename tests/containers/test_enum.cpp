// Enumerations: states and their lookup, writing values, synonyms,
// conditions, validity, locks, and comparison with texts in expressions.

#include "../support/doc_examples.h"
#include "../support/documented_tree.h"

#include "../support/prelude.h"

#include <climits>
#include <fstream>

namespace {

utString shout(const utString& key) {
    return key.upcase();
}

vorParameterPtr enumeration(const char* states, const char* value = "") {
    return vorParameterPtr(new vorParameterEnum(states, value));
}

/// The tree of docs/enumerations.md: the documented tree with a strategy
/// choice and a legacy value beside it.
vorParameterPtr enumeration_tree() {
    vorParameterPtr root = documented_tree();
    vorParameterPtr strategy = (*root)["strategy"];
    auto* method = new vorParameterEnum();
    method->add_state("raster", "Raster passes", "Parallel passes along X", "");
    method->add_state("offset", "Offset passes", "Passes that follow the boundary", "");
    method->add_state("spiral", "Spiral", "One continuous spiral", "tool.flutes >= 3");
    method->set_string("raster");
    strategy->add("method", vorParameterPtr(method));
    strategy->add("clearance", enumeration("port_area_clear|port_plunge", "tubeclear"));
    return root;
}

} // namespace

TEST(Enum, StatesAreFoundByNameIndexOrOldName) {
    vorParameterPtr e = enumeration("a||b|a");
    EXPECT_EQ(e->get_string(), "a");
    EXPECT_EQ(e->get_int(), 0);
    auto& states = static_cast<vorParameterEnum&>(*e);
    EXPECT_EQ(states.num_states(), 4);
    EXPECT_EQ(states.find_index("b"), 2); // the empty state still counts
    EXPECT_EQ(states.find_index("a"), 0); // the first of two wins
    EXPECT_EQ(states.find_index(""), -1);
    EXPECT_EQ(states.find_index(utString::invalid()), -1);
    EXPECT_EQ(states.find_state(1), "");
    EXPECT_EQ(states.find_state(3), "a");
    EXPECT_EQ(states.find_state(4), "");

    EXPECT_EQ(enumeration("x|y", "y")->get_string(), "y");
    EXPECT_EQ(static_cast<vorParameterEnum&>(*enumeration("")).num_states(), 1);

    // Every entry is checked against docs/enumerations.md below.
    EXPECT_EQ(vorParameterEnum::lookup_state_synonym("TubeClear"), "TubeClear");
    vorParameterPtr old = enumeration("along_corner|finishing|port_area_clear", "alongcorner");
    EXPECT_TRUE(old->is_valid());
    EXPECT_EQ(old->get_int(), 0);
    EXPECT_EQ(static_cast<vorParameterEnum&>(*old).find_index("semi"), 1);
    old->set_string("tubeclear");
    EXPECT_EQ(old->get_string(), "port_area_clear");
}

TEST(Enum, WritingSelectsByIndexOrStoresTheNameAndConditionsAreEvaluatedInScope) {
    vorParameterPtr e = enumeration("a|b|c");
    e->set_onmodify_callback(&count_modification);
    g_modified = 0;
    e->set_string("2");
    EXPECT_EQ(e->get_string(), "c");
    EXPECT_EQ(e->get_int(), 2);
    e->set_string(" +1 ");
    EXPECT_EQ(e->get_string(), "b");
    e->set_string("7");
    EXPECT_EQ(e->get_string(), "");
    EXPECT_FALSE(e->is_valid());
    EXPECT_EQ(e->get_int(), 0);
    e->set_string("-1");
    EXPECT_EQ(e->get_string(), "-1");
    e->set_string("99999999999999999999"); // no integer: a name
    EXPECT_EQ(e->get_string(), "99999999999999999999");
    e->set_string("4294967296"); // an integer past every state
    EXPECT_EQ(e->get_string(), "");
    e->set_int(1);
    EXPECT_EQ(e->get_string(), "b");
    for (int far : {-1, 3, INT_MAX, INT_MIN}) {
        e->set_int(far);
        EXPECT_EQ(e->get_string(), "") << far;
    }
    EXPECT_EQ(g_modified, 11);

    vorParameterPtr root = enumeration_tree();
    auto& method = static_cast<vorParameterEnum&>(*(*root)["strategy.method"]);
    method.add_state("text", "", "", "'yes'");
    method.add_state("self", "", "", "method == 'raster'");
    method.add_state("broken", "", "", "1 +");
    EXPECT_TRUE(method.is_state_active(0));
    EXPECT_TRUE(method.is_state_active(2)); // four flutes
    EXPECT_TRUE(method.is_state_active(-2));
    EXPECT_FALSE(method.is_state_active(-3)); // a string is no truth value
    EXPECT_FALSE(method.is_state_active(-1));
    EXPECT_FALSE(method.is_state_active(6));
    EXPECT_FALSE(method.is_state_active(-7));

    (*root)["tool.flutes"]->set_int(2);
    method.set_string("offset");
    EXPECT_FALSE(method.is_state_active(2));
    EXPECT_FALSE(method.is_state_active(4));

    method.strip_active_states();
    for (int i = 0; i < method.num_states(); ++i)
        EXPECT_TRUE(method.is_state_active(i)) << i;
}

TEST(Enum, ExpressionValuesAreValidWhenTheyNameAState) {
    vorParameterPtr root(new vorParameterRoot("machining"));
    vorParameterPtr choice = root->add("choice", text("b"));
    vorParameterPtr e = root->add("e", enumeration("a|b"));
    e->set_string("${choice}");
    EXPECT_EQ(e->get_string(), "b");
    EXPECT_EQ(e->get_int(), 1);
    EXPECT_TRUE(e->is_valid());
    EXPECT_EQ(e->print(0), "(ENUM) ${choice} =b\n");

    choice->set_string("z");
    EXPECT_FALSE(e->is_valid());
    EXPECT_EQ(e->print(0), "(ENUM !) ${choice} =z\n");
    e->set_string("${e}"); // reads itself: the recursion guard answers
    EXPECT_EQ(e->get_string(), "[#ERROR: Expression/Reference error]");
    EXPECT_FALSE(e->is_valid());

    e->set_string("a");
    EXPECT_EQ(e->print(0), "(ENUM) a\n");
    EXPECT_EQ(e->evaluate()->type(), TYPE_ENUM);
}

TEST(Enum, TitlesCopiesResetAndLocks) {
    vorParameterPtr root = enumeration_tree();
    vorParameterPtr method = (*root)["strategy.method"];
    auto& states = static_cast<vorParameterEnum&>(*method);
    EXPECT_EQ(states.get_state_desc("offset"), "Passes that follow the boundary");
    EXPECT_EQ(states.get_state_title("zigzag"), "");
    vorMessageTranslator previous = vorset_message_translator(&shout);
    EXPECT_EQ(method->get_translated_string(), "RASTER PASSES");
    states.add_state("plain", "", "", "");
    method->set_string("plain");
    EXPECT_EQ(method->get_translated_string(), "PLAIN");
    vorset_message_translator(previous);

    vorParameterPtr copy = method.copy();
    static_cast<vorParameterEnum&>(*copy).add_state("extra", "", "", "");
    EXPECT_EQ(static_cast<vorParameterEnum&>(*copy).num_states(), 5);
    EXPECT_EQ(states.num_states(), 4);
    EXPECT_EQ(copy->get_string(), "plain");

    vorParameterPtr fresh = enumeration("a|b|c");
    fresh->set_string("c");
    fresh->reset();
    EXPECT_EQ(fresh->get_string(), "a");

    method->set_onmodify_callback(&count_modification);
    g_modified = 0;
    method->lock(1);
    method->set_string("offset");
    method->set_int(1);
    method->reset();
    states.add_state("late", "", "", "");
    EXPECT_EQ(method->get_string(), "plain");
    EXPECT_EQ(states.num_states(), 4);
    EXPECT_EQ(g_modified, 0);
    // A locked enumeration still compares.
    EXPECT_EQ(eval(root, "strategy.method == 'plain'")->get_int(), 1);
}

TEST(Enum, ComparisonWithTextsInExpressionsAndActiveConditions) {
    vorParameterPtr root = enumeration_tree();
    vorParameterPtr strategy = (*root)["strategy"];
    // The examples of docs/enumerations.md compare with names, old names,
    // misspellings, numbers and other enumerations; these add the sides swapped.
    EXPECT_EQ(eval(strategy, "'raster' != method")->get_int(), 0);
    EXPECT_EQ(eval(strategy, "0 == method")->subtype(), ERR_TYPE);

    vorParameterPtr stepdown = strategy->add("stepdown", real(1, DIM_LENGTH));
    stepdown->set_active("method == 'raster'");
    EXPECT_TRUE(stepdown->is_active());
    (*strategy)["method"]->set_string("offset");
    EXPECT_FALSE(stepdown->is_active());
    (*strategy)["method"]->set_string("0");
    EXPECT_TRUE(stepdown->is_active());
    (*strategy)["method"]->set_string("rastr");
    EXPECT_FALSE(stepdown->is_active());
}

TEST(Enum, DocumentedExamplesAndSynonymTableAreTheOnesInUse) {
    vorParameterPtr root = enumeration_tree();
    expect_doc_examples("docs/enumerations.md", 8, [&](const std::string& expression) {
        return vorEvaluator(root.get()).evaluate(expression)->get_string().str();
    });

    std::ifstream page(std::string(VORPARAMETER_SOURCE_DIR) + "/docs/enumerations.md");
    std::string line;
    while (std::getline(page, line) && line != "## Synonyms") {
    }
    int rows = 0;
    while (std::getline(page, line)) {
        std::istringstream row(line);
        std::string bar, old_name, current_name;
        if (!(row >> bar >> old_name >> bar >> current_name) || bar != "|")
            continue; // the header, the rule and the prose
        ++rows;
        EXPECT_EQ(vorParameterEnum::lookup_state_synonym(old_name), current_name) << old_name;
    }
    EXPECT_EQ(rows, 52);
}
