//===- vorParameterIter.h - Walking a parameter tree ------------*- C++ -*-===//
//
// vorParameterIter walks the parameters below a start node, depth first, each
// container before its contents:
//
//   vorParameterIter it(tool);
//   it.set_leaf_only(1);
//   while (++it)
//       out << it.index().str() << " = " << it()->get_string() << '\n';
//
// The first ++ moves to the first node; ++ is false when the walk is over.
// The start node itself is not visited, and a start that is not a container
// yields nothing.
//
// Settings (change them before the walk; reset() starts it again):
//   set_max_depth(n)      0 (the default, or any n < 0) walks the whole tree;
//                         1 only the direct members, 2 their members too...
//   set_leaf_only(1)      visits only leaves, but still walks through the
//                         containers;
//   set_active_only(1)    skips inactive nodes and everything below them;
//   exclude_functions(0)  visits functions too (skipped by default);
//   exclude_reserved()    skips members whose name begins with "_";
//   set_follow_refs(1)    walks on through references into their referents.
//
// A leaf is a node that is neither a map nor an array, or a reference that
// the walk does not go through: with references followed, a reference to a
// container is a container, unless nofollow() holds for it or its referent is
// a container the walk is already inside, which makes it a leaf. A reference
// whose referent is no container is a leaf like that referent.
//
// index() is the key of the current node relative to the start node, made
// with the key concatenation of vorParameterKey: a map member gives its name
// ("tool.diameter"), an array element its index ("list[2].name"; a direct
// element of an array start is "[3]"), and a node reached through a reference
// continues the path of the reference ("cut.tool.diameter"), so that the start
// node's lookup of index() finds the current node. A path longer than a key
// may be (vorParameterKeyImpl::max_path_length bytes or max_path_components
// separators) has no key: index() is then the empty key. Before the first
// step and after the last, operator()() is an empty handle and index() the
// empty key.
//
// Changes during a walk: the walk takes each container's members as they
// stand when it enters that container, and holds them by handles. Members
// added to a container the walk is in are not visited, members removed from
// it still are (their index() is the name they had), and containers entered
// later are seen as they are then. Nothing the walk holds can dangle, whatever
// the host adds, removes or releases meanwhile. Whether the walk goes into a
// node is decided when it arrives there.
//
// Cycles: the walk never enters a container it is already inside, so a
// reference back to the start or to any container on the way down (or a
// shared list that comes round to itself) is not followed again, and every
// walk ends. A subtree reached through several references is walked once for
// each of them.
//
// Cost: no recursion on the machine stack (the levels are kept on a stack
// inside the iterator), so any depth can be walked; time linear in the
// nodes visited, and memory for the members of the containers currently
// entered. A node reached through a reference costs the reference's
// resolution.
//
// The one-level iterators (vorBaseParIter and its derived classes) step over
// the direct members of one container, with the same rule for changes.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERITER_H
#define VORPARAMETER_PARAMETER_VORPARAMETERITER_H

#include "vorparameter/parameter/vorParameter.h"

#include <memory>
#include <unordered_set>
#include <vector>

class vorParameterArray;
class vorParameterMap;

/// Steps over the direct members of one container. This base class steps
/// over nothing: it is what create() gives for a node that is no container.
class VOR_API vorBaseParIter {
public:
    vorBaseParIter() = default;
    virtual ~vorBaseParIter() = default;

    /// True when there is no current member: before the first step and after
    /// the last.
    virtual bool undefined() const { return true; }
    /// Moves to the next member (the first call to the first); false, and
    /// undefined, at the end.
    virtual int operator++() { return 0; }
    /// The current member; an empty handle when undefined.
    vorParameterPtr operator()() const { return member(); }
    /// The current member's key in its container; the empty key when undefined.
    virtual vorParameterKey index() const { return vorParameterKey(); }
    /// A copy standing at the same place.
    virtual vorBaseParIter* clone() const { return new vorBaseParIter(*this); }

    /// A new iterator over the members of `container` (owned by the caller):
    /// a vorMapParIter for a map, a vorArrayParIter for an array (or a list,
    /// vector...), otherwise one that steps over nothing. A reference is no
    /// container here: give its referent to walk that.
    static vorBaseParIter* create(const vorParameterPtr& container);

protected:
    vorBaseParIter(const vorBaseParIter&) = default;
    vorBaseParIter& operator=(const vorBaseParIter&) = default;

    /// The current member, or an empty handle; without copying the handle.
    virtual const vorParameterPtr& member() const;
    /// True when the current member's key is a reserved name (begins with "_").
    virtual bool reserved() const { return false; }

private:
    friend class vorParameterIter;
};

/// The members of a map in the map's own order, as they stood when the
/// iterator was made; index() is each member's name key.
class VOR_API vorMapParIter : public vorBaseParIter {
public:
    explicit vorMapParIter(const vorParameterMap& map);

