#include "repl_session.h"

#include "demo_tree.h"
#include "file_tree.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterScalar.h"
#include "vorparameter/expression/vorParameterString.h"

#include <algorithm>
#include <ostream>

namespace vorparam {

namespace {

std::string_view trim(std::string_view text) {
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool is_container(const vorParameter& par) {
    return par.type() == TYPE_MAP || par.type() == TYPE_ARRAY;
}

/// A map or an array as the library prints it, anything else as its value
/// text; a reference shows what it designates.
void print_value(const vorParameter& par, std::ostream& out) {
    const vorParameter& value = *par.get_ref();
    const std::string text = is_container(value) ? value.print(0).str() : value.get_string().str();
    out << text;
    if (text.empty() || text.back() != '\n')
        out << '\n';
}

} // namespace

const std::vector<ReplSession::Command>& ReplSession::commands() {
    static const std::vector<Command> table = {
        {"help", "", "list these commands", &ReplSession::help},
        {"load", "FILE", "work on the tree of a saved file from now on",
         &ReplSession::load_command},
        {"save", "[FILE]", "save the tree to FILE, or to the file it came from",
         &ReplSession::save},
        {"set", "PATH=VALUE", "set a parameter's value, or add a number or text to a map",
         &ReplSession::set},
        {"print", "[PATH]", "print the whole tree, or the part at PATH", &ReplSession::print},
        {"quit", "", "end the session (so does the end of input, ^D)", &ReplSession::quit},
    };
    return table;
}

ReplSession::ReplSession(std::ostream& out, std::ostream& err)
    : m_out(out)
    , m_err(err)
    , m_root(build_demo_tree()) {}

bool ReplSession::load(const std::string& path) {
    FileTree tree = load_file_tree(path, m_err);
    if (!tree.complete()) {
        if (tree.root)
            m_err << path << ": did not load completely; the tree is unchanged\n";
        return false;
    }
    m_root = vorParameterPtr(tree.root.release());
    m_file = path;
    return true;
}

bool ReplSession::run_line(std::string_view line) {
    line = trim(line);
    if (line.empty())
        return true;
    if (line.front() != ':')
        return evaluate(line);
    const std::size_t name_end = line.find_first_of(" \t");
    const std::string_view name = line.substr(1, name_end == line.npos ? line.npos : name_end - 1);
    const std::string_view operand = name_end == line.npos ? "" : trim(line.substr(name_end));
    return run_command(name, operand);
}

bool ReplSession::evaluate(std::string_view expression) {
    const vorParameterPtr result = vorEvaluator(m_root.get()).evaluate(utString(expression));
    const vorParameter& value = *result->get_ref();
    if (value.is_error()) {
        m_err << expression << ": " << value.get_expr() << '\n';
        return false;
    }
    print_value(value, m_out);
    return true;
}

bool ReplSession::run_command(std::string_view name, std::string_view operand) {
    for (const Command& command : commands())
        if (name == command.name)
            return (this->*command.run)(operand);
    m_err << "unknown command ':" << name << "' (:help lists the commands)\n";
    return false;
}

bool ReplSession::help(std::string_view) {
    m_out << "Type an expression to see its value, or one of these commands:\n";
    for (const Command& command : commands()) {
        std::string usage = std::string(":") + command.name;
        if (*command.operands)
            usage += std::string(" ") + command.operands;
        usage.resize(std::max<std::size_t>(usage.size() + 2, 18), ' ');
        m_out << "  " << usage << command.summary << '\n';
    }
    return true;
}

bool ReplSession::load_command(std::string_view operand) {
    if (operand.empty()) {
        m_err << ":load needs a FILE\n";
        return false;
    }
    return load(std::string(operand));
}

bool ReplSession::save(std::string_view operand) {
    const std::string target = operand.empty() ? m_file : std::string(operand);
    if (target.empty()) {
        m_err << ":save needs a FILE: the sample tree came from none\n";
        return false;
    }
    // Both trees a session holds, the sample and a loaded file, are roots.
    if (!save_file_tree(static_cast<const vorParameterRoot&>(*m_root), target, m_err))
        return false;
    m_file = target;
    return true;
}

bool ReplSession::set(std::string_view operand) {
    const std::size_t equals = operand.find('=');
    const std::string path(trim(operand.substr(0, equals)));
    if (equals == operand.npos || path.empty()) {
        m_err << ":set wants PATH=VALUE, not '" << operand << "'\n";
        return false;
    }
    const std::string value(trim(operand.substr(equals + 1)));
    const vorParameterKey key{utString(path)};
    if (key.type() == TYPE_ERROR) {
        m_err << path << ": not a path\n";
        return false;
    }
    // Built-in names and functions answer lookups too, but with new objects
    // outside the tree: only a node with a parent is a parameter to change.
    const vorParameterPtr found = m_root[key];
    if (!found->is_error() && found->parent())
        return set_existing(path, *found->get_ref(), value);
    return add_new(key, value);
}

/// Gives a single value a new text, and takes it back when the parameter
/// then has no valid value, so that a mistyped value never stays behind.
bool ReplSession::set_existing(const std::string& path, vorParameter& par,
                               const std::string& value) {
    if (!par.ut_is_kind_of(vorParameterScalar::ut_static_type())) {
        m_err << path << ": holds " << (par.type() == TYPE_ERROR ? "an" : "a") << ' '
              << vorTypeWord(par.type()) << ", not a single value\n";
        return false;
    }
    if (par.is_locked()) {
        m_err << path << ": is locked\n";
        return false;
    }
    auto& scalar = static_cast<vorParameterScalar&>(par);
    const utString previous = scalar.get_value();
    scalar.set_string(utString(value));
    const vorParameterPtr result = vorEvaluator::evaluate(vorParameterPtr::share(&par));
    if (!result->is_error() && par.is_valid())
        return true;
    m_err << path << '=' << value << ": "
          << (result->is_error() ? result->get_expr().str()
                                 : std::string("no valid ") + vorTypeWord(par.type()) + " value")
          << "; " << path << " keeps its value\n";
    scalar.set_string(previous);
    return false;
}

/// Adds a parameter to an existing map. The value decides what it is: a
/// value that gives a number makes a number of that kind and dimension which
/// keeps the value text (so "2 * tool.diameter" goes on following the tool);
/// one that gives a text makes a text holding what it gave.
bool ReplSession::add_new(const vorParameterKey& key, const std::string& value) {
    const vorParameterKey parent_path = key.parent();
    const vorParameterPtr parent = parent_path.str().empty() ? m_root : m_root[parent_path];
    vorParameter& container = *parent->get_ref();
    const vorParameterKey name(key.last());
    if (container.type() != TYPE_MAP || name.type() != TYPE_MAP) {
        m_err << key.str() << ": no such parameter, and no map to add it to\n";
        return false;
    }
    const vorParameterPtr result = vorEvaluator(&container).evaluate(utString(value));
    const vorParameter& given = *result->get_ref();
    vorParameterPtr made;
    if (given.is_error()) {
        m_err << key.str() << '=' << value << ": " << given.get_expr() << '\n';
        return false;
    } else if (given.type() == TYPE_NUMERIC) {
        const auto& number = static_cast<const vorParameterNumeric&>(given);
        const vorParameterSubType kind =
            number.subtype() == SUB_NUMBER ? SUB_REAL : number.subtype();
        made = vorParameterPtr(new vorParameterNumeric(kind, number.get_dim(), 0.0));
        made->set_string(utString(value));
    } else if (given.type() == TYPE_STRING) {
        made = vorParameterPtr(new vorParameterString(given.get_string()));
    } else {
        m_err << key.str() << '=' << value << ": gives a " << vorTypeWord(given.type())
              << "; new parameters are numbers or texts\n";
        return false;
    }
    // Saved with its type word, so that a file saved now loads it back as
    // the same kind of parameter.
    made->set_defined_from_file(true);
    const vorParameterPtr added = container.add(name, made);
    if (added.get() != made.get()) {
        m_err << key.str() << ": cannot be added here\n";
        return false;
    }
    return true;
}

bool ReplSession::print(std::string_view operand) {
    if (operand.empty()) {
        m_out << m_root->print(0);
        return true;
    }
    const vorParameterPtr found = m_root[vorParameterKey(utString(operand))];
    if (found->is_error()) {
        m_err << operand << ": " << found->get_expr() << '\n';
        return false;
    }
    m_out << found->print(0);
    return true;
}

bool ReplSession::quit(std::string_view) {
    m_finished = true;
    return true;
}

} // namespace vorparam
