// Builds a small parameter tree under a root that knows the standard
// functions, computes values with expressions, loops over a map's members and
// reads a value whose expression fails.
#include <vorparameter/vorparameter.h>

#include <iostream>

vorParameterPtr length(const char* text) {
    vorParameterPtr par(new vorParameterNumeric(SUB_REAL, vorDimensions(DIM_LENGTH), 0.0));
    par->set_string(text);
    return par;
}

int main() {
    vorParameterLibRoot root("machining");
    vorParameterPtr tool = root.add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", length("6"));
    tool->add("name", vorParameterPtr(new vorParameterString("End mill 6mm")));
    // Expressions name other parameters by path and call standard functions.
    root.add("stepover", length("tool.diameter / sqrt(2)"));
    root.add("depth", length("tool.diameter / tool.flutes"));

    // Paths are dotted and case-insensitive; a failed lookup gives an error
    // value, never a null handle.
    std::cout << "stepover = " << root["StepOver"]->get_double() << "\n";
    for (const auto& [name, member] : vorMembers(tool))
        std::cout << "tool." << name << " = " << member->get_string() << "\n";

    // A failed expression reads as 0: vorReadDouble tells which error it was.
    vorCheckedDouble depth = vorReadDouble(root["depth"]);
    if (!depth)
        std::cout << "depth: " << depth.message() << "\n"; // no tool.flutes yet
    tool->add("flutes", vorParameterPtr(new vorParameterNumeric(SUB_INT, DIM_NONE, 4)));
    std::cout << "depth = " << vorReadDouble(root["depth"]).value() << "\n";
    return 0;
}
