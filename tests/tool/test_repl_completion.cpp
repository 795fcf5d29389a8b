// Tab completion of vorparam repl: which words the text typed so far can
// become, on the sample tree and on a saved file with arrays.
#include "demo_tree.h"
#include "file_tree.h"
#include "repl_completion.h"

#include "../support/prelude.h"

#include <algorithm>

namespace {

using vorparam::completion_candidates;
using Words = std::vector<std::string>;

bool contains(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

TEST(ReplCompletion, WalksThePathAfterMembersThenFunctionsAndIsBounded) {
    const vorParameterPtr root = vorparam::build_demo_tree();
    EXPECT_EQ(completion_candidates(root, "tool.di"), Words{"tool.diameter"});
    // Case is ignored, as lookups ignore it; the member's name is written as
    // the tree spells it, the path before it as typed.
    EXPECT_EQ(completion_candidates(root, "TOOL.Di"), Words{"TOOL.diameter"});
    EXPECT_EQ(completion_candidates(root, "tool."),
              (Words{"tool.diameter", "tool.flutes", "tool.name"}));
    // A reference completes as what it designates.
    EXPECT_EQ(completion_candidates(root, "strategy.cutter.fl"), Words{"strategy.cutter.flutes"});
    EXPECT_EQ(completion_candidates(root, "strategy.cu"), Words{"strategy.cutter."});
    // Nothing below a single value, an unknown path or an empty one.
    EXPECT_TRUE(completion_candidates(root, "tool.diameter.").empty());
    EXPECT_TRUE(completion_candidates(root, "nosuch.").empty());
    EXPECT_TRUE(completion_candidates(root, ".x").empty());

    root->add("double", function("2 * argv[0]"));
    EXPECT_EQ(completion_candidates(root, "sq"), Words{"sqrt("});
    const Words st = completion_candidates(root, "st");
    ASSERT_FALSE(st.empty());
    EXPECT_EQ(st.front(), "strategy.");
    EXPECT_TRUE(contains(st, "string("));
    EXPECT_TRUE(std::is_sorted(st.begin() + 1, st.end()));
    // A user function in the tree completes like the standard ones.
    EXPECT_TRUE(contains(completion_candidates(root, "dou"), "double("));
    // Every standard function is offered for an empty word.
    EXPECT_GE(completion_candidates(root, "").size(), 94u);

    vorParameterPtr big(new vorParameterMap());
    for (int i = 0; i < 1500; ++i)
        big->add(vorParameterKey(utString("m" + std::to_string(i))), real(i));
    root->add("big", big);
    EXPECT_EQ(completion_candidates(root, "big.").size(), vorparam::max_completion_candidates);
    EXPECT_EQ(completion_candidates(root, "big.m149").size(), 11u);
}

TEST(ReplCompletion, ArraysCompleteByIndexAndWordsStartAndShareAPrefix) {
    std::ostringstream report;
    const vorparam::FileTree file =
        vorparam::load_file_tree(VORPARAMETER_SOURCE_DIR "/tests/tool/job.vor", report);
    ASSERT_TRUE(file.complete()) << report.str();
    const vorParameterPtr root = vorParameterPtr::share(file.root.get());
    EXPECT_EQ(completion_candidates(root, "pas"), Words{"passes["});
    EXPECT_EQ(completion_candidates(root, "passes["), (Words{"passes[0]", "passes[1]"}));
    EXPECT_EQ(completion_candidates(root, "passes[1"), Words{"passes[1]"});
    EXPECT_EQ(completion_candidates(root, "tool.h"), Words{"tool.holder"});

    using vorparam::completion_word_start;
    EXPECT_EQ(completion_word_start("sqrt(tool.di"), 5u);
    EXPECT_EQ(completion_word_start("a * list[2].na"), 4u);
    EXPECT_EQ(completion_word_start("1 + "), 4u);
    // Bytes of non-ASCII names belong to the word.
    EXPECT_EQ(completion_word_start("x+\xC3\xA9t\xC3\xA9"), 2u);

    using vorparam::common_prefix;
    EXPECT_EQ(common_prefix({"tool.diameter", "tool.name"}), "tool.");
    EXPECT_EQ(common_prefix({"Depth", "depth2"}), "");
    EXPECT_EQ(common_prefix({}), "");
}

} // namespace
