// Vectors: accessor names, "_keys", writing from array expressions, copies
// and defaults.

#include "container_test_helpers.h"

#include "../support/prelude.h"

using namespace container_test;

namespace {

vorParameterVector& as_vector(const vorParameterPtr& p) {
    return static_cast<vorParameterVector&>(*p);
}

} // namespace

TEST(Vector, AccessorNamesAddressElementsWithinTheSize) {
    vorParameterPtr v = vector_of(3, VECTOR_ACCESS_XYZ);
    v["x"]->set_double(1);
    v["Y"]->set_double(2);
    v["2"]->set_double(3);
    EXPECT_EQ(values_of(v), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(v["w"]->subtype(), ERR_INVALID_NAME);
    vorParameterPtr keys = v["_keys"];
    EXPECT_EQ(keys["2"]->get_string(), "Z");
    EXPECT_EQ(v["_keys"].get(), keys.get()) << "the keys list is made once";
    EXPECT_EQ(v["_keys[1]"]->get_string(), "Y");
    EXPECT_EQ(v["_KEYS"]->subtype(), ERR_INVALID_NAME);

    vorParameterPtr two = vector_of(2, VECTOR_ACCESS_XYZ);
    EXPECT_EQ(two["Z"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(two["_keys"]->size(), 2);

    vorParameterPtr ordinal = vector_of(4, VECTOR_ACCESS_ORDINAL);
    EXPECT_EQ(ordinal["fourth"].get(), ordinal["3"].get());
    as_vector(ordinal).set_access_type(VECTOR_ACCESS_RGB);
    EXPECT_EQ(ordinal["_keys"]->size(), 3) << "new names, new keys list";

    vorParameterVector& custom = as_vector(v);
    custom.set_access_type(" a , b ,c");
    EXPECT_EQ(custom.access_type(), VECTOR_ACCESS_CUSTOM);
    EXPECT_EQ(v["B"].get(), v["1"].get());
    custom.set_access_type(static_cast<vorParameterVectorAccessType>(42));
    EXPECT_EQ(custom.access_type(), 42);
    EXPECT_EQ(v["c"].get(), v["2"].get()) << "an unknown access type keeps the names";
    custom.set_access_type(VECTOR_ACCESS_NONE);
    EXPECT_EQ(v["a"]->subtype(), ERR_INVALID_NAME);
    EXPECT_EQ(v["_keys"]->subtype(), ERR_INVALID_NAME);

    vorParameterPtr swapped = vector_of(3, VECTOR_ACCESS_XYZ);
    EXPECT_EQ(swapped->remove("Y")->get_double(), 0);
    EXPECT_EQ(swapped["_keys"]->size(), 2) << "keys follow the size";
}

TEST(Vector, SetStringCopiesValuesFromAnArrayOfTheSameSize) {
    vorParameterMap scope;
    vorParameterPtr v = scope.add("v", vector_of(3, VECTOR_ACCESS_XYZ));
    vorParameterPtr angle(new vorParameterNumeric(SUB_ANGLE, vorDimensions(), 0));
    v->remove("0");
    v->add("0", angle);

    v->set_string("{1;2;3}");
    EXPECT_EQ(values_of(v), (std::vector<double>{1, 2, 3}));
    EXPECT_EQ(v["X"].get(), angle.get()) << "elements are written, not replaced";
    EXPECT_EQ(angle->subtype(), SUB_ANGLE);
    for (const char* ignored : {"{4;5}", "{4;5;6;7}", "7", "{}", "", "{1;"})
        v->set_string(ignored);
    EXPECT_EQ(values_of(v), (std::vector<double>{1, 2, 3}));

    v->set_string("{Y;X;Z*2}");
    EXPECT_EQ(values_of(v), (std::vector<double>{2, 1, 6}));

    v->lock(1);
    v->set_string("{0;0;0}");
    EXPECT_EQ(values_of(v), (std::vector<double>{2, 1, 6}));
}

TEST(Vector, CopiesKeepAccessorsAndResetRestoresDefaults) {
    vorParameterPtr v = vector_of(3, VECTOR_ACCESS_XYZ);
    v->set_string("{1;2;3}");
    vorParameterPtr copy = v.copy();
    EXPECT_EQ(copy["z"]->get_double(), 3);
    EXPECT_NE(copy["z"].get(), v["z"].get());

    copy->copy_value_from(*array_of({7, 8, 9}));
    EXPECT_EQ(values_of(copy), (std::vector<double>{7, 8, 9}));
    copy->copy_value_from(*vector_of(2, VECTOR_ACCESS_NONE));
    EXPECT_EQ(values_of(copy), (std::vector<double>{7, 8, 9}));

    v->set_defaults("{0;0;1}", "");
    v->set_string("{5;5;5}");
    v->reset();
    EXPECT_EQ(values_of(v), (std::vector<double>{0, 0, 1}));
}
