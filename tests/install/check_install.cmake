# Run by ctest (cmake -P): installs the build into WORK_DIR/prefix, then builds
# and runs host programs against that prefix only.
#
# Inputs: BUILD_DIR SOURCE_DIR WORK_DIR GENERATOR MAKE_PROGRAM CXX_COMPILER
#         BUILD_TYPE CONFIG HOST_FLAGS VERSION (and its VERSION_MAJOR,
#         VERSION_MINOR, VERSION_PATCH) WITH_TOOL

# run(<what> COMMAND ...): runs a command, fails the test with its output when
# it fails, and leaves its standard output in RUN_OUTPUT.
function(run what)
    execute_process(${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "${what} failed (${rc}):\n${out}\n${err}")
    endif()
    set(RUN_OUTPUT "${out}" PARENT_SCOPE)
endfunction()

function(expect_output what output pattern)
    if(NOT output MATCHES "${pattern}")
        message(FATAL_ERROR "${what}: output does not match \"${pattern}\":\n${output}")
    endif()
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

# 1. Install.
set(config_args)
if(CONFIG)
    set(config_args --config ${CONFIG})
endif()
run("cmake --install" COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix} ${config_args})

foreach(header vorparameter.h version.h)
    if(NOT EXISTS ${prefix}/include/vorparameter/${header})
        message(FATAL_ERROR "the header vorparameter/${header} was not installed")
    endif()
endforeach()
file(GLOB_RECURSE package_config ${prefix}/*/vorparameterConfig.cmake)
file(GLOB_RECURSE pc_file ${prefix}/*/vorparameter.pc)
if(NOT package_config OR NOT pc_file)
    message(FATAL_ERROR "package files missing under ${prefix}: config '${package_config}', "
                        "pkg-config '${pc_file}'")
endif()

# The exported target names each include directory once.
get_filename_component(package_dir ${package_config} DIRECTORY)
file(READ ${package_dir}/vorparameterTargets.cmake targets)
if(NOT targets MATCHES "INTERFACE_INCLUDE_DIRECTORIES \"([^\"]*)\"")
    message(FATAL_ERROR "vorparameterTargets.cmake sets no include directories")
endif()
set(include_dirs "${CMAKE_MATCH_1}")
set(distinct_dirs ${include_dirs})
list(REMOVE_DUPLICATES distinct_dirs)
if(NOT include_dirs STREQUAL distinct_dirs)
    message(FATAL_ERROR "the exported target repeats an include directory: ${include_dirs}")
endif()

# 2. The version rule: a request is met by a release at least as new, of the
# same major version from 1.0 on, of the same minor version before 1.0.
if(VERSION_MAJOR EQUAL 0)
    set(soname libvorparameter.so.0.${VERSION_MINOR})
else()
    set(soname libvorparameter.so.${VERSION_MAJOR})
