#include "repl_completion.h"

#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/parameter/vorParameterIter.h"

#include <algorithm>
#include <memory>

namespace vorparam {

namespace {

bool is_path_char(unsigned char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.' || c == '[' || c == ']' || c >= 0x80;
}

char ascii_lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool starts_with_ignoring_case(std::string_view text, std::string_view prefix) {
    if (prefix.size() > text.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (ascii_lower(text[i]) != ascii_lower(prefix[i]))
            return false;
    return true;
}

/// What follows a candidate that can be continued: "." into a map, "[" into
/// an array, "(" to call a function.
const char* continuation(const vorParameter& member) {
    switch (member.get_ref()->type()) {
    case TYPE_MAP:
        return ".";
    case TYPE_ARRAY:
        return "[";
    case TYPE_FUNCTION:
        return "(";
    default:
        return "";
    }
}

/// Collects the candidates that begin with the word, up to the limit.
class CandidateList {
public:
    explicit CandidateList(std::string_view word)
        : m_word(word) {}

    bool full() const { return m_found.size() >= max_completion_candidates; }
    void offer(std::string candidate) {
        if (!full() && starts_with_ignoring_case(candidate, m_word))
            m_found.push_back(std::move(candidate));
    }
    std::vector<std::string> take() { return std::move(m_found); }

private:
    std::string_view m_word;
    std::vector<std::string> m_found;
};

/// Offers every member of `container`, each written after `path` in the
/// container's own syntax: "path.name" in a map, "path[3]" in an array.
void offer_members(const vorParameterPtr& container, const std::string& path,
                   CandidateList& candidates) {
    const std::unique_ptr<vorBaseParIter> member(vorBaseParIter::create(container));
    while (!candidates.full() && ++*member) {
        const vorParameterKey key = member->index();
        const bool needs_dot = !path.empty() && key.type() != TYPE_ARRAY;
        candidates.offer(path + (needs_dot ? "." : "") + key.str().str() +
                         continuation(*(*member)()));
    }
}

/// The standard functions' names, sorted.
std::vector<std::string> standard_function_names() {
    const vorParameterLib library;
    const vorParameterPtr names = library[vorParameterKey("_keys")];
    std::vector<std::string> sorted;
    const std::unique_ptr<vorBaseParIter> name(vorBaseParIter::create(names));
    while (++*name)
        sorted.push_back((*name)()->get_string().str());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace

std::size_t completion_word_start(std::string_view before_cursor) {
    std::size_t start = before_cursor.size();
    while (start > 0 && is_path_char(static_cast<unsigned char>(before_cursor[start - 1])))
        --start;
    return start;
}

std::vector<std::string> completion_candidates(const vorParameterPtr& root, std::string_view word) {
    CandidateList candidates(word);
    const std::size_t separator = word.find_last_of(".[");
    if (separator == std::string_view::npos) {
        offer_members(root, "", candidates);
        for (const std::string& name : standard_function_names())
            candidates.offer(name + "(");
        return candidates.take();
    }
    const std::string path(word.substr(0, separator));
    if (path.empty())
        return {};
    const vorParameterPtr found = root[vorParameterKey(utString(path))];
    const vorParameterPtr container = vorParameterPtr::share(found->get_ref());
    if (container->type() == TYPE_MAP || container->type() == TYPE_ARRAY)
        offer_members(container, path, candidates);
    return candidates.take();
}

std::string common_prefix(const std::vector<std::string>& candidates) {
    if (candidates.empty())
        return {};
    std::string_view prefix = candidates.front();
    for (const std::string& candidate : candidates) {
        const auto differ =
            std::mismatch(prefix.begin(), prefix.end(), candidate.begin(), candidate.end());
        prefix = prefix.substr(0, static_cast<std::size_t>(differ.first - prefix.begin()));
    }
    return std::string(prefix);
}

} // namespace vorparam
