// The proxy that sends changes to listeners and the query that evaluates a
// text to a plain value.

#include "../support/prelude.h"

namespace {

struct Recorder : vorParameterProxyListener {
    std::vector<std::string> seen;
    vorParameterProxyListener* remove_on_call = nullptr;
    void parameter_changed(vorParameter& changed) override {
        seen.push_back(vorParameter::get_name(changed, 1).str());
        if (remove_on_call)
            vorParameterProxy::instance().remove_listener(remove_on_call);
    }
};

} // namespace

TEST(Proxy, SendsEachChangeToTheListenersOfThatMoment) {
    vorParameterProxy& proxy = vorParameterProxy::instance();
    vorParameterRoot root("machining");
    vorParameterPtr tool = root.add("tool", map());
    vorParameterPtr depth = tool->add("depth", real(1));
    tool->set_onmodify_callback(&vorParameterProxy::onmodify);

    Recorder first, second;
    EXPECT_TRUE(proxy.add_listener(&first));
    EXPECT_FALSE(proxy.add_listener(&first)) << "registered once";
    EXPECT_TRUE(proxy.add_listener(&second));
    depth->set_double(2);
    EXPECT_EQ(first.seen, std::vector<std::string>{"machining.tool"});
    EXPECT_EQ(second.seen, first.seen);

    // A listener that removes the next one while the change travels.
    first.remove_on_call = &second;
    depth->set_double(3);
    EXPECT_EQ(first.seen.size(), 2u);
    EXPECT_EQ(second.seen.size(), 1u);
    EXPECT_EQ(proxy.num_listeners(), 1u);

    {
        vorBlockParUpdateCallbacks blocked;
        depth->set_double(4);
    }
    EXPECT_EQ(first.seen.size(), 2u) << "blocked callbacks send nothing";
    EXPECT_TRUE(proxy.remove_listener(&first));
    EXPECT_FALSE(proxy.remove_listener(&first));
}

namespace {

vorParameterPtr always_seven(const utString&, const vorParameter*) {
    return real(7);
}

} // namespace

TEST(Query, EvaluatesTextsThroughTheSettableFunction) {
    vorQueryParameter& query = vorQueryParameter::instance();
    vorParameterLibRoot root("machining");
    vorParameterPtr tool = root.add("tool", map());
    tool->add("diameter", real(6));
    tool->add("name", text("mill"));

    EXPECT_DOUBLE_EQ(query.get_double("2 * 3"), 6.0) << "no scope: literals work";
    EXPECT_TRUE(query.query("tool.diameter")->is_error());
    query.set_scope(&root);
    EXPECT_DOUBLE_EQ(query.get_double("tool.diameter / 4"), 1.5);
    EXPECT_EQ(query.get_int("tool.diameter / 4"), 2);
    EXPECT_EQ(query.get_string("tool.name + '!'"), "mill!");
    EXPECT_DOUBLE_EQ(query.get_double("sqrt(tool.diameter * 6)"), 6.0);
    EXPECT_EQ(query.get_string("nosuch"), "#ERROR: Invalid name");
    EXPECT_EQ(query.get_double("nosuch"), 0.0);

    EXPECT_EQ(query.set_eval_function(&always_seven), &vorQueryParameter::evaluate_in_scope);
    EXPECT_EQ(query.get_int("anything"), 7);
    EXPECT_EQ(query.set_eval_function(nullptr), &always_seven);
    EXPECT_DOUBLE_EQ(query.get_double("tool.diameter"), 6.0);
    query.set_scope(nullptr);
}

TEST(RootTables, ActiveExpressionsAndWhatDependsOnWhat) {
    vorParameterRoot root("machining");
    vorParameterPtr tool = root.add("Tool", map());
    tool->add("Diameter", real(6));
    root.add("Depth", real(2));
    root.add("finish", real(1))->set_active("Depth > 0 & Tool.Diameter < 10 & depth2 > x");
    tool->add("flutes", real(2))->set_active("Depth>1|Tool.Diameter==6");
    root.add("plain", real(3));
    // A name far longer than any parameter's is passed over, not matched.
    root.add("odd", real(4))->set_active("Q" + utString(std::string(100000, 'a')) + " > 0");

    utStringutStringcoSetcoTable readers;
    vorParameterRoot::build_active_expr_pars_table(root, readers);
    ASSERT_EQ(readers.size(), 3u);
    const utStringcoSet* finish = readers.find("machining.finish");
    ASSERT_NE(finish, nullptr);
    EXPECT_EQ(std::vector<utString>(finish->begin(), finish->end()),
              (std::vector<utString>{"Depth", "Tool.Diameter"}));
    ASSERT_NE(readers.find("machining.Tool.flutes"), nullptr);
    EXPECT_TRUE(readers.find("machining.odd")->empty());

    utStringutStringcoSetcoTable dependants;
    vorParameterRoot::build_par_dependency_table(root, dependants);
    ASSERT_EQ(dependants.size(), 2u);
    EXPECT_EQ(
        std::vector<utString>(dependants.find("Depth")->begin(), dependants.find("Depth")->end()),
        (std::vector<utString>{"machining.Tool.flutes", "machining.finish"}))
        << "in the order the walk met them";
    EXPECT_EQ(dependants.find("Tool.Diameter")->size(), 2u);
}
