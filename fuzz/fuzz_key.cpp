// libFuzzer target: any text as a parameter key. The key is taken apart the
// way map and iterator code does, looked up from the root and from a nested
// map, and used to add, find and remove a member of a scratch map. A lookup
// of the text itself, which a map may answer without a key, must give the
// key lookup's answer.
#include "fuzz_tree.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t max_input = 1024;

void take_apart(const vorParameterKey& key) {
    key.str();
    key.last();
    key.parent().str();
    key.first_key().str();
    key.remainder().str();
    (key + key).str();
    (vorParameterKey("tool") + key).str();
    int index = 0;
    key.index(index);
}

void look_up(const vorParameterPtr& scope, const vorParameterKey& key) {
    (*scope)[key]->get_string();
    scope->resolve(key)->get_string();
    const vorParameter& constant = *scope;
    constant.resolve(key)->get_double();
}

/// The member found, or what a value made for the occasion prints.
std::pair<const vorParameter*, utString> answer(const vorParameterPtr& found) {
    if (found->parent())
        return {found.get(), utString()};
    return {nullptr, found->print(0)};
}

void compare_text_lookup(const vorParameterPtr& scope, const utString& text,
                         const vorParameterKey& key) {
    if (text.view().find('\0') != std::string_view::npos)
        return; // the text would end there
    if (answer((*scope)[text.c_str()]) != answer((*scope)[key])) {
        std::fprintf(stderr, "lookup of the text \"%s\" differs from its key's\n", text.c_str());
        std::abort();
    }
}

void add_and_remove(const vorParameterKey& key) {
    vorParameterPtr scratch = fuzz_map();
    scratch->add(key, fuzz_number(SUB_REAL, DIM_LENGTH, 1));
    (*scratch)[key]->get_double();
    scratch->remove(key);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    utString text;
    if (!fuzz_accept(data, size, max_input, text))
        return 0;
    const vorParameterKey key(text);
    take_apart(key);
    vorParameterPtr root = fuzz_build_tree();
    look_up(root, key);
    look_up((*root)["tool"], key);
    look_up((*root)["passes"], key);
    compare_text_lookup(root, text, key);
    compare_text_lookup((*root)["tool"], text, key);
    add_and_remove(key);
    return 0;
}