    bool undefined() const override { return m_at == 0 || m_at > m_members.size(); }
    int operator++() override;
    vorParameterKey index() const override;
    vorBaseParIter* clone() const override { return new vorMapParIter(*this); }

protected:
    vorMapParIter(const vorMapParIter&) = default;
    const vorParameterPtr& member() const override;
    bool reserved() const override;

private:
    struct Member {
        utString name;
        vorParameterPtr par;
    };
    std::vector<Member> m_members;
    /// One more than the index of the current member; 0 before the first.
    std::size_t m_at = 0;
};

/// The elements of an array in index order, as they stood when the iterator
/// was made; index() is each element's index key ("[2]").
class VOR_API vorArrayParIter : public vorBaseParIter {
public:
    explicit vorArrayParIter(const vorParameterArray& array);

    bool undefined() const override { return m_at == 0 || m_at > m_elements.size(); }
    int operator++() override;
    vorParameterKey index() const override;
    vorBaseParIter* clone() const override { return new vorArrayParIter(*this); }

protected:
    vorArrayParIter(const vorArrayParIter&) = default;
    const vorParameterPtr& member() const override;

private:
    vorParameterPtrcoDList m_elements;
    std::size_t m_at = 0;
};

/// Exactly one node, under the key given (by default its own name).
class VOR_API vorSingleParIter : public vorBaseParIter {
public:
    explicit vorSingleParIter(vorParameterPtr node);
    vorSingleParIter(vorParameterPtr node, vorParameterKey key);

    bool undefined() const override { return m_at != 1; }
    int operator++() override;
    vorParameterKey index() const override;
    vorBaseParIter* clone() const override { return new vorSingleParIter(*this); }

protected:
    vorSingleParIter(const vorSingleParIter&) = default;
    const vorParameterPtr& member() const override;
    bool reserved() const override;

private:
    vorParameterPtr m_node;
    vorParameterKey m_key;
    /// 0 before the step, 1 on the node, 2 after it.
    int m_at = 0;
};

/// The depth-first walk below a start node; see the file comment.
class VOR_API vorParameterIter {
public:
    /// A walk below `start`, which the walk keeps alive.
    vorParameterIter(vorParameterPtr start);
    /// A walk below `start`; it shares ownership of the node when handles own
    /// it, and otherwise (a node on the stack) the caller keeps it alive.
    vorParameterIter(const vorParameter* start);
    /// A copy that goes on from the same place with the same settings.
    vorParameterIter(const vorParameterIter& other);
    vorParameterIter(vorParameterIter&& other) noexcept;
    vorParameterIter& operator=(const vorParameterIter& other);
    vorParameterIter& operator=(vorParameterIter&& other) noexcept;
    ~vorParameterIter();

    /// Moves to the next node that the filters accept; false at the end.
    int operator++();
    /// The current node; an empty handle before the first step and at the end.
    vorParameterPtr operator()() const;
    /// The current node's key relative to the start node.
    vorParameterKey index() const;
    /// Starts the walk again (the settings stay).
    void reset();

    void set_max_depth(int depth) { m_max_depth = depth > 0 ? depth : 0; }
    void set_follow_refs(int on) { m_follow_refs = on != 0; }
    void set_leaf_only(int on) { m_leaf_only = on != 0; }
    void set_active_only(int on) { m_active_only = on != 0; }
    void exclude_functions(int on) { m_exclude_functions = on != 0; }
    void exclude_reserved() { m_exclude_reserved = true; }

private:
    enum PrefixState { PREFIX_UNKNOWN, PREFIX_KNOWN, PREFIX_TOO_LONG };

    /// One container the walk is inside.
    struct Level {
        std::unique_ptr<vorBaseParIter> members;
        vorParameterPtr container;
        /// How far below the start node the members stand (1 for the start's).
        int depth;
        /// The container's key relative to the start, made when first asked.
        mutable vorParameterKey prefix;
        mutable PrefixState prefix_state;
    };

    /// Makes one step: enters the container chosen at the last step, or moves
    /// on. False at the end of the walk.
    bool step();
    /// Looks at the node just arrived at: whether it is a leaf, its type, and
    /// which container (if any) the next step enters.
    void arrive(const Level& level);
    bool accepted(const Level& level) const;
    /// True when the walk may go on through `node`, a reference.
    bool may_follow(const vorParameter& node) const;
    /// True when the walk is already inside `container`, met in `level`.
    bool is_entered(const vorParameter* container, const Level& level);
    void enter(vorParameterPtr container);
    void leave();
    /// The key of `level`'s container relative to the start (made now if not
    /// known); false when that path is too long for a key.
    bool prefix_of(std::size_t level) const;

    vorParameterPtr m_start;
    std::vector<Level> m_levels;
    bool m_started = false;

    // What the last step found.
    vorParameterPtr m_next_container;
    bool m_leaf = true;
    vorParameterType m_type = TYPE_ERROR;

    // Containers the walk is inside, kept once a step could close a cycle.
    std::unordered_set<const vorParameter*> m_entered;
    bool m_tracking = false;

    int m_max_depth = 0;
    bool m_follow_refs = false;
    bool m_leaf_only = false;
    bool m_active_only = false;
    bool m_exclude_functions = true;
    bool m_exclude_reserved = false;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERITER_H
