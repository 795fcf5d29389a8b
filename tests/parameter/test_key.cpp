// Keys: parsing, the canonical text, components, the cache and synonyms.

#include "../support/prelude.h"

TEST(Key, ParsesComponentsAndTheCanonicalText) {
    EXPECT_EQ(vorParameterKey("tool.diameter").type(), TYPE_MAP);
    EXPECT_EQ(vorParameterKey("tool.diameter").first(), "tool");
    EXPECT_EQ(vorParameterKey("tool.diameter").remainder_str(), "diameter");
    for (const char* malformed : {"", "   ", ".x", "a b", "[3x]", "[3"})
        EXPECT_EQ(vorParameterKey(malformed).type(), TYPE_ERROR) << malformed;
    EXPECT_EQ(vorParameterKey("a b").first(), "a");
    // The parsing rules skip one "." after a name and keep what follows as the
    // remainder, so these are name keys, not malformed ones.
    EXPECT_EQ(vorParameterKey("a.").type(), TYPE_MAP);
    EXPECT_EQ(vorParameterKey("a..b").type(), TYPE_MAP);
    EXPECT_EQ(vorParameterKey("a..b").remainder_str(), ".b");
    EXPECT_EQ(vorParameterKey("[3x]").first(), "[3x]");

    vorParameterKey spaced("[ 3 ]");
    EXPECT_EQ(spaced.type(), TYPE_ARRAY);
    EXPECT_EQ(spaced.first(), " 3 ");
    EXPECT_EQ(spaced.str(), "[ 3 ]");
    int index = 0;
    EXPECT_TRUE(spaced.index(index));
    EXPECT_EQ(index, 3);
    EXPECT_EQ(vorParameterKey("-1").type(), TYPE_ARRAY);
    EXPECT_EQ(vorParameterKey("7abc").type(), TYPE_ARRAY);
    EXPECT_FALSE(vorParameterKey("7abc").index(index));
    EXPECT_FALSE(vorParameterKey("[99999999999]").index(index)) << "beyond int";
    EXPECT_EQ(vorParameterKey("Länge").type(), TYPE_MAP);
    EXPECT_EQ(vorParameterKey("Länge").first(), "Länge");

    // The canonical text normalises only the first component.
    EXPECT_EQ(vorParameterKey("3.name").str(), "[3].name");
    EXPECT_EQ(vorParameterKey("list.3.name").str(), "list.3.name");
    EXPECT_EQ(vorParameterKey("a[2]").str(), "a[2]");
    EXPECT_EQ(vorParameterKey(3, "name").str(), "[3].name");
    EXPECT_EQ(vorParameterKey(3, "").str(), "[3]");
    vorParameterKey current("current.depth");
    EXPECT_EQ(current.first(), "toolpath");
    EXPECT_EQ(current.str(), "toolpath.depth");

    vorParameterKey abc("a.b.c");
    EXPECT_EQ(abc.parent().str(), "a.b");
    EXPECT_EQ(abc.last(), "c");
    EXPECT_EQ(abc.remainder().str(), "b.c");
    vorParameterKey indexed("a[2]");
    EXPECT_EQ(indexed.parent().str(), "a");
    EXPECT_EQ(indexed.last(), "[2]");
    EXPECT_TRUE(vorParameterKey("a").parent().empty());
    EXPECT_EQ((vorParameterKey("a") + vorParameterKey("[2]")).str(), "a[2]");
    EXPECT_EQ((vorParameterKey("a") + vorParameterKey("b")).str(), "a.b");
    vorParameterKey k("x.y");
    EXPECT_TRUE(vorParameterKey("") + k == k);
}

TEST(Key, NameKeysAndRemaindersShareOneRecordIndexKeysNever) {
    EXPECT_TRUE(vorParameterKey("a") == vorParameterKey("a"));
    EXPECT_TRUE(vorParameterKey("$$tol") == vorParameterKey("tol"));
    EXPECT_FALSE(vorParameterKey("[2]") == vorParameterKey("[2]"));
    EXPECT_TRUE(vorParameterKey("$").empty());

    utStringutStringcoTable synonyms;
    synonyms.set("dia", "diameter");
    vorParameterKeyImpl::initialize_synonyms(synonyms);
    EXPECT_EQ(vorParameterKey("dia").str(), "diameter");
    EXPECT_TRUE(vorParameterKey("dia") == vorParameterKey("diameter"));

    vorParameterKey path("holder.remainder_probe");
    const vorParameterKey rest = path.remainder();
    EXPECT_TRUE(rest == vorParameterKey("remainder_probe"));
    EXPECT_TRUE(path.remainder() == rest);

    utStringutStringcoTable later;
    later.set("remainder_probe", "probe_target");
    vorParameterKeyImpl::initialize_synonyms(later);
    EXPECT_EQ(path.remainder().str(), "probe_target") << "a synonym added later applies too";
    EXPECT_TRUE(path.remainder() == vorParameterKey("probe_target"));

    vorParameterKey indexed("list[2]");
    const vorParameterKey index_rest = indexed.remainder();
    EXPECT_FALSE(indexed.remainder() == index_rest) << "index keys never share a record";
    vorParameterKey long_rest{utString("a." + std::string(5000, 'n'))};
    const vorParameterKey uncached = long_rest.remainder();
    EXPECT_EQ(uncached.type(), TYPE_MAP);
    EXPECT_FALSE(long_rest.remainder() == uncached) << "nor names too long for the cache";
}

TEST(Key, HugePathsAreMalformedAndDroppedRecordsAreNeverReached) {
    std::string huge(1 << 20, 'a');
    vorParameterKey big{utString(huge)};
    EXPECT_EQ(big.type(), TYPE_ERROR);
    std::string deep;
    for (int i = 0; i < 1000; ++i)
        deep += "a.";
    deep += "a";
    EXPECT_EQ(vorParameterKey(utString(deep)).type(), TYPE_ERROR);
    std::string long_name(5000, 'n');
    vorParameterKey uncached{utString(long_name)};
    EXPECT_EQ(uncached.type(), TYPE_MAP);
    EXPECT_FALSE(uncached == vorParameterKey(utString(long_name)))
        << "names too long for the cache are parsed anew";

    // The path remembers its remainder's record without holding it. Once no
    // key holds that record, a flood of new texts makes the cache drop it;
    // the path must then look the remainder up again, not reach the freed
    // record (the sanitizer build would report that).
    const vorParameterKey path("holder.dropped_rest");
    EXPECT_EQ(path.remainder().str(), "dropped_rest");
    for (int i = 0; i < 70000; ++i)
        vorParameterKey flood(utString("flood" + std::to_string(i)));
    const vorParameterKey rest = path.remainder();
    EXPECT_EQ(rest.str(), "dropped_rest");
    EXPECT_TRUE(rest == vorParameterKey("dropped_rest"));
    EXPECT_TRUE(path.remainder() == rest);
}
