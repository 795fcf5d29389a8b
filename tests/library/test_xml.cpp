// The XML rendering, read back with a real parser, and the function
// "state_active" (the examples of docs/functions.md test "to_xml").

#include "../support/parsed_xml.h"
#include "lib_test_tree.h"

#include "../support/prelude.h"

namespace {

std::string xml_of(const vorParameter& par) {
    return to_xml(par).value_or(utString("(too long)")).str();
}

/// Checks that `element` shows `par` under `name`: its name, type word and
/// value, and its members in order, references expanded.
void expect_shows(const vorParameter& par, xmlNode* element, const std::string& name) {
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(xml_attribute(element, "name"), name);
    const std::vector<xmlNode*> children = xml_children(element);
    if (const vorParameterRef* ref = vorParameterRef::ut_dynamic_cast(&par)) {
        EXPECT_EQ(xml_tag(element), "ref");
        EXPECT_EQ(xml_attribute(element, "target"), ref->get_ref_string().str());
        ASSERT_EQ(children.size(), 1u) << name;
        expect_shows(*ref->get_ref(), children[0], ref->get_ref()->get_name().str());
        return;
    }
    EXPECT_EQ(xml_attribute(element, "type"), par.get_xml_typename().str()) << name;
    if (const vorParameterMap* members = vorParameterMap::ut_dynamic_cast(&par)) {
        ASSERT_EQ(children.size(), members->members().size()) << name;
        std::size_t i = 0;
        for (const auto& [key, member] : members->members())
            expect_shows(*member, children[i++], std::string(key.view()));
    } else if (const vorParameterArray* array = vorParameterArray::ut_dynamic_cast(&par)) {
        ASSERT_EQ(children.size(), array->elements().size()) << name;
        for (std::size_t i = 0; i < children.size(); ++i)
            expect_shows(*array->elements()[i], children[i],
                         array->elements()[i]->get_name().str());
    } else {
        // Host data shows no value: its text is only an error message.
        const utString value = par.type() == TYPE_DATA ? utString()
                               : par.is_error()        ? par.get_expr()
                                                       : par.get_string();
        EXPECT_EQ(xml_text(element), value.str()) << name;
    }
}

/// A tree holding a parameter of every class.
vorParameterPtr every_class() {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    root->add("diameter", real(6, DIM_LENGTH, SUB_REAL));
    root->add("flutes", real(4, DIM_NONE, SUB_INT));
    root->add("climb", real(1, DIM_NONE, SUB_BOOL));
    root->add("lead", real(30, DIM_NONE, SUB_ANGLE));
    root->add("plain", real(2.5, DIM_NONE, SUB_NUMBER));
    root->add("stepover", real(0, DIM_LENGTH))->set_string("diameter * 0.5");
    root->add("label", text("End mill"));
    root->add("title", text("D${diameter}"));
    root->add("method", vorParameterPtr(new vorParameterEnum("raster|offset", "offset")));
    vorParameterPtr passes = root->add("passes", vorParameterPtr(new vorParameterList(real(0))));
    passes->add(vorParameterKey(), real(1));
    passes->add(vorParameterKey(), real(2));
    root->add("shared", vorParameterPtr(new vorParameterSharedList(real(0))))
        ->add(vorParameterKey(), root["flutes"]);
    root->add("axis", vorParameterPtr(new vorParameterVector(3, real(0))));
    vorParameterPtr mixed = root->add("mixed", vorParameterPtr(new vorParameterArray()));
    mixed->add(vorParameterKey(), text("a"));
    mixed->add(vorParameterKey(), map());
    root->add("hypot", vorParameterPtr(new vorParameterFunction("sqrt(argv[0]^2)")));
    root->add("stock", vorParameterPtr(new vorParameterData("stock")));
    root->add("tool", map())->add("name", text("T1"));
    root->add("cutter", reference("tool"));
    root->add("broken", reference("nowhere"));
    return root;
}

} // namespace

TEST(Xml, EveryClassReadsBackWithItsNameTypeAndValue) {
    const vorParameterPtr root = every_class();
    const std::string xml = xml_of(*root);
    ParsedXml parsed(xml);
    ASSERT_NE(parsed.root(), nullptr) << xml;
    expect_shows(*root, parsed.root(), "");

    std::string tags;
    for (xmlNode* child : xml_children(parsed.root()))
        tags += xml_tag(child) + " ";
    EXPECT_EQ(tags, "number number number number number number string string enum list "
                    "shared_list vector array function data map ref ref ");
    EXPECT_NE(xml.find("<number name=\"stepover\" type=\"real\" dim=\"[L]\" "
                       "expr=\"diameter * 0.5\">3</number>"),
              std::string::npos);
    EXPECT_NE(xml.find("<string name=\"title\" type=\"string\" expr=\"D${diameter}\">D6</string>"),
              std::string::npos);
    EXPECT_NE(xml.find("<data name=\"stock\" type=\"data\" datatype=\"stock\"/>"),
              std::string::npos);
    EXPECT_NE(xml.find("<ref name=\"broken\" target=\"nowhere\">\n<error>"), std::string::npos);
    EXPECT_EQ(xml_of(*map()), "<map type=\"map\"/>");
}

