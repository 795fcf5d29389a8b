#include "demo_tree.h"

#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/parameter/vorParameterData.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterRef.h"

namespace vorparam {

namespace {

vorParameterPtr number(vorParameterSubType kind, vorDimStandard dim, double value) {
    return vorParameterPtr(new vorParameterNumeric(kind, vorDimensions(dim), value));
}

vorParameterPtr text(const char* value) {
    return vorParameterPtr(new vorParameterString(value));
}

} // namespace

vorParameterPtr build_demo_tree() {
    vorParameterPtr root(new vorParameterLibRoot("machining"));

    vorParameterPtr tool(new vorParameterMap());
    tool->add("diameter", number(SUB_REAL, DIM_LENGTH, 6.0));
    tool->add("flutes", number(SUB_INT, DIM_NONE, 4.0));
    tool->add("name", text("End mill 6mm"));
    root->add("tool", tool);

    // The stepover follows the tool: its value is an expression, evaluated on
    // every read. Names it does not find in `strategy` are looked up in the
    // enclosing nodes, so "tool.diameter" resolves from the root.
    vorParameterPtr stepover = number(SUB_REAL, DIM_LENGTH, 0.0);
    stepover->set_string("tool.diameter * 0.5");

    vorParameterPtr strategy(new vorParameterMap());
    strategy->add("kind", text("offset area clear"));
    strategy->add("stepover", stepover);
    strategy->add("stepdown", number(SUB_REAL, DIM_LENGTH, 1.5));
    strategy->add("climb", number(SUB_BOOL, DIM_NONE, 1.0));
    // The cutter is the tool itself, not a copy: reads and lookups go
    // through to it.
    strategy->add("cutter", vorParameterPtr(new vorParameterRef("tool")));
    // A choice among titled states; a spiral needs three flutes or more.
    auto* method = new vorParameterEnum();
    method->add_state("raster", "Raster passes", "Parallel passes along X", "");
    method->add_state("offset", "Offset passes", "Passes that follow the boundary", "");
    method->add_state("spiral", "Spiral", "One continuous spiral", "tool.flutes >= 3");
    method->set_string("offset");
    strategy->add("method", vorParameterPtr(method));
    // The stock to cut: host data, of which the tool knows only the type.
    strategy->add("stock", vorParameterPtr(new vorParameterData("stock")));
    root->add("strategy", strategy);
    return root;
}

} // namespace vorparam
