// User functions (a body evaluated with the call's arguments as "argv") and
// member functions (a native operation bound to a parameter).

#include "lib_test_tree.h"

#include "../support/prelude.h"

namespace {

const vorParameterFunction& as_function(const vorParameterPtr& p) {
    return *vorParameterFunction::ut_dynamic_cast(p.get());
}

} // namespace

TEST(UserFunction, UserAndMemberFunctions) {
    vorParameterPtr root = example_tree();
    vorParameterPtr f = root->add("f", function("argv[0] + argv[1]"));
    EXPECT_EQ(f->subtype(), SUB_FUNCTION);
    EXPECT_EQ(f->print(0), "(FUNCTION) argv[0] + argv[1]\n");
    EXPECT_EQ(f->operate_binary("(", arguments({real(2), real(3)}))->get_double(), 5.0);
    EXPECT_TRUE(as_function(f).get_argv().is_null());
    EXPECT_EQ((*f)["argv"]->subtype(), ERR_UNKNOWN) << "argv outside a call is the empty handle";
    EXPECT_EQ((*f)["argv[0]"]->subtype(), ERR_INVALID_NAME);

    // Other names resolve from where the function stands; a failing body is
    // the result, and argv is cleared all the same.
    f->set_string("argv[0] * depth");
    EXPECT_EQ(eval(root, "f(2)")->get_double(), 24.0);
    EXPECT_TRUE(eval(root, "f()")->is_error());
    EXPECT_TRUE(as_function(f).get_argv().is_null());

    f->lock(1);
    f->set_string("0");
    EXPECT_EQ(f->get_string(), "argv[0] * depth") << "a locked body stays";
    EXPECT_TRUE(as_function(f.copy()).get_argv().is_null());

    // The inner call of the same function leaves argv null for the rest of
    // the outer body, so the outer "argv" no longer resolves.
    root->add("g", vorParameterPtr(
                       new vorParameterFunction("evaluate(argv[0]; this) * 10 + error(argv)")));
    EXPECT_EQ(eval(root, "g('5')")->get_double(), 50.0);
    EXPECT_EQ(eval(root, "g(\"g('5')\")")->get_double(), 501.0);

    root->add("endless", vorParameterPtr(new vorParameterFunction("endless(1)")));
    vorParameterPtr result = eval(root, "endless(1)");
    EXPECT_TRUE(result->is_error()) << "stops at the nesting limit instead of the stack's end";
    EXPECT_EQ(eval(root, "hypot(3; 4)")->get_double(), 5.0) << "and leaves no state behind";

    // A member function calls its native operation.
    vorParameterMemberFunction unbound(nullptr);
    EXPECT_EQ(unbound.subtype(), SUB_MEMBER_FUNCTION);
    EXPECT_EQ(unbound.operate_binary("(", arguments({}))->subtype(), ERR_DOMAIN);

    vorParameterPtr count(
        new vorParameterMemberFunction([](const vorParameter& self, const vorParameterPtr& args) {
            return real(args->size() + (self.get_name() == "count" ? 100 : 0));
        }));
    root->add("count", count);
    EXPECT_EQ(eval(root, "count(1; 2; 3)")->get_double(), 103.0);
    EXPECT_EQ(count.copy()->operate_binary("(", arguments({}))->get_double(), 100.0);
    EXPECT_EQ(count->operate_binary("+", real(1))->subtype(), ERR_TYPE);
}
