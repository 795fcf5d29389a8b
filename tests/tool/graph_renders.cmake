# vorparam graph writes DOT that Graphviz draws, for the sample tree and for
# a saved file, with labels (paths like C:\cam\holders, quotes) intact.
#   cmake -DVORPARAM=path -DDOT=path -DFILE=saved.vor -DWORK=dir -P graph_renders.cmake
file(MAKE_DIRECTORY ${WORK})
foreach(source sample file)
    if(source STREQUAL "file")
        set(from -f ${FILE})
    else()
        set(from)
    endif()
    execute_process(COMMAND ${VORPARAM} graph ${from} -o ${WORK}/${source}.dot
                    RESULT_VARIABLE status ERROR_VARIABLE errors)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "vorparam graph ${from} exited with ${status}:\n${errors}")
    endif()
    execute_process(COMMAND ${DOT} -Tsvg ${WORK}/${source}.dot -o ${WORK}/${source}.svg
                    RESULT_VARIABLE status ERROR_VARIABLE errors)
    if(NOT status EQUAL 0 OR NOT errors STREQUAL "")
        message(FATAL_ERROR "dot -Tsvg of the ${source} graph: status ${status}\n${errors}")
    endif()
endforeach()
file(READ ${WORK}/file.svg svg)
foreach(text "tool.holder" "C:\\cam\\holders" "End mill &quot;6mm&quot;")
    string(FIND "${svg}" "${text}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "'${text}' is missing from ${WORK}/file.svg")
    endif()
endforeach()
