# Runs the command given after "--" and checks its exit status against
# STATUS and its output (standard output and error, merged) against the
# regular expression OUTPUT:
#   cmake -DSTATUS=1 -DOUTPUT=regex -P expect.cmake -- command args...
# A test that only looked at the output would pass a command that crashed
# after printing; one that only looked at the status would pass a wrong
# message.
set(command)
set(after_separator FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
    if(after_separator)
        list(APPEND command "${CMAKE_ARGV${i}}")
    elseif(CMAKE_ARGV${i} STREQUAL "--")
        set(after_separator TRUE)
    endif()
endforeach()

execute_process(COMMAND ${command} RESULT_VARIABLE status
                OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status STREQUAL "${STATUS}")
    message(FATAL_ERROR "exit status ${status}, expected ${STATUS}; output:\n${output}")
endif()
if(NOT output MATCHES "${OUTPUT}")
    message(FATAL_ERROR "output does not match '${OUTPUT}':\n${output}")
endif()
