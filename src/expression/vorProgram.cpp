//===- vorProgram.cpp - Compiling and running expression texts ------------===//
//
// compile runs the tokenizer over the whole text once and records what each
// scan leaves behind; next_program_token replays those records in place of a
// scan. The parser above them is the same for both, so a compiled run takes
// the same steps as a scan of the text: only where the tokens come from
// differs.
//
//===----------------------------------------------------------------------===//

#include "vorProgram.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/platform/coTable.h"
#include "vorparameter/platform/nlsUtils.h"

#include <array>
#include <string>
#include <string_view>

namespace {

bool g_compiled = true;

struct CacheState {
    coTable<utString, std::shared_ptr<const vorProgram>> programs;
    std::size_t bytes = 0;
    std::uint64_t version = 0;
    /// The hashes of texts met once, each in the slot its hash picks. Two
    /// texts sharing a slot only make one of them wait a sight longer for
    /// its program; two with the same hash only make one compiled a sight
    /// early.
    std::array<std::size_t, vorProgram::max_cached_programs> seen{};
};

std::size_t hash_of(const utString& text) {
    return std::hash<utString>()(text);
}

std::size_t& seen_slot(CacheState& state, std::size_t hash) {
    return state.seen[hash % state.seen.size()];
}

// Never destroyed: a program's plan may hold a library function, whose
// release at exit would outlive the library's own tables.
CacheState& cache_state() {
    static CacheState* const state = new CacheState;
    return *state;
}

bool same_reading(const vorProgramToken& a, const vorProgramToken& b) {
    return a.kind == b.kind && a.end == b.end && a.text == b.text;
}

} // namespace

//===----------------------------------------------------------------------===//
// Programs and their cache
//===----------------------------------------------------------------------===//

utString vorProgram::text_after(std::size_t tokens_read, std::size_t position) const {
    if (tokens_read <= first_rewrite)
        return text;
    vorWideString wide = vorMultiByteToWideChar::convert(text.view());
    wide.replace(0, position, rewritten, 0, position);
    return utString(vorMultiByteToWideChar::convert_back(wide));
}

std::size_t vorProgram::footprint() const {
    std::size_t bytes = sizeof(vorProgram) + readings.capacity() * sizeof(vorProgramToken) +
                        tokens.capacity() * sizeof(tokens[0]) +
                        rewritten.capacity() * sizeof(char32_t) + text.size() +
                        (plan ? plan->footprint() : 0);
    for (const vorProgramToken& reading : readings)
        if (reading.text.size() >= sizeof(std::string)) // beyond the small-string buffer
            bytes += reading.text.size() + 1;
    return bytes;
}

vorProgramCache::Lookup vorProgramCache::find(const utString& text, char decimal_point,
                                              char alt_decimal) {
    CacheState& state = cache_state();
    const std::size_t hash = hash_of(text);
    const auto* found = state.programs.find(text, hash);
    if (!found)
        return Lookup{nullptr, hash != 0 && seen_slot(state, hash) == hash};
    const vorProgram* program = found->get();
    if (!program || program->decimal_point != decimal_point || program->alt_decimal != alt_decimal)
        return Lookup{nullptr, true};
    return Lookup{program, true};
}

void vorProgramCache::store(const utString& text, std::shared_ptr<const vorProgram> program) {
    CacheState& state = cache_state();
    if (!program) {
        const std::size_t hash = hash_of(text);
        seen_slot(state, hash) = hash;
        return;
    }
    const std::size_t bytes = program->footprint() + text.size();
    if (bytes > vorProgram::max_cached_bytes / 8)
        return;
    if (auto* found = state.programs.find(text)) {
        state.bytes -= (*found)->footprint() + text.size();
        *found = std::move(program);
        ++state.version;
        state.bytes += bytes;
        return;
    }
    if (state.programs.size() >= vorProgram::max_cached_programs ||
        state.bytes + bytes > vorProgram::max_cached_bytes) {
        state.programs.clear();
        state.bytes = 0;
        ++state.version;
    }
    state.programs.set(text, std::move(program));
    state.bytes += bytes;
}

std::uint64_t vorProgramCache::version() {
    return cache_state().version;
}

std::size_t vorProgramCache::size() {
    return cache_state().programs.size();
}

bool vorEvaluator::compiled() {
    return g_compiled;
}

bool vorEvaluator::set_compiled(bool on) {
    const bool previous = g_compiled;
    g_compiled = on;
    return previous;
}

std::size_t vorEvaluator::cached_programs() {
    return vorProgramCache::size();
}

//===----------------------------------------------------------------------===//
// Compiling
//===----------------------------------------------------------------------===//

std::shared_ptr<const vorProgram> vorEvaluator::program_for(const utString& text) {
    const vorProgramCache::Lookup lookup =
        vorProgramCache::find(text, nlsUtils::decimal_point(), m_alt_decimal);
    return program_for(text, lookup.program, lookup.seen);
}

std::shared_ptr<const vorProgram> vorEvaluator::program_for(const utString& text,
                                                            const vorProgram* found, bool seen) {
    if (found)
        return found->shared_from_this();
    // A text met for the first time is only noted: most texts evaluated once
    // are never evaluated again, and scanning them is cheaper than compiling.
    std::shared_ptr<const vorProgram> program = seen ? compile(text) : nullptr;
    if (program || !seen)
        vorProgramCache::store(text, program);
    return program;
}

