//===- vorLibSortFilter.cpp - Lists ordered and chosen by an expression ---===//
//
// filter(list; expression) and sort(list[; expression]). The expression is
// a text, evaluated once per item with the item as the scope: names are
// looked up in the item first ("diameter" is the item's member), then in the
// nodes around it as for any expression, and "this" is the item itself.
//
// An item whose expression fails (an error, or for filter anything but a
// number, for sort anything but a number or a text) is left out by filter
// and put last by sort, in its original order. When the expression fails for
// every item, the call answers the first item's error (ERR_TYPE for a value
// of the wrong kind), so that a misspelt name or a syntax error is reported
// rather than giving an empty or unchanged list. Once the read's evaluation
// limits are reached the call stops with ERR_EXPRESSION.
//
// sort is stable and costs O(n log n) comparisons after n evaluations: each
// key is computed once, then the order is found with std::stable_sort. Keys
// compare exactly (an order needs a transitive comparison, which equality
// within a tolerance is not): numbers by value, before texts, which compare
// byte by byte.
//
//===----------------------------------------------------------------------===//

#include "library/vorLibListSupport.h"
#include "library/vorLibSupport.h"

#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterArgDecoder.h"

#include <algorithm>
#include <numeric>
#include <vector>

using vorLibSupport::invalid_arguments;
using namespace vorLibLists;

namespace {

/// The list and the optional expression of a call.
struct Call {
    vorParameterPtr list_arg;
    const vorParameterArray* list = nullptr;
    utString expression;
    bool has_expression = false;
};

bool read_call(const vorParameterPtr& args, int lowest, Call& call) {
    vorParameterArgDecoder decoder(args);
    if (decoder.count() < lowest || decoder.count() > 2)
        return false;
    call.list_arg = decoder.next_argument();
    call.list = as_list(call.list_arg);
    if (!call.list)
        return false;
    if (decoder.all_arguments_used())
        return true;
    const vorParameterString* expression = decoder.next_argument_as<vorParameterString>();
    if (!expression)
        return false;
    call.expression = expression->get_string();
    call.has_expression = true;
    return true;
}

/// The first failure of the items; answered when every item failed.
class Failures {
public:
    void record(const vorParameterPtr& result, bool is_value_of_wrong_kind) {
        ++m_count;
        if (m_first.is_null())
            m_first = is_value_of_wrong_kind ? vorParameterLib::error(ERR_TYPE) : result;
    }
    /// The error to answer, or an empty handle when some item succeeded.
    vorParameterPtr verdict(int items) const {
        return items > 0 && m_count == items ? m_first : vorParameterPtr();
    }

private:
    vorParameterPtr m_first;
    int m_count = 0;
};

/// The value of the expression for `item`. True when evaluation must stop:
/// the read ran out of its limits.
bool evaluate_for(const vorParameterPtr& item, const utString& expression, vorParameterPtr& value) {
    value = vorEvaluator(item.par()).evaluate(expression);
    return value->is_error() && vorEvalLevel::limit_reached();
}

/// What an item sorts by: a number, a text, or nothing (it failed).
struct SortKey {
    enum Rank { NUMBER, TEXT, FAILED };
    Rank rank = FAILED;
    double number = 0;
    utString text;

    bool operator<(const SortKey& other) const {
        if (rank != other.rank)
            return rank < other.rank;
        if (rank == NUMBER)
            return number < other.number;
        return rank == TEXT && text.view() < other.text.view();
    }
};

SortKey key_of(const vorParameterPtr& value) {
    SortKey key;
    if (const vorParameterNumeric* number = vorLibSupport::as_number(value)) {
        key.rank = SortKey::NUMBER;
        key.number = number->get_double();
        return key;
    }
    const vorParameter& text = *value.par();
    if ((text.type() == TYPE_STRING || text.type() == TYPE_ENUM) && text.is_valid()) {
        key.rank = SortKey::TEXT;
        key.text = text.get_string();
    }
    return key;
}

/// A new list like `source` holding its items in the order `order`.
vorParameterPtr items_in_order(const vorParameterArray& source, const std::vector<int>& order) {
    vorParameterPtr result = empty_like(source);
    auto& array = static_cast<vorParameterArray&>(*result);
    for (int i : order)
        append_item(array, source.at(i));
    return result;
}

} // namespace

namespace vorParameterLibFunctions {

/// filter(list; expression): the items whose expression gives a non-zero
/// number, in their order.
vorParameterPtr filter(const vorParameterPtr& args) {
    Call call;
    if (!read_call(args, 2, call))
        return invalid_arguments();
    const vorParameterArray& list = *call.list;
    std::vector<int> kept;
    Failures failures;
    for (int i = 0; i < list.size(); ++i) {
        vorParameterPtr value;
        if (evaluate_for(list.at(i), call.expression, value))
            return vorParameterLib::error(ERR_EXPRESSION);
        const vorParameterNumeric* truth = vorLibSupport::as_number(value);
        if (!truth)
            failures.record(value, !value->is_error());
        else if (truth->get_double() != 0)
            kept.push_back(i);
    }
    vorParameterPtr failed = failures.verdict(list.size());
    return failed.is_null() ? items_in_order(list, kept) : failed;
}

/// sort(list[; expression]): the items ordered by the value of the
/// expression, or by their own values without one.
vorParameterPtr sort(const vorParameterPtr& args) {
    Call call;
    if (!read_call(args, 1, call))
        return invalid_arguments();
    const vorParameterArray& list = *call.list;
    std::vector<SortKey> keys(static_cast<std::size_t>(list.size()));
    Failures failures;
    for (int i = 0; i < list.size(); ++i) {
        vorParameterPtr value = list.at(i);
        if (call.has_expression && evaluate_for(list.at(i), call.expression, value))
            return vorParameterLib::error(ERR_EXPRESSION);
        SortKey& key = keys[static_cast<std::size_t>(i)];
        key = key_of(value);
        if (key.rank == SortKey::FAILED)
            failures.record(value, !value->is_error());
    }
    vorParameterPtr failed = failures.verdict(list.size());
    if (!failed.is_null())
        return failed;
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&keys](int a, int b) {
        return keys[static_cast<std::size_t>(a)] < keys[static_cast<std::size_t>(b)];
    });
    return items_in_order(list, order);
}

} // namespace vorParameterLibFunctions
