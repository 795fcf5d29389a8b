// A host program built against the installed library: builds a small tree,
// looks a member up by its exact and by a differently-cased path, and prints
// the tree. The install test checks its output.
#include <vorparameter/vorparameter.h>

#include <iostream>

int main() {
    vorParameterRoot root("machining");
    root.add("tool", vorParameterPtr(new vorParameterMap()));
    root["tool"]->add("diameter", vorParameterPtr(new vorParameterNumeric(
                                      SUB_REAL, vorDimensions(DIM_LENGTH), 6.0)));

    int status = 0;
    for (const char* path : {"tool.diameter", "TOOL.Diameter"}) {
        vorParameterPtr diameter = root[path];
        if (diameter->is_error()) {
            std::cerr << path << ": " << diameter->get_string() << "\n";
            status = 1;
            continue;
        }
        std::cout << path << " = " << diameter->get_double() << "\n";
        if (diameter->get_double() != 6.0 || diameter->get_string().empty())
            status = 1;
    }
    std::cout << root.print(0);
    return status;
}
