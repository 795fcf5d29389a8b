# Runs the command given after "--" and checks its exit status against
# STATUS and its output (standard output and error, merged in the order
# written) against the regular expression OUTPUT:
#   cmake -DSTATUS=1 -DOUTPUT=regex [-DINPUT=session.txt -DWORK=scratch-dir
#         [-DCOPY=job.vor] [-DLONG_LINE=ON]] -P expect.cmake -- command args...
# A test that only looked at the output would pass a command that crashed
# after printing; one that only looked at the status would pass a wrong
# message.
#
# INPUT is a file fed to the command's standard input (a pipe, so vorparam
# repl shows no prompt). In it, @WORK@ stands for the scratch directory WORK
# and @SAMPLES@ for the directory of the input file. COPY names files of that
# directory to copy into the scratch directory first, for sessions that save
# over the file they work on. LONG_LINE appends a line of 100 000
# characters, which must work like any other.
cmake_minimum_required(VERSION 3.16)
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

set(input)
if(INPUT)
    file(REMOVE_RECURSE ${WORK})
    file(MAKE_DIRECTORY ${WORK})
    get_filename_component(samples ${INPUT} DIRECTORY)
    foreach(name ${COPY})
        configure_file(${samples}/${name} ${WORK}/${name} COPYONLY)
    endforeach()
    file(READ ${INPUT} session)
    if(session MATCHES "@WORK@|@SAMPLES@")
        string(REPLACE "@WORK@" "${WORK}" session "${session}")
        string(REPLACE "@SAMPLES@" "${samples}" session "${session}")
        file(WRITE ${WORK}/session.txt "${session}")
    else()
        # Copied byte for byte: a session may hold NUL bytes and invalid UTF-8.
        configure_file(${INPUT} ${WORK}/session.txt COPYONLY)
    endif()
    if(LONG_LINE)
        string(REPEAT "x" 100000 many_x)
        file(APPEND ${WORK}/session.txt "length('${many_x}') == 100000\n")
    endif()
    set(input INPUT_FILE ${WORK}/session.txt)
endif()

execute_process(COMMAND ${command} ${input} RESULT_VARIABLE status
                OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status STREQUAL "${STATUS}")
    message(FATAL_ERROR "exit status ${status}, expected ${STATUS}; output:\n${output}")
endif()
if(NOT output MATCHES "${OUTPUT}")
    message(FATAL_ERROR "output does not match '${OUTPUT}':\n${output}")
endif()
