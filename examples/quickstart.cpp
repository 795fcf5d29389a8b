// Builds a small parameter tree, looks a value up by its path, reads it and
// prints the tree.
#include <vorparameter/vorparameter.h>

#include <iostream>

int main() {
    vorParameterRoot root("machining");

    vorParameterPtr tool(new vorParameterMap());
    tool->add("diameter",
              vorParameterPtr(new vorParameterNumeric(SUB_REAL, vorDimensions(DIM_LENGTH), 6.0)));
    tool->add("name", vorParameterPtr(new vorParameterString("End mill 6mm")));
    root.add("tool", tool);

    // Paths are dotted and case-insensitive. A failed lookup gives an error
    // value, never a null handle.
    vorParameterPtr diameter = root["Tool.Diameter"];
    if (diameter->is_error()) {
        std::cerr << "lookup failed: " << diameter->get_string() << "\n";
        return 1;
    }
    std::cout << "tool.diameter = " << diameter->get_double() << "\n";
    std::cout << root.print(0);
    return 0;
}
