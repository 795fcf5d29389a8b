// Meets each kind of failure a host has to handle: a failed lookup, an
// expression that fails, a value that reads as 0 because it failed, and the
// result codes of loading and saving.
#include <vorparameter/vorparameter.h>

#include <iostream>
#include <sstream>

int main() {
    vorParameterLibRoot root("machining");
    vorParameterPtr tool = root.add("tool", vorParameterPtr(new vorParameterMap()));
    tool->add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));

    // A lookup that finds nothing answers an error value, never null.
    vorParameterPtr radius = root["tool.radius"];
    if (radius->is_error())
        std::cout << "tool.radius: " << radius->get_expr() << "\n";

    // Evaluation stops at the first failure. At the end of the text that
    // error is the value; with text after it, an Expression/Reference error.
    vorEvaluator evaluator(&root);
    for (const char* text : {"tool.diameter + sqrt(-4)", "sqrt(-4) + tool.diameter"}) {
        vorParameterPtr value = evaluator.evaluate(text);
        std::cout << text << ": " << value->get_string() << ", kind " << value->subtype() << "\n";
    }

    // A parameter whose expression fails reads as 0; the checked read says why.
    tool->add("flutes", vorParameterPtr(new vorParameterNumeric(SUB_INT, DIM_NONE, 4)));
    vorParameterPtr feed =
        root.add("feed", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 0)));
    feed->set_string("tool.diameter / (tool.flutes - 4)");
    vorCheckedDouble read = vorReadDouble(feed);
    std::cout << "feed reads " << feed->get_double() << ": " << read.message() << "\n";

    // Loading reports one code; values the tree has no place for are listed.
    std::istringstream file("{ \"type\" : \"machining\", \"version\" : \"0\", \"time\" : \"0\" }\n"
                            "{ \"tool\" : { \"diameter\" : \"8\", \"holder\" : \"HSK63\" } }\n");
    vorParameterSerializer serializer;
    vorParameterSerialError loaded = serializer.load(root, file);
    std::cout << "load: " << loaded << ", diameter " << root["tool.diameter"]->get_double() << "\n";
    for (const utString& key : serializer.failed_pars())
        std::cout << "refused: " << key << "\n";

    std::istringstream broken("{ \"type\" : \"machining\", \"version\" : \"0\" }\n{ \"tool\" ");
    vorParameterSerialError code = serializer.load(root, broken);
    std::cout << "broken file: " << code << " at byte " << serializer.error_offset() << "\n";

    // A stream that cannot be written is a result code too.
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    std::cout << "save: " << serializer.save(root, full) << "\n";
    return 0;
}
