include(CMakePackageConfigHelpers)

install(TARGETS vorparameter EXPORT vorparameterTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/vorparameter DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        FILES_MATCHING PATTERN "*.h")
install(FILES ${PROJECT_BINARY_DIR}/include/vorparameter/version.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorparameter)

set(VORPARAMETER_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/vorparameter)
install(EXPORT vorparameterTargets NAMESPACE vorparameter::
        DESTINATION ${VORPARAMETER_CMAKE_DIR})
configure_package_config_file(cmake/vorparameterConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/vorparameterConfig.cmake
    INSTALL_DESTINATION ${VORPARAMETER_CMAKE_DIR})
# Which installed versions meet a host's request: VORPARAMETER_COMPATIBILITY
# is chosen together with the soname in the top-level CMakeLists.txt.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/vorparameterConfigVersion.cmake
    COMPATIBILITY ${VORPARAMETER_COMPATIBILITY})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vorparameterConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/vorparameterConfigVersion.cmake
        DESTINATION ${VORPARAMETER_CMAKE_DIR})

# The .pc file locates the prefix relative to itself, so that it stays right
# when the prefix is chosen at install time (cmake --install --prefix, DESTDIR
# staging, a relocated package) rather than at configure time.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
    set(VORPARAMETER_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
    file(RELATIVE_PATH VORPARAMETER_PC_PREFIX "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
    string(REGEX REPLACE "/$" "" VORPARAMETER_PC_PREFIX "${VORPARAMETER_PC_PREFIX}")
    set(VORPARAMETER_PC_PREFIX "\${pcfiledir}/${VORPARAMETER_PC_PREFIX}")
endif()
configure_file(cmake/vorparameter.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vorparameter.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vorparameter.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