endif()
file(GLOB_RECURSE soname_link ${prefix}/*/${soname})
if(NOT soname_link)
    message(FATAL_ERROR "the library was not installed under its soname ${soname}")
endif()
set(generator_args -G ${GENERATOR})
if(MAKE_PROGRAM)
    list(APPEND generator_args -DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM})
endif()
math(EXPR next_major "${VERSION_MAJOR} + 1")
math(EXPR next_minor "${VERSION_MINOR} + 1")
math(EXPR next_patch "${VERSION_PATCH} + 1")
set(accepted "" ${VERSION_MAJOR}.${VERSION_MINOR} ${VERSION})
set(refused ${next_major}.0 ${VERSION_MAJOR}.${next_minor}
            ${VERSION_MAJOR}.${VERSION_MINOR}.${next_patch})
if(VERSION_MINOR GREATER 0)
    math(EXPR previous_minor "${VERSION_MINOR} - 1")
    if(VERSION_MAJOR EQUAL 0)
        list(APPEND refused 0.${previous_minor})
    else()
        list(APPEND accepted ${VERSION_MAJOR}.${previous_minor})
    endif()
endif()
foreach(request IN LISTS accepted refused)
    set(probe_build ${WORK_DIR}/version-probe)
    file(REMOVE_RECURSE ${probe_build})
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/version_probe
                            -B ${probe_build} ${generator_args}
                            -DREQUEST=${request}
                            -DCMAKE_PREFIX_PATH=${prefix}
                            -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
                    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    list(FIND refused "${request}" at)
    if(at EQUAL -1 AND NOT rc EQUAL 0)
        message(FATAL_ERROR "find_package(vorparameter ${request}) refused ${VERSION}:\n${err}")
    elseif(at GREATER -1 AND rc EQUAL 0)
        message(FATAL_ERROR "find_package(vorparameter ${request}) accepted ${VERSION}")
    elseif(at GREATER -1 AND NOT err MATCHES "version: ${VERSION}")
        message(FATAL_ERROR "find_package(vorparameter ${request}) failed, but not for "
                            "its version:\n${err}")
    endif()
endforeach()

# 3. A C++20 CMake host: find_package against the prefix alone.
set(host_build ${WORK_DIR}/host)
run("configuring the host project"
    COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/host -B ${host_build}
            ${generator_args}
            -DCMAKE_CXX_COMPILER=${CXX_COMPILER}
            -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
            -DCMAKE_CXX_FLAGS=${HOST_FLAGS}
            -DCMAKE_EXE_LINKER_FLAGS=${HOST_FLAGS}
            -DCMAKE_PREFIX_PATH=${prefix}
            -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
            -DVORPARAMETER_EXAMPLES_DIR=${SOURCE_DIR}/examples)
file(STRINGS ${host_build}/CMakeCache.txt found_dir REGEX "^vorparameter_DIR:")
string(FIND "${found_dir}" "${prefix}/" at)
if(NOT at GREATER -1)
    message(FATAL_ERROR "the host found a package outside the test prefix: ${found_dir}")
endif()
run("building the host project" COMMAND ${CMAKE_COMMAND} --build ${host_build} ${config_args})

# The programs find the installed library through their build RPATH.
set(host_exe ${host_build}/host)
set(quickstart_exe ${host_build}/quickstart)
if(CONFIG AND NOT EXISTS ${host_exe})
    set(host_exe ${host_build}/${CONFIG}/host)
    set(quickstart_exe ${host_build}/${CONFIG}/quickstart)
endif()
run("the CMake host program" COMMAND ${host_exe})
math(EXPR version_number "${VERSION_MAJOR} * 10000 + ${VERSION_MINOR} * 100 + ${VERSION_PATCH}")
expect_output("the CMake host program" "${RUN_OUTPUT}"
              "^headers ${VERSION} = ${VERSION} = ${version_number}\n")
expect_output("the CMake host program" "${RUN_OUTPUT}" "tool.diameter = 6\n")
expect_output("the CMake host program" "${RUN_OUTPUT}" "TOOL.Diameter = 6\n")
expect_output("the CMake host program" "${RUN_OUTPUT}" "diameter")
run("the quick-start example" COMMAND ${quickstart_exe})
expect_output("the quick-start example" "${RUN_OUTPUT}" "tool.diameter")

# 4. A C++20 host built from pkg-config's flags alone: they must not carry a
# -std of their own, which would override the host's.
find_program(PKG_CONFIG pkg-config)
if(NOT PKG_CONFIG)
    message(FATAL_ERROR "pkg-config is needed to check vorparameter.pc")
endif()
get_filename_component(pc_dir ${pc_file} DIRECTORY)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})
run("pkg-config --cflags --libs vorparameter"
    COMMAND ${PKG_CONFIG} --cflags --libs vorparameter)
string(STRIP "${RUN_OUTPUT}" pc_flags)
string(FIND "${pc_flags}" "${prefix}" at)
if(at EQUAL -1)
    message(FATAL_ERROR "pkg-config flags do not point into the prefix ${prefix}: ${pc_flags}")
endif()
if(pc_flags MATCHES "-std=")
    message(FATAL_ERROR "pkg-config flags set the host's C++ standard: ${pc_flags}")
endif()
run("pkg-config --variable=libdir vorparameter"
    COMMAND ${PKG_CONFIG} --variable=libdir vorparameter)
string(STRIP "${RUN_OUTPUT}" pc_libdir)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
separate_arguments(host_flags UNIX_COMMAND "${HOST_FLAGS}")
set(pc_exe ${WORK_DIR}/host-pkgconfig)
run("compiling with pkg-config's flags"
    COMMAND ${CXX_COMPILER} ${host_flags} -std=c++20 ${SOURCE_DIR}/tests/install/host/main.cpp
            -o ${pc_exe} ${pc_flags} -Wl,-rpath,${pc_libdir})
run("the pkg-config host program" COMMAND ${pc_exe})
expect_output("the pkg-config host program" "${RUN_OUTPUT}" "tool.diameter = 6\n")

# 5. The installed tool runs from its install location.
if(WITH_TOOL)
    run("installed vorparam --version" COMMAND ${prefix}/bin/vorparam --version)
    expect_output("installed vorparam --version" "${RUN_OUTPUT}" "${VERSION}")
endif()

message(STATUS "install test passed: ${prefix}")
