//===- vorParameterProxy.h - Change calls to registered listeners -*- C++ -*-===//
//
// The proxy is the process-wide switchboard between a tree and the parts of
// a host that show or use its values (a property grid, a preview). A host
// installs vorParameterProxy::onmodify as the on-modify function of a node
// (usually a root, so that every change below it reaches it) and registers
// its listeners; each change is then sent to every listener, in the order
// they registered.
//
//   struct Grid : vorParameterProxyListener {
//       void parameter_changed(vorParameter& changed) override { refresh(changed); }
//   };
//   Grid grid;
//   vorParameterProxy::instance().add_listener(&grid);
//   root.set_onmodify_callback(&vorParameterProxy::onmodify);
//
// A listener may add or remove listeners (itself included) while it is being
// called: the change goes to the listeners registered when it was sent,
// except those removed meanwhile. Listeners are not owned; a host removes a
// listener before destroying it. Like the tree, the proxy is used from the
// host's one thread.
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_PARAMETER_VORPARAMETERPROXY_H
#define VORPARAMETER_PARAMETER_VORPARAMETERPROXY_H

#include "vorparameter/platform/vorExport.h"

#include <cstddef>
#include <vector>

class vorParameter;

class VOR_API vorParameterProxyListener {
public:
    virtual ~vorParameterProxyListener() = default;
    /// Called with the node whose on-modify function fired (for a root's
    /// function, the root: see vorParameter::call_onmodify).
    virtual void parameter_changed(vorParameter& changed) = 0;
};

class VOR_API vorParameterProxy {
public:
    static vorParameterProxy& instance();

    vorParameterProxy(const vorParameterProxy&) = delete;
    vorParameterProxy& operator=(const vorParameterProxy&) = delete;

    /// Registers `listener` once; false when it was registered already.
    bool add_listener(vorParameterProxyListener* listener);
    /// False when `listener` was not registered.
    bool remove_listener(vorParameterProxyListener* listener);
    std::size_t num_listeners() const { return m_listeners.size(); }

    /// Sends `changed` to every listener.
    void send_change(vorParameter& changed);
    /// An on-modify function that sends the change through the proxy.
    static void onmodify(vorParameter* changed);

private:
    vorParameterProxy() = default;

    std::vector<vorParameterProxyListener*> m_listeners;
    /// Raised by every removal, so that a send in progress skips listeners
    /// removed during it.
    unsigned long m_removals = 0;
};

#endif // VORPARAMETER_PARAMETER_VORPARAMETERPROXY_H
