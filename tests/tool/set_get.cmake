# vorparam set writes the new values where they are asked for and nothing
# anywhere else: not to the source when -o is given, not at all when a path
# is missing or the source did not load completely, and never a stray
# temporary file. get reads the values back.
#   cmake -DVORPARAM=path -DSOURCES=tests/tool -DWORK=scratch-dir -P set_get.cmake
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
configure_file(${SOURCES}/job.vor ${WORK}/job.vor COPYONLY)
configure_file(${SOURCES}/truncated.vor ${WORK}/truncated.vor COPYONLY)

# Runs vorparam with the arguments after `expected_status`; the output (with
# errors) in `output`.
function(vorparam expected_status)
    execute_process(COMMAND ${VORPARAM} ${ARGN} RESULT_VARIABLE status
                    OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT status STREQUAL "${expected_status}")
        message(FATAL_ERROR "vorparam ${ARGN}: exit status ${status}, "
                            "expected ${expected_status}:\n${out}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()

function(expect_unchanged name)
    file(READ ${SOURCES}/${name} before)
    file(READ ${WORK}/${name} after)
    if(NOT before STREQUAL after)
        message(FATAL_ERROR "${name} was changed")
    endif()
endfunction()

vorparam(0 set ${WORK}/job.vor tool.diameter=8 "tool.name=Mill \"8\" C:\\x" -o ${WORK}/out.vor)
expect_unchanged(job.vor)
vorparam(0 get ${WORK}/out.vor tool.diameter tool.name tolerance)
if(NOT output STREQUAL "8\nMill \"8\" C:\\x\n0.01\n")
    message(FATAL_ERROR "get after set -o printed:\n${output}")
endif()

vorparam(0 set ${WORK}/job.vor tolerance=0.02)
vorparam(0 get ${WORK}/job.vor tolerance)
if(NOT output STREQUAL "0.02\n")
    message(FATAL_ERROR "get after setting in place printed:\n${output}")
endif()

# A missing path, a map, an unloadable source, a directory that is not there.
vorparam(1 set ${WORK}/out.vor tool.diameter=9 tool.nowhere=1 -o ${WORK}/refused.vor)
if(NOT output MATCHES "no parameter 'tool.nowhere'" OR EXISTS ${WORK}/refused.vor)
    message(FATAL_ERROR "set of a missing path wrote or said:\n${output}")
endif()
vorparam(1 set ${WORK}/out.vor tool=1)
vorparam(1 set ${WORK}/truncated.vor tolerance=1)
expect_unchanged(truncated.vor)
vorparam(1 set ${WORK}/out.vor tolerance=1 -o ${WORK}/no/such/dir/out.vor)
vorparam(0 get ${WORK}/out.vor tool.diameter)
if(NOT output STREQUAL "8\n")
    message(FATAL_ERROR "a refused set changed out.vor: ${output}")
endif()

file(GLOB leftovers ${WORK}/.*.tmp)
if(leftovers)
    message(FATAL_ERROR "temporary files left behind: ${leftovers}")
endif()
