//===- vorParameterProxy.cpp - Change calls to registered listeners -------===//

#include "vorparameter/parameter/vorParameterProxy.h"

#include <algorithm>

vorParameterProxy& vorParameterProxy::instance() {
    static vorParameterProxy proxy;
    return proxy;
}

bool vorParameterProxy::add_listener(vorParameterProxyListener* listener) {
    if (!listener ||
        std::find(m_listeners.begin(), m_listeners.end(), listener) != m_listeners.end())
        return false;
    m_listeners.push_back(listener);
    return true;
}

bool vorParameterProxy::remove_listener(vorParameterProxyListener* listener) {
    auto found = std::find(m_listeners.begin(), m_listeners.end(), listener);
    if (found == m_listeners.end())
        return false;
    m_listeners.erase(found);
    ++m_removals;
    return true;
}

void vorParameterProxy::send_change(vorParameter& changed) {
    // The listeners of this moment; one removed while the change travels is
    // not called any more.
    const std::vector<vorParameterProxyListener*> listeners = m_listeners;
    const unsigned long removals = m_removals;
    for (vorParameterProxyListener* listener : listeners) {
        if (m_removals != removals &&
            std::find(m_listeners.begin(), m_listeners.end(), listener) == m_listeners.end())
            continue;
        listener->parameter_changed(changed);
    }
}

void vorParameterProxy::onmodify(vorParameter* changed) {
    if (changed)
        instance().send_change(*changed);
}
