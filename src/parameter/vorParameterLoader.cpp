//===- vorParameterLoader.cpp - Receiving a tree from a file --------------===//

#include "vorparameter/parameter/vorParameterLoader.h"

#include "vorparameter/parameter/vorParameterRoot.h"

int vorParameterLoader::define_par(const vorParameterKey& key, vorParameterPtr par) {
    vorParameterKey parent_key = key.parent();
    vorParameterPtr container =
        parent_key.empty() ? vorParameterPtr(coPrfExtern(), &m_root) : m_root[parent_key];
    if (container->is_error())
        return 1;
    vorParameterKey member_key(key.last());
    vorParameterPtr existing = (*container)[member_key];
    if (!existing->is_error())
        return 0;
    return container->add(member_key, par)->is_error() ? 1 : 0;
}

int vorParameterLoader::load_par(const vorParameterKey& key, const utString& text) {
    vorParameterPtr target = m_root[key];
    if (target->is_error())
        return 1;
    target->set_string(text);
    m_loaded.push_back(key.str());
    return 0;
}

void vorParameterLoader::associate(const vorParameterKey&, vorUniqueIdPtr) {}

void vorParameterLoader::open_block(const vorParameterKey&, vorParameterType) {}
