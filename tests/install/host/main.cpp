// A host program built against the installed library, in C++20: builds a
// small tree, looks a member up by its exact and by a differently-cased path,
// prints the tree and the version the headers announce. The install test
// checks its output.
#include <vorparameter/vorparameter.h>

#include <iostream>

// The package must leave the host's standard alone: neither the exported
// target nor the pkg-config flags may lower it to C++17.
static_assert(__cplusplus >= 202002L, "the host was not compiled as C++20");

int main() {
    std::cout << "headers " << VORPARAMETER_VERSION_STRING << " = " << VORPARAMETER_VERSION_MAJOR
              << "." << VORPARAMETER_VERSION_MINOR << "." << VORPARAMETER_VERSION_PATCH << " = "
              << VORPARAMETER_VERSION << "\n";

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
