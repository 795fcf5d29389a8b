# Run by ctest (cmake -P): lists the dynamic symbols that LIBRARY defines and
# fails when one of them is not the library's own, such as a standard-library
# template instantiation, or when a public name is missing.
#
# Inputs: NM LIBRARY
cmake_policy(VERSION 3.20)

execute_process(COMMAND ${NM} -D --defined-only -C ${LIBRARY}
                RESULT_VARIABLE rc OUTPUT_VARIABLE listing ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
    message(FATAL_ERROR "${NM} -D --defined-only -C ${LIBRARY} failed (${rc}):\n${err}")
endif()
string(REPLACE "\n" ";" lines "${listing}")

# A name is the library's own when its outermost scope carries one of the
# library's prefixes: "vorParameterMap::add(...)", "typeinfo for giAngle",
# "vorformat_double(double, int)". A return type in front ("utString*
# std::copy<...>") marks a template from elsewhere.
set(own_name "^(vor|ut|co|gi|nls|CArchive)[A-Za-z0-9_]*(::|\\(|<|$)")
set(own_special "^((typeinfo name|typeinfo|vtable|VTT|guard variable) for )")
set(own_free "^(to_xml|xml_name|xml_value)\\(|^operator(==|<<)\\([^)]*(vorParameterPtr|utString)")

set(names)
set(foreign)
foreach(line IN LISTS lines)
    if(NOT line MATCHES "^[0-9a-fA-F]* +[A-Za-z] +(.+)$")
        continue()
    endif()
    set(name "${CMAKE_MATCH_1}")
    list(APPEND names "${name}")
    string(REGEX REPLACE "${own_special}" "" entity "${name}")
    if(NOT entity MATCHES "${own_name}" AND NOT entity MATCHES "${own_free}")
        list(APPEND foreign "${name}")
    endif()
endforeach()

list(LENGTH foreign count)
if(count GREATER 0)
    list(JOIN foreign "\n  " shown)
    message(FATAL_ERROR "${LIBRARY} exports ${count} symbols that are not its own:\n  ${shown}")
endif()

# What a host links against must still be there, the names that no prefix
# covers above all.
foreach(expected IN ITEMS
        "vtable for vorParameter"
        "typeinfo for vorParameterNumeric"
        "vorParameterLibFunctions::sqrt(vorParameterPtr const&)"
        "vorformat_double(double, int)"
        "to_xml(vorParameter const&)"
        "operator==(vorParameterPtr const&, vorParameterPtr const&)"
        "operator<<(std::ostream&, utString const&)")
    if(NOT expected IN_LIST names)
        message(FATAL_ERROR "${LIBRARY} does not export ${expected}")
    endif()
endforeach()

list(LENGTH names count)
message(STATUS "${LIBRARY}: ${count} exported symbols, all the library's own")
