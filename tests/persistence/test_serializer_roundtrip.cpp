// Property: any tree saved, loaded into a fresh schema-less root and saved
// again gives the same body, and the same values.

#include "../support/random_tree.h"
#include "../support/saved_file.h"

#include "../support/prelude.h"

namespace {

/// "key = value" for every active leaf, in walk order.
std::string values(const vorParameterRoot& root) {
    std::string listing;
    vorParameterIter walk(vorParameterPtr(coPrfExtern(), const_cast<vorParameterRoot*>(&root)));
    walk.set_leaf_only(1);
    walk.set_active_only(1);
    while (++walk)
        listing += walk.index().str() + " = " + walk()->get_string().str() + "\n";
    return listing;
}

TEST(SerializerRoundTrip, RandomTreesComeBackUnchanged) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TreeMaker maker(seed);
        vorParameterOpenRoot original("machining");
        maker.fill(original, 0);
        const std::string saved = saved_body(original);
        const std::unique_ptr<vorParameterOpenRoot> loaded =
            open_saved(R"({"type":"machining","version":"0","time":"0"})" + saved, SERIAL_OK);
        ASSERT_EQ(saved_body(*loaded), saved);
        EXPECT_EQ(values(*loaded), values(original)) << saved;
    }
}

TEST(SerializerRoundTrip, AnOpenedVectorKeepsTheLengthOfItsTypeWord) {
    // A file that gives a vector more elements than its type word says: had
    // the vector grown, the extra element would read back as one of the
    // vector's own kind, and the second save would differ from the first.
    const std::string header = R"({"type":"machining","version":"0","time":"0"})";
    const std::pair<const char*, vorParameterSerialError> extras[] = {
        {R"("3")", SERIAL_SOME_FAILED}, {"(\n)", SERIAL_OK}, {"{\n}", SERIAL_OK}};
    for (const auto& [extra, error] : extras) {
        const std::unique_ptr<vorParameterOpenRoot> opened =
            open_saved(header + R"({"point" "V2R[L]" "" : ("1", "2", )" + extra + ")}", error);
        const std::string saved = saved_body(*opened);
        EXPECT_NE(saved.find(R"("V2R[L]")"), std::string::npos) << saved;
        EXPECT_EQ(saved_body(*open_saved(header + saved, SERIAL_OK)), saved);
    }
}

} // namespace
