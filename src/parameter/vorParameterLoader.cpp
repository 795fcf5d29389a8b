//===- vorParameterLoader.cpp - Receiving a tree from a file --------------===//

#include "vorparameter/parameter/vorParameterLoader.h"

#include "vorparameter/parameter/vorParameterRoot.h"

namespace {

/// Whether `par` is a parameter a loader can use: anything but an error (a
/// reference is one even while its target is missing).
bool present(const vorParameterPtr& par) {
    return par->is_ref() || !par->is_error();
}

} // namespace

int vorParameterLoader::define_par(const vorParameterKey& key, vorParameterPtr par) {
    if (present(m_root.lookup_member(key)))
        return 0;
    const vorParameterKey parent_key = key.parent();
    vorParameterPtr container = parent_key.empty() ? vorParameterPtr(coPrfExtern(), &m_root)
                                                   : m_root.lookup_member(parent_key);
    if (container->is_error())
        return 1;
    return present(container->add(vorParameterKey(key.last()), par)) ? 0 : 1;
}

int vorParameterLoader::load_par(const vorParameterKey& key, const utString& text) {
    return load_into(m_root.lookup_member(key), key, text);
}

int vorParameterLoader::load_into(const vorParameterPtr& target, const vorParameterKey& key,
                                  const utString& text) {
    if (!present(target))
        return 1;
    target->set_string(text);
    m_loaded.push_back(key.str());
    return 0;
}

void vorParameterLoader::associate(const vorParameterKey&, vorUniqueIdPtr) {}

void vorParameterLoader::open_block(const vorParameterKey&, vorParameterType) {}
