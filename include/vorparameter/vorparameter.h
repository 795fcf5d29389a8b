//===- vorparameter.h - The whole public API of libvorparameter -*- C++ -*-===//
//
// One include gives a host everything: the parameter tree (handles, keys,
// maps, roots), values (numbers with dimensions, strings, errors), the
// expression evaluator, the containers (arrays, lists, enumerations,
// vectors), the function library and the platform types they use (text,
// geometry, units).
//
//   #include <vorparameter/vorparameter.h>
//
//   vorParameterPtr root(new vorParameterLibRoot("machining"));
//   vorParameterPtr tool = root->add("tool", vorParameterPtr(new vorParameterMap()));
//   tool->add("diameter", vorParameterPtr(new vorParameterNumeric(SUB_REAL, DIM_LENGTH, 6)));
//   double d = (*root)["tool.diameter"]->get_double();   // 6
//
//===----------------------------------------------------------------------===//
#ifndef VORPARAMETER_VORPARAMETER_H
#define VORPARAMETER_VORPARAMETER_H

#include "vorparameter/version.h"

#include "vorparameter/platform/CArchive.h"
#include "vorparameter/platform/coContainers.h"
#include "vorparameter/platform/giAngle.h"
#include "vorparameter/platform/giPoint.h"
#include "vorparameter/platform/giTolerance.h"
#include "vorparameter/platform/giVector.h"
#include "vorparameter/platform/giWorkplane3.h"
#include "vorparameter/platform/giXform3.h"
#include "vorparameter/platform/nlsUtils.h"
#include "vorparameter/platform/utString.h"
#include "vorparameter/platform/vorCharTypes.h"
#include "vorparameter/platform/vorStringUtils.h"
#include "vorparameter/platform/vorTranslate.h"
#include "vorparameter/platform/vorUniqueId.h"
#include "vorparameter/platform/vorUnitsUtils.h"

#include "vorparameter/parameter/vorParameter.h"
#include "vorparameter/parameter/vorParameterData.h"
#include "vorparameter/parameter/vorParameterGuards.h"
#include "vorparameter/parameter/vorParameterIter.h"
#include "vorparameter/parameter/vorParameterKey.h"
#include "vorparameter/parameter/vorParameterLoader.h"
#include "vorparameter/parameter/vorParameterMap.h"
#include "vorparameter/parameter/vorParameterMembers.h"
#include "vorparameter/parameter/vorParameterProxy.h"
#include "vorparameter/parameter/vorParameterRef.h"
#include "vorparameter/parameter/vorParameterRoot.h"
#include "vorparameter/parameter/vorParameterUpdateTrack.h"
#include "vorparameter/parameter/vorQueryParameter.h"

#include "vorparameter/expression/vorCheckedRead.h"
#include "vorparameter/expression/vorDimensions.h"
#include "vorparameter/expression/vorEvaluator.h"
#include "vorparameter/expression/vorParameterError.h"
#include "vorparameter/expression/vorParameterNumeric.h"
#include "vorparameter/expression/vorParameterString.h"
#include "vorparameter/expression/vorRange.h"

#include "vorparameter/containers/vorParameterArray.h"
#include "vorparameter/containers/vorParameterEnum.h"
#include "vorparameter/containers/vorParameterList.h"
#include "vorparameter/containers/vorParameterSharedList.h"
#include "vorparameter/containers/vorParameterTempArray.h"
#include "vorparameter/containers/vorParameterUtils.h"
#include "vorparameter/containers/vorParameterVector.h"

#include "vorparameter/library/vorParameterArgDecoder.h"
#include "vorparameter/library/vorParameterFunction.h"
#include "vorparameter/library/vorParameterLib.h"
#include "vorparameter/library/vorParameterLibRoot.h"
#include "vorparameter/library/vorParameterMemberFunction.h"

#include "vorparameter/persistence/vorParameterOpenRoot.h"
#include "vorparameter/persistence/vorParameterSerializer.h"
#include "vorparameter/persistence/vorParameterXml.h"

#endif // VORPARAMETER_VORPARAMETER_H