TEST(Xml, HostileNamesAndValuesStayWellFormed) {
    // What survives exactly, and what XML cannot hold: controls, a NUL,
    // malformed UTF-8 (a stray byte, an overlong form, a surrogate, a cut
    // sequence) and U+FFFE; each of the last becomes U+FFFD, one per byte of
    // malformed input.
    const std::string kept = "a<&>\"'b]]>c\t\n\r \xC3\xA9\xE2\x82\xAC\xF0\x9D\x84\x9E";
    const std::string lost =
        std::string("\0\x01\x0B\x1F", 4) + "\xFF\xC0\x80\xED\xA0\x80\xE2\x82" + "\xEF\xBF\xBE";
    std::string replaced;
    for (int i = 0; i < 13; ++i)
        replaced += "\xEF\xBF\xBD";

    vorParameterPtr value = text("");
    value->set_string(kept + lost);
    value->set_name(kept + lost);
    vorParameterPtr list(new vorParameterArray());
    list->add(vorParameterKey(), value);
    const std::string xml = xml_of(*list);
    ParsedXml parsed(xml);
    ASSERT_NE(parsed.root(), nullptr) << xml;
    xmlNode* element = xml_children(parsed.root()).at(0);
    EXPECT_EQ(xml_attribute(element, "name"), kept + replaced);
    EXPECT_EQ(xml_text(element), kept + replaced);

    EXPECT_EQ(xml_value(*text("x<y\tz")), "x&lt;y\tz");
    vorParameterPtr named = real(1);
    named->set_name("a\tb\"");
    EXPECT_EQ(xml_name(*named), "a&#9;b&quot;");
    EXPECT_EQ(xml_value(*map()), "");
}

TEST(Xml, ReferencesExpandOnceRoundACycle) {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    vorParameterPtr a = root->add("a", map());
    vorParameterPtr b = root->add("b", map());
    a->add("to_b", reference("b"));
    b->add("to_a", reference("a"));
    b->add("depth", real(3));

    ParsedXml parsed(xml_of(*a));
    ASSERT_NE(parsed.root(), nullptr);
    xmlNode* to_b = xml_children(parsed.root()).at(0);
    xmlNode* b_element = xml_children(to_b).at(0);
    EXPECT_EQ(xml_attribute(b_element, "name"), "b");
    xmlNode* to_a = xml_children(b_element).at(0);
    EXPECT_EQ(xml_attribute(to_a, "cycle"), "true");
    EXPECT_TRUE(xml_children(to_a).empty());
    EXPECT_EQ(xml_text(xml_children(b_element).at(1)), "3");

    vorParameterNoRefExpand no_expansion;
    EXPECT_EQ(xml_of(*a),
              "<map name=\"a\" type=\"map\">\n<ref name=\"to_b\" target=\"b\"/>\n</map>");
}

TEST(LibStateActive, ByIndexNameOrCurrentValue) {
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    vorParameterPtr flutes = root->add("flutes", real(4, DIM_NONE, SUB_INT));
    auto* method = new vorParameterEnum();
    method->add_state("raster", "", "", "");
    method->add_state("offset", "", "", "flutes >= 3");
    method->add_state("spiral", "", "", "'yes'");
    method->add_state("along_corner", "", "", "");
    method->set_string("offset");
    root->add("method", vorParameterPtr(method));
    root->add("chosen", reference("method"));

    const auto active = [&](const char* call) { return eval(root, call)->get_string().str(); };
    EXPECT_EQ(active("state_active(method; 1)"), "1");
    EXPECT_EQ(active("state_active(method; 'offset')"), "1");
    EXPECT_EQ(active("state_active(chosen)"), "1") << "a reference to it, its current state";
    EXPECT_EQ(active("state_active(method; 2)"), "0") << "a condition giving a text";
    EXPECT_EQ(active("state_active(method; -2)"), "0");
    EXPECT_EQ(active("state_active(method; -4)"), "1");
    EXPECT_EQ(active("state_active(method; 'alongcorner')"), "1") << "an old name";
    EXPECT_EQ(active("state_active(method; 'nothing')"), "0");
    EXPECT_EQ(active("state_active(method; 9)"), "0");
    flutes->set_string("2");
    EXPECT_EQ(active("state_active(method; 'offset')"), "0");
    EXPECT_EQ(active("state_active(method)"), "0");
    method->set_string("gone");
    EXPECT_EQ(active("state_active(method)"), "0") << "a value that names no state";

    for (const char* wrong :
         {"state_active()", "state_active(flutes; 0)", "state_active(method; 1; 2)",
          "state_active(method; {1})", "state_active(nothing; 0)"})
        EXPECT_EQ(eval(root, wrong)->subtype(), ERR_INVALID_ARGUMENTS) << wrong;
}
