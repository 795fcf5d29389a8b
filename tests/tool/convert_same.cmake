# vorparam convert of a saved file to JSON and back gives the file again, all
# but the header's "time" (JSON does not keep it; every save writes its own),
# and the JSON of that file is the JSON it came from. The files go through
# -o, which replaces a file already there.
#   cmake -DVORPARAM=path -DFILE=saved.vor -DWORK=dir -P convert_same.cmake
file(MAKE_DIRECTORY ${WORK})
file(WRITE ${WORK}/back.vor "left from an earlier run")
foreach(step "${FILE};json;${WORK}/file.json;text"
             "${WORK}/file.json;text;${WORK}/back.vor;json"
             "${WORK}/back.vor;json;${WORK}/back.json;text")
    list(GET step 0 from_file)
    list(GET step 1 to)
    list(GET step 2 to_file)
    list(GET step 3 from)
    execute_process(COMMAND ${VORPARAM} convert --from ${from} --to ${to} -o ${to_file} ${from_file}
                    RESULT_VARIABLE status ERROR_VARIABLE errors)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "vorparam convert of ${from_file} exited with ${status}:\n${errors}")
    endif()
endforeach()

file(READ ${FILE} original)
file(READ ${WORK}/back.vor back)
set(time_line "\n\t\"time\" : \"[0-9]+\"\n")
foreach(text original back)
    string(REGEX REPLACE "${time_line}" "\n\t\"time\" : \"\"\n" ${text} "${${text}}")
endforeach()
if(NOT back STREQUAL original)
    message(FATAL_ERROR "${FILE} comes back from JSON as ${WORK}/back.vor")
endif()
file(READ ${WORK}/file.json json)
file(READ ${WORK}/back.json json_again)
if(NOT json_again STREQUAL json)
    message(FATAL_ERROR "${WORK}/file.json comes back from the saved form as ${WORK}/back.json")
endif()
