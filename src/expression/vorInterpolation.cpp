//===- vorInterpolation.cpp - Expressions inside text ---------------------===//
//
// interpolate_string replaces the embedded expressions of a text by their
// printed values:
//
//   "${expr}"  and  "%[expr]"   any expression;
//   "$name"                     short form: the text up to the first blank or
//                               "," is the expression; a "}" that closes no
//                               bracket of the expression ends it earlier and
//                               stays in the text ("{w: $w}");
//   "$$"                        a literal "$".
//
// The character right after a form (the one after its closing bracket, or the
// blank, "," or "}" that ends a short form) is copied but never read as the
// start of another form: "${a}${b}" expands "${a}" only. An error ends the
// expansion with the error's text in brackets. Each form is read where it
// stands, so the expansion takes time linear in the text's length.
//
// translate rewrites an expression between the user's and the stored form by
// running the tokenizer over it without evaluating anything, in one pass; a
// text longer than max_expression_length comes back unchanged.
//
//===----------------------------------------------------------------------===//

#include "vorparameter/expression/vorEvaluator.h"

#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/nlsUtils.h"

#include <algorithm>

namespace {

void append_wide(utString& out, const vorWideString& wide, std::size_t from, std::size_t to) {
    if (to > from)
        out +=
            vorMultiByteToWideChar::convert_back(std::u32string_view(wide).substr(from, to - from));
}

// The end of the name run of a short form that starts at `from`: the first
// blank or "," at or after it.
std::size_t name_run_end(const vorWideString& wide, std::size_t from) {
    while (from < wide.size() && !vorCharTypes::is_blank(wide[from]) && wide[from] != ',')
        ++from;
    return from;
}

utString bracketed_error(const vorParameterPtr& error) {
    return "[" + error->get_string() + "]";
}

} // namespace

utString vorEvaluator::interpolate_string(const utString& text) {
    if (text.size() > max_expression_length)
        return bracketed_error(vorParameterError::create(ERR_SYNTAX));
    begin(text);
    utString result;
    std::size_t run_start = 0;
    char32_t previous = 0;
    // Short forms in one name run ("$a}$b}") share its end: each search
    // starts where the last one stopped, so the text is scanned once.
    std::size_t run_end = 0;
    std::size_t i = 0;
    while (i < m_wide_expr.size()) {
        const char32_t c = m_wide_expr[i];
        if (previous == '$' && c == '$') {
            append_wide(result, m_wide_expr, run_start, i - 1);
            result += '$';
            run_start = i + 1;
            previous = 0;
            ++i;
            continue;
        }
        const bool long_form = (previous == '$' && c == '{') || (previous == '%' && c == '[');
        const bool short_form = previous == '$' && (vorCharTypes::is_alpha(c) || c == '_');
        previous = c;
        if (!long_form && !short_form) {
            ++i;
            continue;
        }
        append_wide(result, m_wide_expr, run_start, i - 1);
        if (short_form && run_end < i)
            run_end = name_run_end(m_wide_expr, i);
        if (!interpolate_marker(result, i, short_form, short_form ? run_end : m_wide_expr.size()))
            return result;
        // The character after the form is copied but not examined, and the
        // form's bracket or first letter stays the previous character.
        run_start = static_cast<std::size_t>(m_pos);
        i = run_start + 1;
    }
    append_wide(result, m_wide_expr, run_start, m_wide_expr.size());
    return result;
}

// Evaluates the form whose opening bracket (or name) starts at `open` and
// appends its value. The tokenizer reads no further than `end`: the end of
// the text, or for a short form the end of its name run, so that the form is
// read where it stands and the text is never rewritten. Leaves m_pos on the
// first character after the form. False when the value was an error
// (appended in brackets): the expansion ends.
bool vorEvaluator::interpolate_marker(utString& result, std::size_t open, bool short_form,
                                      std::size_t end) {
    // Reading the value may interpolate further strings: the whole form is
    // one level, so that chains of interpolated strings stop at the nesting
    // limit.
    vorEvalLevel level(EVAL_NESTED);
    m_pos = static_cast<int>(open) + (short_form ? 0 : 1);
    m_end = end;
    m_token_kind = TOKEN_END;
    m_after_number = false;
    vorCharTypes types{std::u32string_view(m_wide_expr).substr(0, m_end)};
    vorParameterPtr value =
        level.refused() ? vorParameterError::create(ERR_EXPRESSION) : expression(0, 1, 0, types);
    const char* close = m_wide_expr[open] == '[' ? "]" : "}";
    if (short_form && token_is("}"))
        --m_pos; // a "}" the expression did not open ends the form and stays in the text
    else if (!is_error(value) && !(short_form ? short_form_complete() : token_is(close)))
        value = vorParameterError::create(ERR_SYNTAX);
    m_end = m_wide_expr.size();
    if (value->type() == TYPE_MAP || value->type() == TYPE_ARRAY)
        value = vorParameterError::create(ERR_TYPE);
    const utString text = value->get_string();
    // Reading the value may have reached a limit below: the read is lost,
    // whatever text came back.
    if (vorEvalLevel::limit_reached())
        value = vorParameterError::create(ERR_EXPRESSION);
    // The expansion is bounded like every text that evaluation builds.
    if (value->type() != TYPE_ERROR &&
        text.size() > vorParameterString::max_text_length -
                          std::min(result.size(), vorParameterString::max_text_length))
        value = vorParameterError::create(ERR_DOMAIN);
    if (value->type() == TYPE_ERROR) {
        result += bracketed_error(value);
        return false;
    }
    result += text;
    return true;
}

// True when the parse of a short form stopped at the end of its name run, not
// at a token it could not use or a character it could not read.
bool vorEvaluator::short_form_complete() const {
    return m_token_kind == TOKEN_END && !lexical_error_pending() &&
           static_cast<std::size_t>(m_pos) == m_end;
}

utString vorEvaluator::translate(const utString& text, char, char to) {
    // A text over the length limit can never be evaluated, so its decimal
    // points mean nothing; copying it keeps the cost of a huge text (a
    // document pasted into a value, say) to that of the copy.
    if (text.size() > max_expression_length)
        return text;
    begin(text);
    m_decimal_point = to;
    m_translating = true;
    vorCharTypes types{std::u32string_view(m_wide_expr)};
    int expect_operand = 1;
    for (;;) {
        next_token(types, expect_operand);
        if (m_token_kind == TOKEN_END)
            break;
        const bool postfix = !expect_operand && s_postfix_ops.contains(m_token);
        expect_operand = m_token_kind == TOKEN_OPERATOR && m_token != "." && !postfix;
    }
    m_translating = false;
    return normalised_expr();
}

namespace {

/// Whether translating `text` to the decimal point `to` leaves it as it is:
/// only list separators (',' and ';') and decimal points can change, and a
/// '.' stays a '.' when that is the target. Most stored texts qualify, and
/// saving or loading a tree translates every one of them.
bool translates_to_itself(const utString& text, char to) {
    return to == '.' && text.view().find_first_of(",;") == std::string_view::npos;
}

} // namespace

utString vorEvaluator::localize(const utString& text) {
    const char point = nlsUtils::decimal_point();
    if (translates_to_itself(text, point))
        return text;
    return vorEvaluator(nullptr).translate(text, '.', point);
}

utString vorEvaluator::neutralize(const utString& text) {
    if (translates_to_itself(text, '.'))
        return text;
    return vorEvaluator(nullptr).translate(text, nlsUtils::decimal_point(), '.');
}