std::shared_ptr<const vorProgram> vorEvaluator::compile(const utString& text) {
    begin(text);
    auto program = std::make_shared<vorProgram>();
    program->text = text;
    program->length = m_wide_expr.size();
    program->decimal_point = m_decimal_point;
    program->alt_decimal = m_alt_decimal;
    // Strings are kept as their text: interpolating them reads the tree.
    m_translating = true;
    vorCharTypes types{std::u32string_view(m_wide_expr)};
    std::size_t first_rewrite = utString::npos;
    while (compile_token(types, *program))
        if (m_rewritten && first_rewrite == utString::npos)
            first_rewrite = program->tokens.size() - 1;
    m_translating = false;
    // A value left at the end is the error of text the tokenizer stopped on.
    const bool readable = m_token_value.is_null();
    program->first_rewrite =
        first_rewrite == utString::npos ? program->tokens.size() : first_rewrite;
    if (first_rewrite != utString::npos)
        program->rewritten = m_wide_expr;
    begin(utString());
    if (!readable)
        return nullptr;
    program->plan = vorPlan::compile(*program);
    return program;
}

bool vorEvaluator::compile_token(vorCharTypes& types, vorProgram& program) {
    const int start = m_pos;
    const bool after_number = m_after_number;
    const int paren_depth = m_paren_depth;
    const int brace_depth = m_brace_depth;
    auto read = [&](int expect_operand) {
        m_pos = start;
        m_after_number = after_number;
        m_paren_depth = paren_depth;
        m_brace_depth = brace_depth;
        next_token(types, expect_operand);
        vorProgramToken reading;
        reading.kind = m_token_kind;
        reading.text = m_token;
        reading.end = m_pos;
        reading.string_literal = m_token_kind == TOKEN_VALUE && m_token_value.is_null();
        if (m_token_kind == TOKEN_VALUE && !reading.string_literal) {
            std::size_t used = 0;
            m_token.parse(reading.number, used, m_decimal_point);
        }
        reading.paren_delta = static_cast<std::int8_t>(m_paren_depth - paren_depth);
        reading.brace_delta = static_cast<std::int8_t>(m_brace_depth - brace_depth);
        return reading;
    };
    // Only words and symbols can read differently by what is expected.
    // Numbers and separators rewrite the text as they are scanned, so they
    // are scanned once.
    vorProgramToken after_operand = read(0);
    if (m_token_kind == TOKEN_END)
        return false;
    const bool may_differ = (m_token_kind == TOKEN_OPERATOR || m_token_kind == TOKEN_NAME ||
                             m_token_kind == TOKEN_CALL) &&
                            m_token != ",";
    const auto index = static_cast<std::uint32_t>(program.readings.size());
    program.readings.push_back(std::move(after_operand));
    std::array<std::uint32_t, 2> readings{index, index};
    if (may_differ) {
        vorProgramToken operand = read(1);
        if (m_token_kind == TOKEN_END)
            return false;
        if (!same_reading(operand, program.readings[index])) {
            readings[1] = index + 1;
            program.readings.push_back(std::move(operand));
        }
        // Both readings end before the same next token.
        m_pos = program.readings[index].end;
        m_after_number = false;
    }
    program.tokens.push_back(readings);
    return true;
}

//===----------------------------------------------------------------------===//
// Running
//===----------------------------------------------------------------------===//

std::size_t vorEvaluator::expr_length() const {
    return m_program ? m_program->length : m_wide_expr.size();
}

vorParameterPtr vorEvaluator::run(std::shared_ptr<const vorProgram> program) {
    reset_state();
    m_program = std::move(program);
    m_decimal_point = m_program->decimal_point;
    vorCharTypes types{std::u32string_view()};
    vorParameterPtr result = expression(0, 1, 0, types);
    if (static_cast<std::size_t>(m_pos) != m_program->length || !check_parentheses())
        result = vorParameterError::create(is_error(result) || result->is_ref() ? ERR_EXPRESSION
                                                                                : ERR_SYNTAX);
    else if (!is_error(result) && lexical_error_pending())
        result = m_token_value; // as evaluate() answers after a scan
    m_expr = m_program->text_after(m_next_token, static_cast<std::size_t>(m_pos));
    m_program.reset();
    return vorEvalLevel::settle(std::move(result));
}

void vorEvaluator::next_program_token(int expect_operand) {
    m_token_kind = TOKEN_END;
    m_token_value.reset();
    if (m_next_token == m_program->tokens.size()) {
        m_pos = static_cast<int>(m_program->length);
        return;
    }
    ++m_token_count;
    const std::uint32_t index = m_program->tokens[m_next_token++][expect_operand ? 1 : 0];
    const vorProgramToken& token = m_program->readings[index];
    m_token_kind = token.kind;
    m_token = token.text;
    m_pos = token.end;
    m_paren_depth += token.paren_delta;
    m_brace_depth += token.brace_delta;
    if (token.kind != TOKEN_VALUE)
        return;
    if (token.string_literal) {
        vorEvaluator interpolator(m_scope);
        m_token_value =
            vorParameterString::create_verbatim(interpolator.interpolate_string(m_token));
    } else {
        m_token_value =
            vorParameterPtr(new vorParameterNumeric(SUB_NUMBER, DIM_NONE, token.number));
    }
}
