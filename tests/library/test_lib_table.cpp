// The function table, the library objects that expressions call, the
// argument decoder and the root that answers the standard functions.

#include "lib_test_tree.h"

#include "../support/prelude.h"

#include <fstream>

namespace {

/// The names and descriptions that docs/functions.md lists, one per line:
/// - `name`: "description"
std::vector<std::pair<std::string, std::string>> documented_functions() {
    std::ifstream in(std::string(VORPARAMETER_SOURCE_DIR) + "/docs/functions.md");
    std::vector<std::pair<std::string, std::string>> functions;
    for (std::string line; std::getline(in, line);) {
        const std::size_t name_end = line.find("`: \"", 3);
        if (line.rfind("- `", 0) != 0 || name_end == std::string::npos || line.back() != '"')
            continue;
        const std::size_t desc = name_end + 4;
        functions.emplace_back(line.substr(3, name_end - 3),
                               line.substr(desc, line.size() - 1 - desc));
    }
    return functions;
}

vorParameterPtr twice(const vorParameterPtr&) {
    return real(2);
}

} // namespace

TEST(LibTable, HoldsEveryDocumentedNameAndTheRootResolvesMembersFirst) {
    vorParameterLib library;
    const auto documented = documented_functions();
    ASSERT_EQ(documented.size(), 94u);
    EXPECT_EQ(library.size(), 94);
    for (const auto& [name, desc] : documented) {
        const vorParameterLibEntry* entry = vorParameterLib::find_entry(name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(entry->desc, desc) << name;
        EXPECT_EQ(library[utString(name)]->get_desc(), desc) << name;
    }
    vorParameterPtr keys = library["_keys"];
    ASSERT_EQ(keys->size(), 94);
    EXPECT_EQ(keys["[0]"]->type(), TYPE_STRING);

    // Lookup lower-cases the name, so a name registered with capitals is
    // out of reach; registering a known name replaces it in place.
    EXPECT_EQ(library["SIN"]->get_desc(), "Trigonometric sine.");
    EXPECT_EQ(vorParameterLib::add_entry("Twice", twice, "x2"), 95);
    EXPECT_EQ(library["Twice"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(library["twice"]->subtype(), ERR_INVALID_NAME);
    const vorParameterLibEntry sign = *vorParameterLib::find_entry("sign");
    EXPECT_EQ(vorParameterLib::add_entry("sign", twice, "x2"), 95);
    vorParameterLib later; // a further library object keeps the replacement
    EXPECT_EQ(library["sign"]->operate_binary("(", arguments({}))->get_double(), 2.0);
    vorParameterLib::add_entry("sign", sign.fn, sign.desc);

    EXPECT_EQ(library.subtype(), SUB_LIBRARY);
    EXPECT_EQ(library.type(), TYPE_FUNCTION);
    EXPECT_EQ(library.print(0), "(STANDARD FUNCTION LIBRARY)\n");
    EXPECT_EQ(library.operate_binary("(", arguments({}))->subtype(), ERR_INVALID_NAME);

    vorParameterPtr round = library["Round"];
    vorParameterPtr sqrt = library["sqrt"];
    EXPECT_EQ(round->subtype(), SUB_LIBRARY_PART);
    EXPECT_EQ(round->size(), 0);
    EXPECT_EQ(round->print(0), "(STANDARD FUNCTION) round\n");
    EXPECT_EQ(round->get_desc(), "Round value to the specified number of decimal places.")
        << "each function object has its own description";
    EXPECT_EQ(sqrt->get_desc(), "Square root.");
    EXPECT_EQ(library.get_desc(), "");
    EXPECT_EQ(round.copy()->print(0), round->print(0));
    EXPECT_EQ(round->operate_binary("+", real(1))->subtype(), ERR_TYPE);
    EXPECT_EQ(library["sqrt.x"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(library["[0]"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(library["no_such_function"]->subtype(), ERR_INVALID_NAME);

    // "if" is a second name of "select".
    EXPECT_EQ(library["if"]->get_desc(), library["select"]->get_desc());
    vorParameterPtr args = arguments({real(0), text("a"), text("b")});
    EXPECT_EQ(library["if"]->operate_binary("(", args).get(),
              library["select"]->operate_binary("(", args).get());

    vorParameterArgDecoder none(arguments({}));
    EXPECT_TRUE(none.all_arguments_used());
    EXPECT_EQ(none.next_argument()->subtype(), ERR_INVALID_ARGUMENTS);
    EXPECT_EQ(none.remaining_arguments()->size(), 0);

    vorParameterPtr a = text("a");
    vorParameterArgDecoder five(arguments({a, real(1), real(2), real(3), real(4)}));
    EXPECT_EQ(five.count(), 5);
    EXPECT_EQ(five.next_argument_as<vorParameterString>(), a.get()) << "borrowed, not copied";
    EXPECT_EQ(five.next_argument_as<vorParameterString>(), nullptr) << "a number is no string";
    vorParameterPtr rest = five.remaining_arguments();
    ASSERT_EQ(rest->size(), 3);
    EXPECT_EQ(rest["[0]"]->get_double(), 2.0);
    EXPECT_EQ(five.next_argument()->get_double(), 2.0) << "remaining_arguments does not advance";
    five.next_argument();
    five.next_argument();
    EXPECT_TRUE(five.all_arguments_used());
    EXPECT_EQ(five.next_argument_as<vorParameterString>(), nullptr);

    vorParameterArgDecoder not_a_list(real(1));
    EXPECT_EQ(not_a_list.count(), 0);
    EXPECT_TRUE(not_a_list.next_argument()->is_error());
    vorParameterArgDecoder empty_handle{vorParameterPtr()};
    EXPECT_TRUE(empty_handle.all_arguments_used());

    vorParameterPtr root = example_tree();
    root->add("max", real(1));
    root->add("sqrt", function("argv[0]"));
    EXPECT_EQ(eval(root, "max")->get_double(), 1.0);
    EXPECT_EQ(eval(root, "max(2; 3)")->get_double(), 3.0) << "a call finds functions only";
    EXPECT_EQ(eval(root, "sqrt(16)")->get_double(), 16.0) << "a user function hides a standard one";
    EXPECT_EQ(eval(root, "job").get(), root.get()) << "the root's type name";
    EXPECT_EQ(eval(root, "roottype")->get_string(), "Job");

    vorParameterPtr tool = root->add("tool", map());
    tool->add("d", real(9));
    EXPECT_EQ(eval(tool, "ROUND(sqrt(d) + depth; 0)")->get_double(), 21.0);

    vorParameterPtr bare(new vorParameterRoot());
    bare->add("a", real(16));
    EXPECT_EQ(eval(bare, "sqrt(a)")->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(root.copy()->ut_dynamic_type().name(), std::string("vorParameterLibRoot"));
    EXPECT_EQ(eval(root.copy(), "abs(-2)")->get_double(), 2.0);
}
