// A small machining tree built in code: the scope of the demo, and of any
// command that wants a tree to work on without loading one.
#ifndef VORPARAM_DEMO_TREE_H
#define VORPARAM_DEMO_TREE_H

#include "vorparameter/parameter/vorParameter.h"

namespace vorparam {

/// A root of type "machining" that knows the standard functions, holding
///   tool      diameter (real length 6), flutes (integer 4), name (text)
///   strategy  stepover (tool.diameter * 0.5), stepdown (real length 1.5),
///             kind (text), climb (boolean), cutter (a reference to tool)
vorParameterPtr build_demo_tree();

} // namespace vorparam

#endif // VORPARAM_DEMO_TREE_H
