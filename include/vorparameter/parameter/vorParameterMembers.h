//===- vorParameterMembers.h - Range-for over a container -------*- C++ -*-===//
//
// vorMembers and vorElements let a host loop over the direct members of one
// container with a range-for:
//
//   for (const auto& [name, member] : vorMembers(tool))
//       out << name << " = " << member->get_string() << '\n';
//
//   for (const vorParameterPtr& element : vorElements(passes))
//       total += element->get_double();
//
// vorMembers gives a map's members (the root is a map too) as name and
// handle, in the order they were added; the name is the member's exact name,
// and reserved names ("_hidden") are included. vorElements gives an array's
// elements (lists, vectors... too) as handles, in index order, one for every
// index: a slot that a loaded file left empty holds an inactive empty string
// and is given like any element, so a loop that counts its steps knows each
// element's index. The handles are never empty; test is_active() to skip
// what a save would leave out.
//
// What is walked:
//   - a reference is followed to its referent, so a reference to a map gives
//     the map's members (the host asks for that node's contents explicitly;
//     set_suppress_target concerns only the walks that descend on their own);
//     a reference that does not resolve gives nothing;
//   - a node of any other kind (a number, an error, an empty handle) gives
//     an empty range, and so does a map to vorElements or an array to
//     vorMembers;
//   - the "_keys" pseudo-member is not a member and does not appear.
//
// Changes during a loop: the range takes the members as they stand when it
// is made and holds them by handles, as the one-level iterators of
// vorParameterIter.h do. The loop body may add, remove or release members,
// or the container itself: members added are not visited, members removed
// are still visited (under the name they had), and nothing the range holds
// can dangle.
//
// Cost: making the range is linear in the number of members (one handle
// copy each); each step is constant time.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERMEMBERS_H
#define VORPARAMETER_PARAMETER_VORPARAMETERMEMBERS_H

#include "vorparameter/parameter/vorParameter.h"

#include <cstddef>
#include <vector>

/// One member of a map: its exact name and a handle to it. Structured
/// bindings take it apart: `const auto& [name, member]`.
struct vorMember {
    utString name;
    vorParameterPtr par;
};

/// The members of one map, as they stood when the range was made.
class VOR_API vorMemberRange {
public:
    using const_iterator = std::vector<vorMember>::const_iterator;

    /// An empty range.
    vorMemberRange() = default;
    /// The members of `node`'s map (following a reference); none for any
    /// other node.
    explicit vorMemberRange(const vorParameter& node);

    const_iterator begin() const { return m_members.begin(); }
    const_iterator end() const { return m_members.end(); }
    std::size_t size() const { return m_members.size(); }
    bool empty() const { return m_members.empty(); }

private:
    std::vector<vorMember> m_members;
};

/// The elements of one array, as they stood when the range was made.
class VOR_API vorElementRange {
public:
    using const_iterator = vorParameterPtrcoDList::const_iterator;

    /// An empty range.
    vorElementRange() = default;
    /// The elements of `node`'s array (following a reference); none for any
    /// other node.
    explicit vorElementRange(const vorParameter& node);

    const_iterator begin() const { return m_elements.begin(); }
    const_iterator end() const { return m_elements.end(); }
    std::size_t size() const { return m_elements.size(); }
    bool empty() const { return m_elements.empty(); }

private:
    vorParameterPtrcoDList m_elements;
};

/// The members of a map, for a range-for; see the file comment.
VOR_API vorMemberRange vorMembers(const vorParameter& node);
/// As above; an empty handle gives an empty range (and stays empty).
VOR_API vorMemberRange vorMembers(const vorParameterPtr& node);

/// The elements of an array, for a range-for; see the file comment.
VOR_API vorElementRange vorElements(const vorParameter& node);
/// As above; an empty handle gives an empty range (and stays empty).
VOR_API vorElementRange vorElements(const vorParameterPtr& node);

#endif // VORPARAMETER_PARAMETER_VORPARAMETERMEMBERS_H
