//===- vorParameterOpenRoot.cpp - Opening any saved file ------------------===//

#include "vorparameter/persistence/vorParameterOpenRoot.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/expression/vorParameterString.h"

#include <sstream>
#include <vector>

namespace {

bool present(const vorParameterPtr& par) {
    return par->is_ref() || !par->is_error();
}

/// Creates what the tree lacks: a container for each block the file opens,
/// a string for each value that has nowhere to go. Parameters the file
/// locks with an id are locked when the load is over (a locked parameter
/// would refuse the value that follows its definition).
class vorParameterOpenLoader : public vorParameterLoader {
public:
    explicit vorParameterOpenLoader(vorParameterOpenRoot& root)
        : vorParameterLoader(root)
        , m_root(root) {}
    ~vorParameterOpenLoader() override {
        for (const auto& [key, id] : m_locks)
            m_root.lock_with_id(key, id);
    }
    vorParameterOpenLoader(const vorParameterOpenLoader&) = delete;
    vorParameterOpenLoader& operator=(const vorParameterOpenLoader&) = delete;

    void open_block(const vorParameterKey& key, vorParameterType type) override {
        if (key.empty() || present(m_root.lookup_member(key)))
            return;
        if (type == TYPE_MAP)
            add_at(key, vorParameterPtr(new vorParameterMap()));
        else
            add_at(key, vorParameterPtr(new vorParameterArray()));
    }

    int load_par(const vorParameterKey& key, const utString& text) override {
        vorParameterPtr target = m_root.lookup_member(key);
        if (present(target))
            return load_into(target, key, text);
        if (!add_at(key, vorParameterPtr(new vorParameterString(text))))
            return 1;
        record_loaded(key.str());
        return 0;
    }

    void associate(const vorParameterKey& key, vorUniqueIdPtr id) override {
        m_locks.emplace_back(key, std::move(id));
    }

private:
    /// Adds `par` at `key` in its parent container; false when there is none.
    /// An element beyond the end of an array first gets the slots before it
    /// filled (see empty_slot). A vector keeps the length its type word gave
    /// it: a file that reads it back makes that many elements of its kind,
    /// so an element added beyond them would not survive a save.
    bool add_at(const vorParameterKey& key, vorParameterPtr par) {
        const vorParameterKey parent_key = key.parent();
        vorParameterPtr parent = parent_key.empty() ? vorParameterPtr(coPrfExtern(), &m_root)
                                                    : m_root.lookup_member(parent_key);
        if (parent->is_error() || parent->is_ref() || parent->subtype() == SUB_VECTOR)
            return false;
        const vorParameterKey member_key(key.last());
        int index = 0;
        if (parent->type() == TYPE_ARRAY && member_key.index(index)) {
            while (parent->size() < index)
                if (parent->add(vorParameterKey(), empty_slot())->is_error())
                    return false;
        }
        return !parent->add(member_key, std::move(par))->is_error();
    }

    /// What stands in a slot the file left empty: an inactive empty string,
    /// which a save leaves out again, keeping the empty slot.
    static vorParameterPtr empty_slot() {
        vorParameterPtr slot(new vorParameterString());
        slot->set_active("0");
        return slot;
    }

    vorParameterOpenRoot& m_root;
    std::vector<std::pair<vorParameterKey, vorUniqueIdPtr>> m_locks;
};

} // namespace

UT_DEFINE_TYPE(vorParameterOpenRoot, vorParameterLibRoot)

vorParameterOpenRoot::vorParameterOpenRoot(const utString& root_type, int version)
    : vorParameterLibRoot(root_type)
    , m_version(version) {}

std::unique_ptr<vorParameterLoader> vorParameterOpenRoot::create_loader(int) {
    return std::make_unique<vorParameterOpenLoader>(*this);
}

void vorParameterOpenRoot::lock_with_id(const vorParameterKey& key, const vorUniqueIdPtr& id) {
    vorParameterPtr par = lookup_member(key);
    if (!present(par))
        return;
    m_lock_ids[par.get()] = vorRefToObjectId(id);
    par->lock(1);
}

vorRefToObjectId vorParameterOpenRoot::get_lock_id_imp(const vorParameter& node) const {
    if (node.is_locked()) {
        // The file's id of the nearest parameter it locked, at or above node.
        for (const vorParameter* at = &node; at; at = at->parent()) {
            auto found = m_lock_ids.find(at);
            if (found != m_lock_ids.end())
                return found->second;
        }
    }
    return vorParameterLibRoot::get_lock_id_imp(node);
}

namespace {

// The header of `in`, read so that the body can be read from the start
// again: a stream that can seek goes back to where it was; any other is
// copied into `copy` first, and `body` is then that copy.
vorParameterSerialError read_header_and_rewind(std::istream& in, vorParameterFileHeader& header,
                                               std::istringstream& copy, std::istream*& body) {
    const std::istream::pos_type start = in.good() ? in.tellg() : std::istream::pos_type(-1);
    if (start != std::istream::pos_type(-1)) {
        const vorParameterSerialError result = vorParameterSerializer::read_header(in, header);
        in.clear();
        in.seekg(start);
        body = &in;
        return result;
    }
    std::ostringstream text;
    if (in.good())
        text << in.rdbuf();
    copy.str(text.str());
    const vorParameterSerialError result = vorParameterSerializer::read_header(copy, header);
    copy.clear();
    copy.seekg(0);
    body = &copy;
    return result;
}

} // namespace

std::unique_ptr<vorParameterOpenRoot> vorParameterOpenRoot::load(std::istream& in,
                                                                 vorParameterSerializer& serializer,
                                                                 vorParameterSerialError& error) {
    vorParameterFileHeader header;
    std::istringstream copy;
    std::istream* body = nullptr;
    const vorParameterSerialError header_error = read_header_and_rewind(in, header, copy, body);
    auto root = std::make_unique<vorParameterOpenRoot>(header.type, header.version);
    // A bad header fails the load the same way, which also tells the
    // serializer where it failed.
    error = serializer.load(*root, *body);
    if (header_error != SERIAL_OK)
        error = header_error;
    return root;
}
