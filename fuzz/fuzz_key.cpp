// libFuzzer target: any text as a parameter key. The key is taken apart the
// way map and iterator code does, looked up from the root and from a nested
// map, and used to add, find and remove a member of a scratch map.
#include "fuzz_tree.h"

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
    add_and_remove(key);
    return 0;
}
