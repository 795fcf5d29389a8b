// A host's on-modify function: the root's function hears every change below
// it, because a change calls the nearest function up the tree.
#include <vorparameter/vorparameter.h>

#include <iostream>

namespace {

int g_changes = 0;

void on_modify(vorParameter* node) {
    ++g_changes;
    std::cout << "changed below " << vorParameter::get_name(*node, 1) << "\n";
}

} // namespace

int main() {
    vorParameterLibRoot root("machining");
    vorParameterPtr tool = root.add("tool", vorParameterPtr(new vorParameterMap()));
    vorParameterPtr depth =
        tool->add("depth", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 2)));
    vorParameterPtr finish =
        tool->add("finish", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 0.1)));
    finish->set_active("depth > 1");
    root.set_onmodify_callback(&on_modify);

    std::cout << "finish active: " << finish->is_active() << "\n";
    depth->set_double(0.5); // calls on_modify(root); finish's state is now unknown
    std::cout << "finish active: " << finish->is_active() << "\n";
    {
        vorBlockParUpdateCallbacks quiet; // no on-modify call while it lives
        depth->set_double(3);
    }
    std::cout << "finish active: " << finish->is_active() << "\n";
    std::cout << "changes heard: " << g_changes << "\n";
    return g_changes == 1 ? 0 : 1;
}
