// Attacks on the XML rendering: trees wide, deep and hostile enough that a
// quadratic path, a recursive walk or an unbounded expansion of references
// would time out, overflow the stack or exhaust memory.

#include "../support/parsed_xml.h"

#include "../support/prelude.h"

namespace {

int count_elements(xmlNode* element) {
    int count = 1;
    for (xmlNode* child : xml_children(element))
        count += count_elements(child);
    return count;
}

} // namespace

TEST(StressXml, HundredThousandParametersWideOrLevelsDeep) {
    vorParameterPtr top = map();
    for (int m = 0; m < 500; ++m) {
        vorParameterPtr op = top->add(vorParameterKey("op" + std::to_string(m)), map());
        for (int i = 0; i < 100; ++i)
            op->add(vorParameterKey("v" + std::to_string(i)), real(i));
        vorParameterPtr list = op->add("passes", vorParameterPtr(new vorParameterList(real(0))));
        list->set_int(99);
    }
    const std::optional<utString> xml = to_xml(*top);
    ASSERT_TRUE(xml);
    ParsedXml parsed(xml->str());
    ASSERT_NE(parsed.root(), nullptr);
    EXPECT_EQ(count_elements(parsed.root()), 1 + 500 * (1 + 100 + 1 + 99));

    // Containers below the depth limit are left out, and the last one shown
    // is marked.
    vorParameterPtr deep = map();
    vorParameterPtr level = deep;
    for (int i = 0; i < 100000; ++i)
        level = level->add("m", map());
    level->add("x", real(1));
    const std::optional<utString> deep_xml = to_xml(*deep);
    ASSERT_TRUE(deep_xml);
    ParsedXml deep_parsed(deep_xml->str());
    ASSERT_NE(deep_parsed.root(), nullptr);
    int depth = 1;
    xmlNode* element = deep_parsed.root();
    for (; !xml_children(element).empty(); ++depth)
        element = xml_children(element).at(0);
    EXPECT_EQ(depth, vorParameter::max_tree_depth + 1);
    EXPECT_EQ(xml_attribute(element, "truncated"), "true");
    EXPECT_EQ(xml_attribute(deep_parsed.root(), "truncated"), "");
}

TEST(StressXml, MultiplyingReferencesAndHugeHostileValuesAreBounded) {
    // Each map refers twice to the next: 2^40 copies of the last, expanded.
    vorParameterPtr root(new vorParameterLibRoot("Job"));
    for (int i = 0; i < 40; ++i) {
        vorParameterPtr level = root->add(vorParameterKey("m" + std::to_string(i)), map());
        const std::string next = "m" + std::to_string(i + 1);
        level->add("a", reference(next));
        level->add("b", reference(next));
    }
    root->add("m40", map())
        ->add("text", vorParameterPtr(new vorParameterString(std::string(4096, 'x'))));
    EXPECT_EQ(vorEvaluator(root.get()).evaluate("to_xml(m0)")->subtype(), ERR_DOMAIN);
    EXPECT_TRUE(to_xml(*root["m30"])) << "2^10 copies fit";

    std::string value;
    for (int i = 0; i < 1 << 20; ++i)
        value += "<&\x01\xFF\"";
    const std::optional<utString> xml = to_xml(*text(value));
    ASSERT_TRUE(xml);
    ParsedXml parsed(xml->str());
    ASSERT_NE(parsed.root(), nullptr);
    EXPECT_EQ(xml_text(parsed.root()).size(), std::size_t(1 << 20) * (2 + 3 + 3 + 1));
}
