//===- vorTokenizer.cpp - The lexical half of the evaluator ---------------===//
//
// next_token cuts the expression text into tokens on demand of the parser.
// Number literals and string literals become parameters here already. The
// tokenizer rewrites the text in place: argument separators become ";" and
// decimal separators inside numbers become the locale's decimal point. It
// reads up to m_end, which is the end of the text except while interpolation
// reads a short-form "$name", whose expression ends with its name run.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/expression/vorEvaluator.h"

#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/vorStringUtils.h"

#include <algorithm>
#include <array>
#include <string>

utStringintcoTable vorEvaluator::s_binary_ops;
utStringintcoTable vorEvaluator::s_prefix_ops;
utStringintcoTable vorEvaluator::s_postfix_ops;
utStringutStringcoTable vorEvaluator::s_equiv_alpha_ops;

namespace {

// Derived from the tables once, so that most tokens need no table lookup:
// names longer than every word operator, or beginning with a letter that
// begins none in either case, are plain names; only the characters that
// begin a two-character operator need a two-character probe; and a
// one-character binary operator finds its binding strength by index (0: the
// character is none).
std::size_t g_longest_word = 0;
std::array<bool, 128> g_word_starts{}; // by lower-case letter
std::string g_pair_starts;
std::array<int, 128> g_char_levels{};

// Maps both cases of an ASCII letter to the lower case.
std::size_t folded(char letter) {
    return static_cast<unsigned char>(letter) | 0x20u;
}

void note_word(const utString& word) {
    g_longest_word = std::max(g_longest_word, word.size());
    g_word_starts[folded(word[0])] = true;
}

// False when `name` is surely no word operator. A name that begins beyond
// ASCII is not judged here.
bool may_be_word(const utString& name) {
    return name.size() <= g_longest_word &&
           (static_cast<unsigned char>(name[0]) >= 0x80 || g_word_starts[folded(name[0])]);
}

bool is_word(const utString& text) {
    for (char c : text.view())
        if (!((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')))
            return false;
    return true;
}

void derive_shortcuts(const utStringintcoTable& table) {
    for (const auto& entry : table) {
        const utString& op = entry.first;
        if (is_word(op))
            note_word(op);
        else if (op.size() == 2 && g_pair_starts.find(op[0]) == std::string::npos)
            g_pair_starts += op[0];
    }
}

} // namespace

void vorEvaluator::init_tables() {
    if (!s_binary_ops.empty())
        return;
    const std::pair<const char*, int> binary[] = {
        {",", 1}, {"|", 2},  {"xor", 3}, {"&", 4},  {"==", 5}, {"!=", 5}, {">", 6},
        {"<", 6}, {">=", 6}, {"<=", 6},  {"+", 7},  {"-", 7},  {"*", 8},  {"/", 8},
        {"%", 8}, {"^", 9},  {"[", 12},  {"(", 13}, {"{", 14}, {".", 15}};
    for (const auto& [op, level] : binary) {
        s_binary_ops.set(op, level);
        if (op[1] == '\0')
            g_char_levels[static_cast<unsigned char>(op[0])] = level;
    }
    for (const char* op : {"!", "m", "cm", "mm", "um", "yd", "ft", "in", "th"})
        s_postfix_ops.set(op, 10);
    for (const char* op : {"+", "-", "!"})
        s_prefix_ops.set(op, 11);
    const std::pair<const char*, const char*> words[] = {
        {"AND", "&"}, {"OR", "|"}, {"XOR", "xor"}, {"NOT", "!"}, {"EQ", "=="},
        {"NE", "!="}, {"GT", ">"}, {"LT", "<"},    {"GE", ">="}, {"LE", "<="}};
    for (const auto& [word, op] : words)
        s_equiv_alpha_ops.set(word, op);
    for (const utStringintcoTable* table : {&s_binary_ops, &s_prefix_ops, &s_postfix_ops})
        derive_shortcuts(*table);
    for (const auto& entry : s_equiv_alpha_ops)
        note_word(entry.first);
}

const int* vorEvaluator::binary_level(const utString& op) {
    if (op.size() == 1 && static_cast<unsigned char>(op[0]) < g_char_levels.size()) {
        const int& level = g_char_levels[static_cast<unsigned char>(op[0])];
        return level ? &level : nullptr;
    }
    return s_binary_ops.find(op);
}

void vorEvaluator::next_token(vorCharTypes& types, int expect_operand) {
    if (m_program) {
        next_program_token(expect_operand);
        return;
    }
    const bool after_number = m_after_number;
    m_after_number = false;
    m_token_kind = TOKEN_END;
    m_token_value.reset();
    const int length = static_cast<int>(m_end);
    while (m_pos < length && types.isspace(static_cast<std::size_t>(m_pos)))
        ++m_pos;
    if (m_pos >= length)
        return;
    ++m_token_count;

    const char32_t c = m_wide_expr[static_cast<std::size_t>(m_pos)];
    if (scan_number(types, after_number))
        return;
    if (types.isalpha(static_cast<std::size_t>(m_pos)) || c == '_' || c == '$') {
        scan_name(types, expect_operand);
        return;
    }
    switch (c) {
    case '(':
    case ')':
    case '[':
    case ']':
    case '{':
    case '}':
        m_paren_depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        m_brace_depth += c == '{' ? 1 : c == '}' ? -1 : 0;
        m_token = utString(std::string(1, static_cast<char>(c)));
        m_token_kind = TOKEN_OPERATOR;
        ++m_pos;
        return;
    case '"':
    case '\'':
        scan_string();
        return;
    default:
        break;
    }
    if (c == static_cast<char32_t>(m_list_sep) || c == ',') {
        m_wide_expr[static_cast<std::size_t>(m_pos)] = static_cast<char32_t>(m_list_sep_out);
        m_rewritten = true;
        m_token = ",";
        m_token_kind = TOKEN_OPERATOR;
        ++m_pos;
        return;
    }
    if (!scan_symbol(expect_operand)) {
        m_token.clear();
        m_token_value = vorParameterError::create(ERR_SYNTAX);
    }
}

// A number literal: digits with at most one decimal point and an exponent.
// Unit suffixes are separate tokens ("10mm" is 10 and the operator "mm").
bool vorEvaluator::scan_number(vorCharTypes& types, bool after_number) {
    const std::size_t start = static_cast<std::size_t>(m_pos);
    const std::size_t length = m_end;
    const char32_t c = m_wide_expr[start];
    auto is_point = [this](char32_t d) {
        return d == '.' || d == static_cast<char32_t>(m_alt_decimal);
    };
    const bool leading_point = is_point(c);
    if (!types.isdigit(start) && !(leading_point && !after_number && types.isdigit(start + 1)))
        return false;

    bool point_seen = leading_point;
    bool point_in_loop = false;
    bool exponent_seen = false;
    std::string literal(1, static_cast<char>(c));
    std::size_t i = start + 1;
    for (; i < length; ++i) {
        const char32_t d = m_wide_expr[i];
        if (is_point(d)) {
            if (point_in_loop)
                break;
            point_in_loop = point_seen = true;
            m_wide_expr[i] = static_cast<char32_t>(m_decimal_point);
            m_rewritten = m_rewritten || d != static_cast<char32_t>(m_decimal_point);
            literal += m_decimal_point;
        } else if (d == '+' || d == '-') {
            if (literal.back() != 'e')
                break;
            literal += static_cast<char>(d);
        } else if (d == 'e' || d == 'E') {
            if (exponent_seen)
                break;
            exponent_seen = true;
            literal += 'e';
        } else if (types.isdigit(i)) {
            literal += static_cast<char>(d);
        } else {
            break;
        }
    }
    m_pos = static_cast<int>(i);
    if (point_seen)
        for (char& ch : literal)
            if (ch == '.' || ch == ',')
                ch = m_decimal_point;
    m_token = utString(std::move(literal));

    double value = 0.0;
    std::size_t used = 0;
    if (!m_token.parse(value, used, m_decimal_point) || used != m_token.size()) {
        m_token_value = vorParameterError::create(ERR_SYNTAX);
        return true;
    }
    m_token_kind = TOKEN_VALUE;
    m_token_value = vorParameterPtr(new vorParameterNumeric(SUB_NUMBER, DIM_NONE, value));
    m_after_number = true;
    return true;
}

// A name, a word operator ("and", "XOR"), or a unit name after an operand.
void vorEvaluator::scan_name(vorCharTypes& types, int expect_operand) {
    std::size_t start = static_cast<std::size_t>(m_pos);
    std::size_t i = start + 1;
    while (i < m_end && (types.isalnum(i) || m_wide_expr[i] == '_'))
        ++i;
    m_pos = static_cast<int>(i);
    m_token = utString(vorMultiByteToWideChar::convert_back(
        std::u32string_view(m_wide_expr).substr(start, i - start)));

    if (may_be_word(m_token)) {
        if (const utString* symbol = s_equiv_alpha_ops.find(vorupcase(m_token.view()))) {
            m_token = *symbol;
            m_token_kind = TOKEN_OPERATOR;
            return;
        }
        const utStringintcoTable& unary = expect_operand ? s_prefix_ops : s_postfix_ops;
        if (binary_level(m_token) || unary.contains(m_token)) {
            m_token_kind = TOKEN_OPERATOR;
            return;
        }
    }
    while (static_cast<std::size_t>(m_pos) < m_end &&
           types.isspace(static_cast<std::size_t>(m_pos)))
        ++m_pos;
    const bool call = static_cast<std::size_t>(m_pos) < m_end &&
                      m_wide_expr[static_cast<std::size_t>(m_pos)] == '(';
    m_token_kind = call ? TOKEN_CALL : TOKEN_NAME;
}

// A string literal runs to the next occurrence of its own quote; there are no
// escapes. Its text is interpolated in the same scope.
void vorEvaluator::scan_string() {
    const std::size_t open = static_cast<std::size_t>(m_pos);
    const char32_t quote = m_wide_expr[open];
    const std::u32string_view wide = std::u32string_view(m_wide_expr).substr(0, m_end);
    const std::size_t close = wide.find(quote, open + 1);
    if (close == std::u32string_view::npos) {
        m_token = utString(vorMultiByteToWideChar::convert_back(wide.substr(open)));
        m_pos = static_cast<int>(m_end);
        m_token_value = vorParameterError::create(ERR_SYNTAX);
        return;
    }
    m_token =
        utString(vorMultiByteToWideChar::convert_back(wide.substr(open + 1, close - open - 1)));
    m_pos = static_cast<int>(close + 1);
    m_token_kind = TOKEN_VALUE;
    if (m_translating) {
        m_token_value = vorParameterPtr();
        return;
    }
    vorEvaluator interpolator(m_scope);
    m_token_value = vorParameterString::create_verbatim(interpolator.interpolate_string(m_token));
}

// Symbol operators: the longest of two or one characters that a table holds.
bool vorEvaluator::scan_symbol(int expect_operand) {
    const utStringintcoTable& unary = expect_operand ? s_prefix_ops : s_postfix_ops;
    const std::size_t pos = static_cast<std::size_t>(m_pos);
    const char32_t first = m_wide_expr[pos];
    if (first >= 0x80) // every operator is ASCII
        return false;
    const bool pair = g_pair_starts.find(static_cast<char>(first)) != std::string::npos;
    for (std::size_t width : {std::size_t(2), std::size_t(1)}) {
        if ((width == 2 && !pair) || pos + width > m_end)
            continue;
        utString text(vorMultiByteToWideChar::convert_back(
            std::u32string_view(m_wide_expr).substr(pos, width)));
        if (binary_level(text) || unary.contains(text)) {
            m_token = std::move(text);
            m_token_kind = TOKEN_OPERATOR;
            m_pos += static_cast<int>(width);
            return true;
        }
    }
    return false;
}
