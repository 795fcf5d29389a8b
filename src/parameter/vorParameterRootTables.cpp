//===- vorParameterRootTables.cpp - Who reads whom in active expressions --===//

#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterRoot.h"

#include <regex>

namespace {

bool is_name_char(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.';
}

/// Adds to `names` the capitalised dotted names of `expression`. The pattern
/// runs over each stretch of name characters alone, and stretches longer
/// than the limit are passed over, so the regular expression engine (which
/// recurses per character) never sees a long text.
void add_mentioned_names(const utString& expression, utStringcoSet& names) {
    static const std::regex pattern(R"([A-Z]\w*(?:\.[A-Z]\w*)*)");
    const std::string_view text = expression.view();
    std::size_t pos = 0;
    while (pos < text.size()) {
        if (!is_name_char(text[pos])) {
            ++pos;
            continue;
        }
        const std::size_t start = pos;
        while (pos < text.size() && is_name_char(text[pos]))
            ++pos;
        if (pos - start > vorParameterRoot::max_table_name_length)
            continue;
        const std::string stretch(text.substr(start, pos - start));
        for (std::sregex_iterator match(stretch.begin(), stretch.end(), pattern), end; match != end;
             ++match)
            names.insert(utString(match->str()));
    }
}

void add_if_conditional(const vorParameter& node, utStringutStringcoSetcoTable& table) {
    const utString& expression = node.get_active_expr();
    if (expression.empty())
        return;
    utStringcoSet names;
    add_mentioned_names(expression, names);
    table.set(vorParameter::get_name(node, 1), std::move(names));
}

} // namespace

void vorParameterRoot::build_active_expr_pars_table(const vorParameter& root,
                                                    utStringutStringcoSetcoTable& table) {
    add_if_conditional(root, table);
    vorParameterIter walk(&root);
    while (++walk)
        add_if_conditional(*walk(), table);
}

void vorParameterRoot::build_par_dependency_table(const vorParameter& root,
                                                  utStringutStringcoSetcoTable& table) {
    utStringutStringcoSetcoTable readers;
    build_active_expr_pars_table(root, readers);
    for (const auto& [reader, names] : readers)
        for (const utString& name : names) {
            utStringcoSet* dependants = table.find(name);
            if (!dependants)
                dependants = &table.set(name, utStringcoSet());
            dependants->insert(reader);
        }
}
