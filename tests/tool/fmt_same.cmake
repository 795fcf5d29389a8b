# vorparam fmt of a saved file gives the file back byte for byte, all but the
# header's "time", which every save writes anew.
#   cmake -DVORPARAM=path -DFILE=saved.vor -P fmt_same.cmake
execute_process(COMMAND ${VORPARAM} fmt ${FILE} RESULT_VARIABLE status
                OUTPUT_VARIABLE formatted ERROR_VARIABLE errors)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "vorparam fmt exited with ${status}:\n${errors}")
endif()
file(READ ${FILE} original)

set(time_line "\n\t\"time\" : \"[0-9]+\"\n")
foreach(text original formatted)
    if(NOT ${text} MATCHES "${time_line}")
        message(FATAL_ERROR "no time line in the ${text} text:\n${${text}}")
    endif()
    string(REGEX REPLACE "${time_line}" "\n\t\"time\" : \"\"\n" ${text} "${${text}}")
endforeach()
if(NOT formatted STREQUAL original)
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/fmt_output.vor "${formatted}")
    message(FATAL_ERROR "vorparam fmt differs from ${FILE}; "
                        "its output is in ${CMAKE_CURRENT_BINARY_DIR}/fmt_output.vor")
endif()
